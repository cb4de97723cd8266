#include <gtest/gtest.h>

#include "adapters/headless/headless_foreground_windows.h"
#include "adapters/headless/headless_form_host.h"
#include "base/runtime_error.h"
#include "forms/grid.h"
#include "forms/key.h"
#include "forms/keyboard_focus.h"

namespace kestro::forms {
namespace {

class FixedRows final : public GridRows {
 public:
  std::int64_t count = 3;
  [[nodiscard]] std::int64_t RowCount() const override { return count; }
  [[nodiscard]] std::string Cell(std::int64_t, int) const override { return "x"; }
};

class Controls : public ::testing::Test {
 protected:
  adapters::HeadlessFormHost host_;
  Form form_{host_, "window", 1000, 1000};
  int clicks_ = 0;
};

TEST_F(Controls, AnEditableListKeepsTextAndIndexInStep) {
  ComboBox combo(form_, nullptr, "combo", ComboBox::Style::kEditable);
  combo.on_click = [this] { ++clicks_; };
  combo.AddItem("Mr");
  combo.AddItem("Mrs");
  struct {
    const char* name;
    std::function<void()> act;
    const char* text;
    int index;
    int clicks;
  } const steps[] = {
      {"own text", [&] { combo.SetText("Prof"); }, "Prof", -1, 0},
      {"text of an item", [&] { combo.SetText("Mrs"); }, "Mrs", 1, 0},
      {"the item itself", [&] { combo.SetListIndex(1); }, "Mrs", 1, 0},
      {"another item", [&] { combo.SetListIndex(0); }, "Mr", 0, 1},
      {"own text again", [&] { combo.SetText("Dr"); }, "Dr", -1, 1},
      {"no index, which it had not", [&] { combo.SetListIndex(-1); }, "", -1, 1},
      {"item", [&] { combo.SetListIndex(1); }, "Mrs", 1, 2},
      {"no items", [&] { combo.Clear(); }, "", -1, 2},
  };
  for (const auto& step : steps) {
    step.act();
    EXPECT_EQ(combo.text(), step.text) << step.name;
    EXPECT_EQ(combo.list_index(), step.index) << step.name;
    EXPECT_EQ(clicks_, step.clicks) << step.name;
  }
  EXPECT_THROW(combo.SetListIndex(0), base::RuntimeError);
}

TEST_F(Controls, AGridLosesItsSelectionWithItsRows) {
  Grid grid(form_, nullptr, "grid", {{"Name", "name", 1000}});
  FixedRows rows;
  grid.SelectRow(0);
  EXPECT_EQ(grid.selected_row(), Grid::kNoRow);
  grid.SetRows(&rows);
  grid.SelectRow(2);
  EXPECT_EQ(grid.selected_row(), 2);
  grid.SelectRow(3);
  EXPECT_EQ(grid.selected_row(), Grid::kNoRow);
  grid.SelectRow(2);
  rows.count = 2;
  grid.Refresh();
  EXPECT_EQ(grid.selected_row(), Grid::kNoRow);
  const auto generation = grid.generation();
  grid.SetRows(nullptr);
  EXPECT_GT(grid.generation(), generation);
  EXPECT_EQ(grid.row_count(), 0);
}

TEST_F(Controls, AToolBarKnowsWhatCanBePressed) {
  ToolBar bar(form_, nullptr, "bar", {"new", "", "call"});
  bar.SetItemEnabled(3, false);
  EXPECT_TRUE(bar.CanPress(1));
  for (const int number : {0, 2, 3, 4}) EXPECT_FALSE(bar.CanPress(number)) << number;
  bar.SetItemEnabled(3, true);
  bar.SetItemVisible(1, false);
  EXPECT_TRUE(bar.CanPress(3));
  EXPECT_FALSE(bar.CanPress(1));
  EXPECT_THROW(bar.SetToolTip(4, "x"), base::RuntimeError);
  EXPECT_THROW(static_cast<void>(bar.item(0)), base::RuntimeError);
}

TEST(Key, ReadsModifiersAndNames) {
  const std::pair<const char*, Key> cases[] = {{"Del", {false, false, false, "Del"}},
                                               {"Ctrl+Shift+N", {true, false, true, "N"}},
                                               {"Alt+F12", {false, true, false, "F12"}},
                                               {"Shift+Enter", {false, false, true, "Enter"}},
                                               {"Ctrl+0", {true, false, false, "0"}}};
  for (const auto& [written, key] : cases) EXPECT_EQ(ParseKey(written), key) << written;
  // A single letter, also a large one, is a text.
  for (const char* const written : {"N", "Shift+N", "Ctrl+n", "Ctrl+", "Ctrl", "F13", "del", "Del ", ""}) {
    EXPECT_EQ(ParseKey(written), std::nullopt) << written;
  }
}

TEST_F(Controls, TheKeyboardGoesOnToTheNextOneAndFromTheEndToTheFront) {
  Label label(form_, nullptr, "label");
  TextBox first(form_, nullptr, "first");
  Button second(form_, nullptr, "second");
  CheckBox third(form_, nullptr, "third");
  EXPECT_EQ(&first, KeyboardPlaceFrom(form_, nullptr)) << "a label takes no keyboard";
  EXPECT_EQ(&second, KeyboardPlaceFrom(form_, &second));
  second.SetEnabled(false);
  EXPECT_EQ(&third, KeyboardPlaceFrom(form_, &second));
  third.SetVisible(false);
  EXPECT_EQ(&first, KeyboardPlaceFrom(form_, &third));
  first.SetEnabled(false);
  EXPECT_EQ(nullptr, KeyboardPlaceFrom(form_, &first));
}

class SampleForm final : public Form {
 public:
  SampleForm(FormHost& host, std::string_view name) : Form(host, name, 1000, 1000) {}

  int activations = 0;

 private:
  void Form_Activate() override { ++activations; }
};

TEST_F(Controls, TheForegroundGoesToShownWindows) {
  adapters::HeadlessForegroundWindows foreground{host_};
  SampleForm form{host_, "window"};
  SampleForm other{host_, "other"};
  form.Show();
  other.Show();
  EXPECT_EQ(foreground.GetForegroundWindow(), other.handle());
  EXPECT_TRUE(foreground.SetForegroundWindow(form.handle()));
  EXPECT_EQ(foreground.GetForegroundWindow(), form.handle());
  EXPECT_EQ(form.activations, 2);
  EXPECT_TRUE(foreground.SetForegroundWindow(form.handle()));
  EXPECT_EQ(form.activations, 2);  // it was active already
  form.Hide();
  EXPECT_FALSE(foreground.SetForegroundWindow(form.handle()));
  EXPECT_EQ(foreground.GetForegroundWindow(), other.handle());
  EXPECT_EQ(other.activations, 2);
  other.SetWindowState(WindowState::kMinimized);
  EXPECT_TRUE(foreground.IsIconic(other.handle()));
  foreground.ShowWindowCommand(other.handle(), ports::ForegroundWindows::kRestore);
  EXPECT_FALSE(foreground.IsIconic(other.handle()));
  EXPECT_FALSE(foreground.SetForegroundWindow(99));
}

}  // namespace
}  // namespace kestro::forms
