#include "adapters/win32/front_end/native_text.h"
#include "adapters/win32/front_end/win32_foreground_windows.h"
#include "adapters/win32/front_end/win32_message_boxes.h"
#include "base/runtime_error.h"
#include "windows/front_end/win32_fixture.h"

namespace kestro::windows_tests {
namespace {

using Win32WindowLife = Win32Fixture;
using ports::BoxAnswer;

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
  const auto native_windows = [] {
    int count = 0;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM counter) -> BOOL {
          wchar_t name[32]{};
          GetClassNameW(window, name, static_cast<int>(std::size(name)));
          if (std::wstring_view(name) == L"KestroWindow") ++*reinterpret_cast<int*>(counter);
          return TRUE;
        },
        reinterpret_cast<LPARAM>(&count));
    return count;
  };
  SampleForm form(host_);
  form.Load();
  form.SetCaption("Changed");
  form.txtName.SetText("before");
  form.Hide();
  EXPECT_EQ(native_windows(), 0);
  form.Show();
  EXPECT_EQ(native_windows(), 1);
  EXPECT_EQ(driver_.Read(form).caption, "Changed");
  EXPECT_EQ(adapters::win32::TextOf(NativeOf(form.txtName)), L"before");
}

TEST_F(Win32WindowLife, TheEndOfTheProcessEndsEveryLoop) {
  SampleForm modal(host_, "Modal");
  adapters::Win32MessageBoxes boxes(boundary_, "Title");
  post_([&] {
    post_([] { throw base::ProcessEnded{}; });
    boxes.Show("A box that nobody answers", ports::kOkOnly);
    ADD_FAILURE() << "the box has returned";
  });
  EXPECT_THROW(modal.ShowModal(nullptr), base::ProcessEnded);
  EXPECT_TRUE(boundary_.ended());
  EXPECT_EQ(boundary_.RunUntilEnded(), 0);
  EXPECT_THROW(host_.DoEvents(), base::ProcessEnded);
}

TEST_F(Win32WindowLife, AnUnexpectedErrorEndsTheProcessAndComesOut) {
  SampleForm form(host_);
  form.Show();
  form.cmdOk.on_click = [] { throw std::out_of_range("broken handler"); };
  EXPECT_THROW(driver_.Click(form, form.cmdOk), std::out_of_range);
  EXPECT_EQ(boundary_.RunUntilEnded(), 1);
}

TEST_F(Win32WindowLife, BoxesAreAnsweredByTheirButtons) {
  struct Case {
    int style;
    BoxAnswer planned;
    BoxAnswer answered;
  };
  BoxAnswer planned = BoxAnswer::kOk;
  adapters::Win32AnsweringMessageBoxes boxes(boundary_, "Title",
                                             [&](std::string_view, int) { return planned; });
  for (const Case& test : {Case{ports::kYesNo | ports::kQuestion, BoxAnswer::kYes, BoxAnswer::kYes},
                           Case{ports::kYesNo, BoxAnswer::kNo, BoxAnswer::kNo},
                           Case{ports::kOkOnly | ports::kCritical, BoxAnswer::kOk, BoxAnswer::kOk},
                           Case{ports::kYesNo | ports::kExclamation, BoxAnswer::kCancel, BoxAnswer::kYes}}) {
    planned = test.planned;
    EXPECT_EQ(boxes.Show("Text & more", test.style), test.answered) << test.style;
  }
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

TEST_F(Win32WindowLife, WindowsArePlacedInsideTheScreen) {
  const forms::ScreenSize screen = host_.Screen();
  struct Case {
    int left;
    int top;
  };
  for (const Case& test : {Case{1500, 300}, Case{screen.width - 100, 300}, Case{-5000, screen.height * 2}}) {
    SampleForm form(host_);
    form.Load();
    form.MoveTo(test.left, test.top);
    form.Show();
    const RECT room = adapters::win32::WorkArea(nullptr);
    RECT frame{};
    GetWindowRect(NativeOf(form), &frame);
    RECT inside{};
    EXPECT_TRUE(IntersectRect(&inside, &frame, &room) != 0 && EqualRect(&inside, &frame) != 0) << test.left;
  }
}

TEST_F(Win32WindowLife, AWindowCanGoInsideItsOwnHandlers) {
  const forms::TextBox SampleForm::*const kText = &SampleForm::txtName;
  SampleForm form(host_);
  form.txtName.on_change = [&] { form.RequestUnload(forms::kFromCode); };
  form.mnuOpen.on_click = [&] { form.RequestUnload(forms::kFromCode); };
  form.Show();
  EXPECT_TRUE(driver_.Type(form, form.txtName, "x"));
  EXPECT_FALSE(form.loaded());
  form.Show();
  EXPECT_EQ((form.*kText).text(), "x");
  EXPECT_TRUE(driver_.Click(form, form.mnuOpen));
  EXPECT_FALSE(form.loaded());
  driver_.Settle();
}

}  // namespace
}  // namespace kestro::windows_tests
