#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "adapters/win32/event_poster.h"
#include "adapters/win32/front_end/win32_form_host.h"
#include "adapters/win32/front_end/win32_front_end_driver.h"
#include "qt/list_form.h"
#include "qt/sample_form.h"

namespace kestro::windows_tests {

using qt_tests::ListForm;
using qt_tests::SampleForm;
using Events = std::vector<std::string>;

/// A front end with native controls of its own for each test.
class Win32Fixture : public testing::Test {
 protected:
  [[nodiscard]] HWND NativeOf(const forms::Control& control) {
    return host_.Window(control.form())->Binding(control)->window();
  }
  [[nodiscard]] HWND NativeOf(const forms::Form& form) { return host_.Window(form)->window(); }
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
  static std::string PathAsItIs(std::string_view path) { return std::string(path); }

  adapters::Win32EventBoundary boundary_;
  adapters::HiddenWindow window_{L"KestroFrontEndTest"};
  adapters::EventPoster post_{window_, [this](const std::function<void()>& task) {
                                boundary_.Run(adapters::Win32EventBoundary::Cause::kSystem, task);
                              }};
  adapters::Win32FormHost host_{boundary_, PathAsItIs};
  adapters::Win32FrontEndDriver driver_{host_};
};

}  // namespace kestro::windows_tests
