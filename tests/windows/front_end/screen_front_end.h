#pragma once

#include <windows.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "adapters/win32/event_poster.h"
#include "adapters/win32/front_end/native_text.h"
#include "adapters/win32/front_end/win32_foreground_windows.h"
#include "adapters/win32/front_end/win32_form_host.h"
#include "adapters/win32/front_end/win32_front_end_driver.h"
#include "adapters/win32/front_end/win32_message_boxes.h"
#include "base/runtime_error.h"

namespace kestro::front_end_tests {

/// What a form has heard.
using Events = std::vector<std::string>;

/// A front end with native controls of its own for each test. Tests that also
/// run on Qt use what the class of the same name there has, too.
class ScreenFrontEnd : public testing::Test {
 protected:
  using Boxes = adapters::Win32MessageBoxes;
  using AnsweringBoxes = adapters::Win32AnsweringMessageBoxes;
  using ForegroundWindows = adapters::Win32ForegroundWindows;

  [[nodiscard]] HWND NativeOf(const forms::Control& control) {
    return host_.Window(control.form())->Binding(control)->window();
  }
  [[nodiscard]] HWND NativeOf(const forms::Form& form) { return host_.Window(form)->window(); }
  /// Draws the window.
  void Paint(const forms::Form& form) {
    RedrawWindow(NativeOf(form), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    driver_.Settle();
  }
  /// Pixels between the window and the left, top, right and bottom end of the screen's room.
  [[nodiscard]] std::array<LONG, 4> DistancesFromTheScreensEdges(const forms::Form& form) {
    const RECT room = adapters::win32::WorkArea(nullptr);
    RECT frame{};
    GetWindowRect(NativeOf(form), &frame);
    return {frame.left - room.left, frame.top - room.top, room.right - frame.right,
            room.bottom - frame.bottom};
  }
  /// A letter as the keyboard sends it to the control.
  void TypeLetter(const forms::Control& control, char letter) {
    SendMessageW(NativeOf(control), WM_CHAR, static_cast<WPARAM>(letter), 1);
  }
  /// What remains of typing, and the place of the cursor behind it in units of UTF-16.
  static std::pair<std::u16string, int> LimitTyping(const std::u16string& before, const std::u16string& after,
                                                    int most) {
    const auto limited = adapters::win32::LimitTyping(std::wstring(before.begin(), before.end()),
                                                      std::wstring(after.begin(), after.end()), most);
    return {{limited.text.begin(), limited.text.end()}, static_cast<int>(limited.cursor)};
  }
  /// A key as the keyboard sends it to the control that has the focus.
  void Press(WPARAM key) {
    PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
    driver_.Settle();
  }
  /// Lets events run for that long: some come from outside, when a window has been shown.
  void RunFor(DWORD milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (GetTickCount64() < end) {
      driver_.Settle();
      MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
  }

  adapters::Win32EventBoundary boundary_;
  adapters::HiddenWindow window_{L"KestroFrontEndTest"};
  adapters::EventPoster post_{window_, [this](const std::function<void()>& task) {
                                boundary_.Run(adapters::Win32EventBoundary::Cause::kSystem, task);
                              }};
  adapters::Win32FormHost host_{boundary_, [](std::string_view path) { return std::string(path); }};
  adapters::Win32FrontEndDriver driver_{host_};
};

}  // namespace kestro::front_end_tests
