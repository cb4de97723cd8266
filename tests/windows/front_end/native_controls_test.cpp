#include "adapters/win32/front_end/grid_binding.h"
#include "qt/sample_form.h"
#include "screen_front_end.h"

namespace kestro::front_end_tests {
namespace {

/// What only native controls can show; what all front ends do is tested on all.
class NativeControls : public ScreenFrontEnd {
 protected:
  NativeControls() {
    boundary_.Run(adapters::Win32EventBoundary::Cause::kUser, [this] { form_.Show(); });
    TakeEvents();
  }
  Events TakeEvents() { return std::exchange(form_.events, {}); }

  SampleForm form_{host_};
};

TEST_F(NativeControls, AnOpenListDecidesNothingUntilItCloses) {
  const HWND list = NativeOf(form_.cmbLine);
  const auto press = [list](WPARAM key) { SendMessageW(list, WM_KEYDOWN, key, 1); };
  SendMessageW(list, CB_SHOWDROPDOWN, TRUE, 0);
  press(VK_DOWN);
  press(VK_DOWN);
  EXPECT_EQ(TakeEvents(), Events{});
  press(VK_ESCAPE);
  EXPECT_EQ(TakeEvents(), Events{});
  EXPECT_EQ(SendMessageW(list, CB_GETCURSEL, 0, 0), CB_ERR);
  SendMessageW(list, CB_SHOWDROPDOWN, TRUE, 0);
  press(VK_DOWN);
  press(VK_DOWN);
  press(VK_RETURN);
  EXPECT_EQ(TakeEvents(), (Events{"cmbLine 1"}));
}

TEST_F(NativeControls, TheWheelChangesNoClosedList) {
  form_.cmbLine.SetListIndex(0);
  TakeEvents();
  SendMessageW(NativeOf(form_.cmbLine), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
  EXPECT_EQ(form_.cmbLine.list_index(), 0);
  EXPECT_EQ(TakeEvents(), Events{});
}

TEST_F(NativeControls, TheTabKeyFollowsTheFormsOrder) {
  ASSERT_EQ(GetActiveWindow(), NativeOf(form_));
  form_.cmbLine.SetEnabled(false);
  const forms::Control* const order[] = {&form_.txtName, &form_.cmbTitle,  &form_.grid,   &form_.chkLog,
                                         &form_.cmdOk,   &form_.cmdCancel, &form_.txtName};
  for (const forms::Control* control : order) {
    EXPECT_EQ(host_.Window(form_)->FocusedControl(), control) << control->name();
    const HWND native = NativeOf(*control);
    EXPECT_TRUE(GetFocus() == native || IsChild(native, GetFocus()) != 0) << control->name();
    Press(VK_TAB);
  }
}

TEST_F(NativeControls, MnemonicsLeadToTheirControls) {
  form_.cmdCancel.SetFocus();
  const auto alt = [&](wchar_t letter) {
    PostMessageW(GetFocus(), WM_SYSCHAR, letter, LPARAM{1} << 29);
    driver_.Settle();
  };
  alt(L'n');
  EXPECT_EQ(GetFocus(), NativeOf(form_.txtName));
  alt(L'l');
  EXPECT_EQ(form_.chkLog.value(), 1);
  EXPECT_EQ(GetFocus(), NativeOf(form_.chkLog));
}

TEST_F(NativeControls, APressBesideTheRowsIsPossibleHoweverManyThereAre) {
  auto& view = dynamic_cast<adapters::win32::GridBinding&>(*host_.Window(form_)->Binding(form_.grid));
  RECT window{};
  GetWindowRect(NativeOf(form_), &window);
  form_.grid.SetRows(&form_.many);
  for (int more = 0; more < 24; ++more) {
    SetWindowPos(NativeOf(form_), nullptr, 0, 0, window.right - window.left,
                 window.bottom - window.top + more, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_TRUE(view.BringIntoSight(forms::Grid::kNoRow).has_value()) << more;
  }
}

TEST_F(NativeControls, ADenserScreenMakesEverythingLarger) {
  RECT before{};
  GetClientRect(NativeOf(form_.cmdOk), &before);
  RECT wider{0, 0, 1000, 900};
  const WPARAM dpi = MAKEWPARAM(2 * adapters::win32::kPlainDpi, 2 * adapters::win32::kPlainDpi);
  SendMessageW(NativeOf(form_), WM_DPICHANGED, dpi, reinterpret_cast<LPARAM>(&wider));
  RECT after{};
  GetClientRect(NativeOf(form_.cmdOk), &after);
  EXPECT_GT(after.right, before.right * 3 / 2);
  EXPECT_GT(after.bottom, before.bottom * 3 / 2);
}

TEST_F(NativeControls, AScreenThatIsTooSmallScrollsTheWindow) {
  const HWND native = NativeOf(form_);
  SetWindowPos(native, nullptr, 0, 0, 150, 120, SWP_NOMOVE | SWP_NOZORDER | SWP_NOSENDCHANGING);
  EXPECT_NE(GetWindowLongPtrW(native, GWL_STYLE) & WS_VSCROLL, 0);
  RECT before{};
  GetWindowRect(NativeOf(form_.cmdOk), &before);
  SendMessageW(native, WM_VSCROLL, SB_PAGEDOWN, 0);
  RECT after{};
  GetWindowRect(NativeOf(form_.cmdOk), &after);
  EXPECT_LT(after.top, before.top);
}

}  // namespace
}  // namespace kestro::front_end_tests
