#include "scenario/dumps.h"

#include <gtest/gtest.h>

#include "adapters/headless/headless_form_host.h"
#include "adapters/headless/headless_front_end_driver.h"

namespace kestro::scenario {
namespace {

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
