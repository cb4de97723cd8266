#include "qt/sample_form.h"
#include "screen_front_end.h"

namespace kestro::front_end_tests {
namespace {

using Win32WindowLife = ScreenFrontEnd;

TEST_F(Win32WindowLife, AModalWindowIsTheOnlyOneThatCanBeUsed) {
  SampleForm behind(host_, "Behind");
  SampleForm appears(host_, "Appears");
  SampleForm modal(host_, "Modal");
  behind.Show();
  bool checked = false;
  post_([&] {
    appears.Show();
    EXPECT_FALSE(driver_.Click(behind, behind.cmdOk));
    EXPECT_FALSE(driver_.Click(appears, appears.cmdOk)) << "it came while the other one waited";
    EXPECT_TRUE(driver_.Click(modal, modal.cmdOk));
    EXPECT_EQ(GetWindow(NativeOf(modal), GW_OWNER), NativeOf(behind));
    checked = true;
    modal.Hide();
  });
  modal.ShowModal(&behind);
  EXPECT_TRUE(checked);
  EXPECT_EQ(modal.events, (Events{"activate", "cmdOk"}));
  EXPECT_TRUE(driver_.Click(behind, behind.cmdOk));
  EXPECT_TRUE(driver_.Click(appears, appears.cmdOk));
}

/// A start loads windows that nobody may ever look at.
TEST_F(Win32WindowLife, ALoadedFormCostsNoNativeWindowUntilItIsSeen) {
  const auto native_window = [] { return FindWindowW(L"KestroWindow", nullptr); };
  SampleForm form(host_);
  form.Load();
  form.SetCaption("Changed");
  form.txtName.SetText("before");
  form.Hide();
  EXPECT_EQ(native_window(), nullptr);
  form.Show();
  EXPECT_EQ(native_window(), NativeOf(form));
  EXPECT_EQ(driver_.Read(form).caption, "Changed");
  EXPECT_EQ(adapters::win32::TextOf(NativeOf(form.txtName)), L"before");
}

TEST_F(Win32WindowLife, OnlyWhatTheUserDidTakesTheKeyboard) {
  SampleForm asked(host_, "Asked");
  SampleForm called(host_, "Called");
  SampleForm opened(host_, "Opened");
  asked.cmdOk.on_click = [&] { opened.Show(); };
  boundary_.Run(adapters::Win32EventBoundary::Cause::kUser, [&] { asked.Show(); });
  ASSERT_EQ(GetActiveWindow(), NativeOf(asked));
  RunFor(1000);  // the desktop, too, has to learn of the window
  post_([&] { called.Show(); });
  driver_.Settle();
  EXPECT_EQ(GetActiveWindow(), NativeOf(asked));
  EXPECT_EQ(host_.FrontWindow(), called.handle());
  EXPECT_NE(GetWindow(NativeOf(called), GW_HWNDPREV), NativeOf(asked)) << "it is in front";
  driver_.Click(asked, asked.cmdOk);
  EXPECT_EQ(GetActiveWindow(), NativeOf(opened));
}

}  // namespace
}  // namespace kestro::front_end_tests
