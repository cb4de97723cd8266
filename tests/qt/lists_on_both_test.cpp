#include "qt/sample_form.h"
#include "support/both_front_ends.h"

namespace kestro::front_end_tests {
namespace {

class Lists : public OnBothFrontEnds<SampleForm> {
 protected:
  using Driver = forms::FrontEndDriver;

  static Step Row(const char* name, std::int64_t row) {
    return {name, [row](Driver& driver, SampleForm& form) { return driver.PressRow(form, form.grid, row); }};
  }
  static Step Double(const char* name, std::int64_t row) {
    return {name,
            [row](Driver& driver, SampleForm& form) { return driver.DoubleClickRow(form, form.grid, row); }};
  }
  static Step Header(const char* name, int column) {
    return {name, [column](Driver& driver, SampleForm& form) {
              return driver.PressHeader(form, form.grid, column);
            }};
  }
  static Step Tool(const char* name, int number) {
    return {name, [number](Driver& driver, SampleForm& form) {
              return driver.PressTool(form, form.tools, number);
            }};
  }
  static Step Key(const char* written) {
    return {written, [written](Driver& driver, SampleForm& form) {
              return driver.PressKey(form, forms::ParseKey(written).value());
            }};
  }
  static Step Rows(const char* name, CountedRows SampleForm::*rows) {
    return Do(name, [rows](SampleForm& form) { form.grid.SetRows(&(form.*rows)); });
  }
  /// What the form with widgets has heard since the last call; the other one heard the same.
  std::vector<std::string> TakeEvents() {
    headless_form_.events.clear();
    std::vector<std::string> events = std::exchange(screen_form_.events, {});
    std::erase(events, "activate");
    return events;
  }
};

TEST_F(Lists, RowsArePressedAndRead) {
  Expect({Row("not shown", 0), kShow, Row("no rows", 0), Row("beside no rows", -1),
          Rows("few", &SampleForm::few), Row("first", 0), Row("last", 2), Row("behind the last", 3),
          Row("before beside", -2), Double("double click", 1), Double("double click beside", -1),
          Header("header", 2), Header("no such header", 3), Header("no header", -1),
          Row("after sorting", 2)});
  EXPECT_EQ(TakeEvents(),
            (Events{"row -1", "row 0", "row 2", "row 1", "double click", "row -1", "header ci", "row 2"}));
  Expect({Rows("very many", &SampleForm::many), Row("far away", 987'654), Row("beside very many", -1),
          Double("the last", 999'999), Rows("none", &SampleForm::none), Row("gone", 999'999)});
}

TEST_F(Lists, TheWindowDecidesWhatIsSelected) {
  Expect({kShow, Rows("few", &SampleForm::few), Row("a row", 1),
          Do("presses select no more", [](SampleForm& form) { form.follows_presses = false; }),
          Row("another", 2), Double("a double click on a row that is not selected", 0),
          Do("by the program", [](SampleForm& form) { form.grid.SelectRow(2); }),
          Double("on the selected row", 2),
          Do("out of range", [](SampleForm& form) { form.grid.SelectRow(3); }),
          Do("before a refresh", [](SampleForm& form) { form.grid.SelectRow(1); }),
          Do("a refresh", [](SampleForm& form) { form.grid.Refresh(); }),
          Do("captions", [](SampleForm& form) { form.grid.SetColumnCaption(1, "Firm"); })});
}

TEST_F(Lists, DisabledAndHiddenOnesAreRefused) {
  Expect({kShow,
          Rows("few", &SampleForm::few),
          Do("disabled",
             [](SampleForm& form) {
               form.grid.SetEnabled(false);
               form.tools.SetItemEnabled(2, false);
               form.tools.SetItemVisible(3, false);
               form.tools.SetItemVisible(6, false);  // a gap
             }),
          Row("row of a disabled grid", 0),
          Row("beside", -1),
          Double("double click", 0),
          Header("header", 0),
          Tool("enabled", 1),
          Tool("disabled", 2),
          Tool("hidden", 3),
          Tool("gap", 4),
          Tool("last", 7),
          Tool("too small", 0),
          Tool("too large", 8),
          Do("enabled",
             [](SampleForm& form) {
               form.grid.SetEnabled(true);
               form.tools.SetItemEnabled(2, true);
               form.tools.SetToolTip(2, "<i>other</i>");
             }),
          Row("row", 0),
          Tool("enabled again", 2),
          Do("the whole bar", [](SampleForm& form) { form.tools.SetEnabled(false); }),
          Tool("of a disabled bar", 1),
          Do("hidden",
             [](SampleForm& form) {
               form.grid.SetVisible(false);
               form.tools.SetVisible(false);
             }),
          Row("hidden row", 0),
          Tool("hidden bar", 1)});
  EXPECT_EQ(TakeEvents(), (Events{"tool 1", "tool 7", "row 0", "tool 2"}));
}

TEST_F(Lists, AWindowThatOpensAndClosesFromAPressIsSafe) {
  Expect({kShow, Rows("few", &SampleForm::few),
          Do("pressing unloads",
             [](SampleForm& form) {
               form.grid.on_mouse_down = [&form](auto) { form.RequestUnload(forms::kFromCode); };
             }),
          Double("press", 1), kShow,
          Do("disabling on a press",
             [](SampleForm& form) {
               form.grid.on_mouse_down = [&form](auto row) {
                 form.grid.SelectRow(row);
                 form.grid.SetEnabled(false);
               };
             }),
          Double("press again", 1)});
}

TEST_F(Lists, AnEditableListTakesAnyText) {
  const std::string combining = "e\xCC\x81";      // e and an acute accent: two characters
  const std::string beyond = "\xF0\x9F\x98\x80";  // four bytes, one character
  const auto repeat = [](const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
  };
  Expect({kShow, Type("not editable", &SampleForm::cmbLine, "first"),
          Type("an own text", &SampleForm::cmbTitle, "Prof"),
          Type("over it, an item", &SampleForm::cmbTitle, "Mrs"), Type("nothing", &SampleForm::cmbTitle, ""),
          Do("limit", [](SampleForm& form) { form.cmbTitle.SetMaxLength(50); }),
          Type("forty-nine and a half", &SampleForm::cmbTitle, "x" + repeat(combining, 30)),
          Type("beyond the first plane", &SampleForm::cmbTitle, repeat(beyond, 49) + "ab"),
          Do("typed", [&](SampleForm& form) { EXPECT_EQ(form.cmbTitle.text(), repeat(beyond, 49) + "a"); }),
          Choose("choose", &SampleForm::cmbTitle, 2), Choose("choose it again", &SampleForm::cmbTitle, 2),
          Do("the program's text is not cut",
             [&](SampleForm& form) { form.cmbTitle.SetText(repeat("long ", 20)); }),
          Do("index", [](SampleForm& form) { form.cmbTitle.SetListIndex(0); }),
          Do("index that is none", [](SampleForm& form) { form.cmbTitle.SetListIndex(-1); }),
          Type("text", &SampleForm::cmbTitle, "Ing"),
          Do("one item more", [](SampleForm& form) { form.cmbTitle.AddItem("Sir"); }),
          Do("no items", [](SampleForm& form) { form.cmbTitle.Clear(); }),
          Do("disabled", [](SampleForm& form) { form.cmbTitle.SetEnabled(false); }),
          Type("into a disabled one", &SampleForm::cmbTitle, "x")});
}

TEST_F(Lists, KeysGoToTheirControlThenToButtonsThenToShortcuts) {
  const auto focus = [](const char* name, auto member) {
    return Do(name, [member](SampleForm& form) { (form.*member).SetFocus(); });
  };
  struct Case {
    const char* key;
    Events events;
  };
  const auto expect = [this](const std::vector<Case>& cases) {
    for (const Case& test : cases) {
      Expect({Key(test.key)});
      EXPECT_EQ(TakeEvents(), test.events) << test.key;
    }
  };
  Expect({Key("F5"), kShow, Rows("few", &SampleForm::few), focus("text box", &SampleForm::txtName)});
  expect({{"F5", {"mnuRefresh"}},
          {"Ctrl+N", {"mnuNew"}},
          {"Del", {}},
          {"Enter", {"cmdOk"}},
          {"Esc", {"cmdCancel"}},
          {"Ctrl+Q", {}},
          {"Ctrl+G", {}}});
  Expect({Choose("its page", &SampleForm::pages, 1), focus("many lines", &SampleForm::txtNote)});
  expect({{"Enter", {"txtNote \r\n"}}, {"Del", {}}, {"F5", {"mnuRefresh"}}, {"Ctrl+F", {"find"}}});
  Expect({focus("editable list", &SampleForm::cmbTitle)});
  expect({{"Del", {}}, {"Enter", {"cmdOk"}}, {"Down", {"cmbTitle 0"}}, {"Ctrl+N", {"mnuNew"}}});
  Expect({focus("list", &SampleForm::cmbLine)});
  expect({{"Del", {"mnuDelete"}}, {"End", {"cmbLine 1"}}, {"Up", {"cmbLine 0"}}, {"Enter", {"cmdOk"}}});
  Expect({focus("button", &SampleForm::cmdCancel)});
  expect({{"Enter", {"cmdCancel"}}, {"Del", {"mnuDelete"}}});
  Expect({focus("grid", &SampleForm::grid)});
  expect({{"Enter", {"mnuEdit"}},
          {"Down", {"row 0"}},
          {"Down", {"row 1"}},
          {"Enter", {"double click"}},
          {"End", {"row 2"}},
          {"Down", {}},
          {"Home", {"row 0"}},
          {"Up", {}},
          {"Del", {"mnuDelete"}},
          {"Esc", {"cmdCancel"}}});
  Expect({Do("entries that cannot be reached", [](SampleForm& form) {
    form.mnuDelete.SetEnabled(false);
    form.mnuRefresh.SetVisible(false);
  })});
  expect({{"Del", {}}, {"F5", {}}, {"Ctrl+N", {"mnuNew"}}});
  Expect({Do("a menu that cannot be reached", [](SampleForm& form) { form.mnuFile.SetEnabled(false); })});
  expect({{"Ctrl+N", {}}, {"Ctrl+F", {"find"}}});
  Expect({Do("another key", [](SampleForm& form) {
    form.mnuFile.SetEnabled(true);
    form.mnuNew.SetShortcut("Ctrl+Shift+M");
  })});
  expect({{"Ctrl+N", {}}, {"Ctrl+Shift+M", {"mnuNew"}}});
}

}  // namespace
}  // namespace kestro::front_end_tests
