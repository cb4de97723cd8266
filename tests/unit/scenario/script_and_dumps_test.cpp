#include <string>

#include <gtest/gtest.h>

#include "adapters/headless/headless_form_host.h"
#include "adapters/headless/headless_front_end_driver.h"
#include "scenario/dumps.h"
#include "scenario/quoting.h"
#include "scenario/script.h"
#include "scenario/script_line.h"
#include "scenario/transcript.h"

namespace kestro::scenario {
namespace {

/// "LINE: REASON" of the error that the script raises.
std::string ErrorOf(std::string_view script) {
  try {
    static_cast<void>(ParseScript(script));
  } catch (const ScriptError& error) {
    return std::to_string(error.line()) + ": " + error.what();
  }
  return "no error";
}

TEST(Quoting, WritesWhatScriptsRead) {
  const std::string text = "a\"b\\c\r\n\t\x01\x7f\xC5\x99";
  EXPECT_EQ(Quoted(text), "\"a\\\"b\\\\c\\r\\n\\t\\x01\\x7f\xC5\x99\"");
  EXPECT_EQ(SplitLine(Quoted(text)).words.at(0).text, text);
  EXPECT_EQ(OneLine("a\r\n\"b\""), "a\\r\\n\"b\"");
  EXPECT_EQ(HandleText(0), "0x0");
  EXPECT_EQ(HandleText(0x1aF), "0x1af");
}

TEST(Transcript, KeepsItsTail) {
  Transcript transcript([](std::string_view) {});
  for (int number = 1; number <= 25; ++number) transcript.Add(std::to_string(number));
  ASSERT_EQ(transcript.Tail().size(), Transcript::kTailLength);
  EXPECT_EQ(transcript.Tail().front(), "6");
}

TEST(Script, RefusesWhatItCannotRead) {
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {"2: unknown action \"foo\"", {"start\nfoo 1"}},
      {"1: an action begins with its name", {"\"start\""}},
      {"1: expected: start", {"start now"}},
      {"1: expected: device TEXT [provider TEXT] [states NUMBER]",
       {"device EXT", "device \"E\" states 1 states 2", "device \"E\" states"}},
      {"1: expected: reply NUMBER NUMBER",
       {"reply 1 99999999999", "reply 1 -2147483649", "reply 1 0x", "reply 1 0x-1", "reply 1 1x"}},
      {"1: expected: tray left|right|double|balloon", {"tray up"}},
      {"1: expected: file cancel | file TEXT", {"file name"}},
      {"1: expected: contact PAIRS", {"contact", "contact Name=\"a\" Name=\"b\""}},
      {"1: expected: expect REST", {"expect"}},
      {"1: a text without its closing quote", {"setting A \"b"}},
      {"1: an unknown escape: there are \\\" \\\\ \\r \\n \\t \\xHH",
       {"setting A \"b\\", "setting A \"\\q\""}},
      {"1: \\x without two hexadecimal digits", {"setting A \"\\x1\"", "setting A \"\\xg0\""}},
      {"1: no blank behind a text", {"setting A \"b\"c"}},
      {"1: a quote inside a word", {"setting A\"b\""}},
      {"1: malformed UTF-8", {"setting A \"\xC3\x28\"", "expect \xFF"}},
      {"1: a control character", {std::string("start\0", 6)}},
      {"1: \"during\" without \"end\"", {"during\nstart"}},
      {"2: \"end\" without \"during\"", {"start\nend\n"}},
      {"1: the line is too long", {"# " + std::string(kMaximumLineLength, 'x')}},
  };
  for (const auto& [error, scripts] : cases) {
    for (const auto& script : scripts) EXPECT_EQ(ErrorOf(script), error) << script;
  }
  std::string deep;
  for (int depth = 0; depth < 100000; ++depth) deep += "during\n";
  EXPECT_EQ(ErrorOf(deep), "17: too many nested blocks");
}

class NumberedRows final : public forms::GridRows {
 public:
  std::int64_t count = 0;
  [[nodiscard]] std::int64_t RowCount() const override { return count; }
  [[nodiscard]] std::string Cell(std::int64_t row, int column) const override {
    return column == 0 ? std::to_string(row) : "a \"b\"\n";
  }
};

class ListForm final : public forms::Form {
 public:
  using Form::Form;
  forms::ComboBox title{*this, nullptr, "title", forms::ComboBox::Style::kEditable};
  forms::ToolBar tools{*this, nullptr, "tools", {"new", "", "edit", "delete"}};
  forms::Grid grid{*this, nullptr, "grid", {{"Name", "name", 0}, {"City", "city", 0}}};
};

TEST(Dumps, WindowsWithLists) {
  adapters::HeadlessFormHost host;
  adapters::HeadlessFrontEndDriver driver(host);
  ListForm form(host, "list", 1000, 1000);
  NumberedRows rows;
  form.title.AddItem("Mr");
  for (const int number : {1, 3, 4}) form.tools.SetToolTip(number, "tip " + std::to_string(number));
  form.Show();
  using Lines = std::vector<std::string>;
  const auto dump = [&] { return DumpWindow(form, driver.Read(form)); };
  EXPECT_EQ(dump(), (Lines{"window list \"\" visible normal", "  title \"Mr\" index -1 focus",
                           "  tools \"tip 1\" \"\" \"tip 3\" \"tip 4\"", "  grid \"Name\" \"City\" rows 0"}));

  rows.count = 2;
  form.grid.SetRows(&rows);
  form.grid.SelectRow(1);
  form.title.SetText("Prof \"x\"");
  form.tools.SetItemEnabled(1, false);
  form.tools.SetItemEnabled(3, false);
  form.tools.SetItemVisible(4, false);
  form.tools.SetEnabled(false);
  form.grid.SetEnabled(false);
  EXPECT_EQ(dump(),
            (Lines{"window list \"\" visible normal", "  title \"Mr\" index -1 text \"Prof \\\"x\\\"\" focus",
                   "  tools \"tip 1\" \"\" \"tip 3\" \"tip 4\" hidden 4 disabled 1 3 disabled",
                   "  grid \"Name\" \"City\" rows 2 disabled", "    row 0 \"0\" \"a \\\"b\\\"\\n\"",
                   "    row 1 \"1\" \"a \\\"b\\\"\\n\" selected"}));

  rows.count = 21;
  form.grid.Refresh();
  form.grid.SelectRow(20);
  form.title.SetText("Mr");
  const Lines lines = dump();
  EXPECT_EQ(lines.at(1), "  title \"Mr\" index 0 focus");
  EXPECT_EQ(lines.size(), 24U);  // the window, three controls, the first twenty rows
  EXPECT_TRUE(lines.back().starts_with("    row 19 \"19\"")) << lines.back();
}

}  // namespace
}  // namespace kestro::scenario
