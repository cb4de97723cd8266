#include "adapters/win32/front_end/grid_binding.h"
#include "adapters/win32/front_end/native_text.h"
#include "windows/front_end/win32_fixture.h"

namespace kestro::windows_tests {
namespace {

using adapters::win32::LimitTyping;
using adapters::win32::TextOf;

/// What only native controls can show; what all front ends do is tested on all.
class NativeControls : public Win32Fixture {
 protected:
  Events TakeEvents(ListForm& form) {
    Events events = std::exchange(form.events, {});
    std::erase(events, "activate");
    return events;
  }
};

TEST(Win32Typing, WhatIsThereStaysAndWhatIsInsertedIsCut) {
  struct Case {
    const wchar_t* before;
    const wchar_t* after;
    int most;
    const wchar_t* text;
    std::size_t cursor;
  };
  for (const Case& test :
       {Case{L"", L"abcdef", 4, L"abcd", 4}, Case{L"abcd", L"abXYcd", 4, L"abcd", 2},
        Case{L"long text", L"long Xtext", 4, L"long text", 5}, Case{L"ab", L"aXb", 0, L"aXb", 2},
        Case{L"", L"\xD83D\xDE00\xD83D\xDE00", 1, L"\xD83D\xDE00", 2}}) {
    const auto limited = LimitTyping(test.before, test.after, test.most);
    EXPECT_EQ(limited.text, test.text) << test.most;
    EXPECT_EQ(limited.cursor, test.cursor) << test.most;
  }
}

TEST_F(NativeControls, AnOpenListDecidesNothingUntilItCloses) {
  ListForm form(host_);
  form.Show();
  const HWND list = NativeOf(form.cmbKind);
  const auto press = [list](WPARAM key) { SendMessageW(list, WM_KEYDOWN, key, 1); };
  SendMessageW(list, CB_SHOWDROPDOWN, TRUE, 0);
  press(VK_DOWN);
  press(VK_DOWN);
  EXPECT_EQ(TakeEvents(form), Events{});
  press(VK_ESCAPE);
  EXPECT_EQ(TakeEvents(form), Events{});
  EXPECT_EQ(SendMessageW(list, CB_GETCURSEL, 0, 0), CB_ERR);
  SendMessageW(list, CB_SHOWDROPDOWN, TRUE, 0);
  press(VK_DOWN);
  press(VK_DOWN);
  press(VK_RETURN);
  EXPECT_EQ(TakeEvents(form), (Events{"cmbKind 1"}));
}

TEST_F(NativeControls, TheWheelChangesNoClosedList) {
  ListForm form(host_);
  form.Show();
  form.cmbKind.SetListIndex(0);
  TakeEvents(form);
  SendMessageW(NativeOf(form.cmbKind), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
  EXPECT_EQ(form.cmbKind.list_index(), 0);
  EXPECT_EQ(TakeEvents(form), Events{});
}

TEST_F(NativeControls, TheTabKeyFollowsTheFormsOrder) {
  SampleForm form(host_);
  boundary_.Run(adapters::Win32EventBoundary::Cause::kUser, [&] { form.Show(); });
  ASSERT_EQ(GetActiveWindow(), NativeOf(form));
  form.cmbLine.SetEnabled(false);
  const forms::Control* const order[] = {&form.txtName, &form.chkLog, &form.cmdOk, &form.cmdCancel,
                                         &form.txtName};
  for (const forms::Control* control : order) {
    EXPECT_EQ(host_.Window(form)->FocusedControl(), control) << control->name();
    EXPECT_EQ(GetFocus(), NativeOf(*control)) << control->name();
    Press(VK_TAB);
  }
}

TEST_F(NativeControls, MnemonicsLeadToTheirControls) {
  SampleForm form(host_);
  boundary_.Run(adapters::Win32EventBoundary::Cause::kUser, [&] { form.Show(); });
  form.cmdCancel.SetFocus();
  const auto alt = [&](wchar_t letter) {
    PostMessageW(GetFocus(), WM_SYSCHAR, letter, LPARAM{1} << 29);
    driver_.Settle();
  };
  alt(L'n');
  EXPECT_EQ(GetFocus(), NativeOf(form.txtName));
  alt(L'l');
  EXPECT_EQ(form.chkLog.value(), 1);
  EXPECT_EQ(GetFocus(), NativeOf(form.chkLog));
}

TEST_F(NativeControls, AMillionRowsAreAskedForOnlyWhereTheyAreSeen) {
  ListForm form(host_);
  form.Show();
  form.grid.SetRows(&form.many);
  UpdateWindow(NativeOf(form.grid));
  driver_.Settle();
  EXPECT_GT(form.many.cells_asked, 0);
  EXPECT_LT(form.many.cells_asked, 600);
  form.many.cells_asked = 0;
  EXPECT_TRUE(driver_.PressRow(form, form.grid, 999'000));
  driver_.PressKey(form, *forms::ParseKey("Up"));
  SendMessageW(NativeOf(form.grid), WM_CHAR, 'c', 1);  // no search for rows that begin with it
  EXPECT_EQ(TakeEvents(form), (Events{"row 999000", "row 998999"}));
  EXPECT_LT(form.many.cells_asked, 1200);
}

TEST_F(NativeControls, APressBesideTheRowsIsPossibleHoweverManyThereAre) {
  ListForm form(host_);
  form.Show();
  auto& view = dynamic_cast<adapters::win32::GridBinding&>(*host_.Window(form)->Binding(form.grid));
  RECT window{};
  GetWindowRect(NativeOf(form), &window);
  form.grid.SetRows(&form.many);
  for (int more = 0; more < 24; ++more) {
    SetWindowPos(NativeOf(form), nullptr, 0, 0, window.right - window.left, window.bottom - window.top + more,
                 SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_TRUE(view.BringIntoSight(forms::Grid::kNoRow).has_value()) << more;
  }
}

TEST_F(NativeControls, AProgressBarShowsItsValueAndRange) {
  struct WorkForm : forms::Form {
    explicit WorkForm(forms::FormHost& host) : Form(host, "WorkForm", 3000, 2000) {
      body().Place(bar, {0, 0});
    }
    forms::ProgressBar bar{*this, nullptr, "bar"};
  };
  WorkForm form(host_);
  form.Show();
  struct Case {
    int minimum;
    int maximum;
    int value;
  };
  for (const Case& test : {Case{0, 200, 150}, Case{50, 70000, 65535}, Case{0, 0, 0}, Case{0, 10, 10}}) {
    form.bar.SetRange(test.minimum, test.maximum);
    form.bar.SetValue(test.value);
    const auto shown = driver_.Read(form).controls.at(0).progress;
    ASSERT_TRUE(shown.has_value());
    EXPECT_EQ(shown->value, test.value) << test.maximum;
    EXPECT_EQ(shown->maximum, test.maximum);
  }
}

TEST_F(NativeControls, ADenserScreenMakesEverythingLarger) {
  SampleForm form(host_);
  form.Show();
  RECT before{};
  GetClientRect(NativeOf(form.cmdOk), &before);
  RECT wider{0, 0, 1000, 900};
  const WPARAM dpi = MAKEWPARAM(2 * adapters::win32::kPlainDpi, 2 * adapters::win32::kPlainDpi);
  SendMessageW(NativeOf(form), WM_DPICHANGED, dpi, reinterpret_cast<LPARAM>(&wider));
  RECT after{};
  GetClientRect(NativeOf(form.cmdOk), &after);
  EXPECT_GT(after.right, before.right * 3 / 2);
  EXPECT_GT(after.bottom, before.bottom * 3 / 2);
}

TEST_F(NativeControls, AScreenThatIsTooSmallScrollsTheWindow) {
  SampleForm form(host_);
  form.Show();
  const HWND native = NativeOf(form);
  SetWindowPos(native, nullptr, 0, 0, 150, 120, SWP_NOMOVE | SWP_NOZORDER | SWP_NOSENDCHANGING);
  EXPECT_NE(GetWindowLongPtrW(native, GWL_STYLE) & WS_VSCROLL, 0);
  RECT before{};
  GetWindowRect(NativeOf(form.cmdOk), &before);
  SendMessageW(native, WM_VSCROLL, SB_PAGEDOWN, 0);
  RECT after{};
  GetWindowRect(NativeOf(form.cmdOk), &after);
  EXPECT_LT(after.top, before.top);
}

}  // namespace
}  // namespace kestro::windows_tests
