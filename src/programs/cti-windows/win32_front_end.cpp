#include "programs/cti-windows/win32_front_end.h"

#include "adapters/win32/clipboard.h"
#include "adapters/win32/event_poster.h"
#include "adapters/win32/front_end/win32_event_boundary.h"
#include "adapters/win32/front_end/win32_foreground_windows.h"
#include "adapters/win32/front_end/win32_form_host.h"
#include "adapters/win32/front_end/win32_front_end_driver.h"
#include "adapters/win32/front_end/win32_message_boxes.h"
#include "adapters/win32/hidden_window.h"
#include "generated/version.h"

namespace kestro::programs {
namespace {

using adapters::Win32EventBoundary;

constexpr const wchar_t* kWindowClass = L"KESTRO CTI scenario";

class Win32FrontEnd final : public scenario::FrontEnd {
 public:
  explicit Win32FrontEnd(scenario::PathTranslator native_path) : host_(boundary_, std::move(native_path)) {}

  [[nodiscard]] forms::FormHost& Host() override { return host_; }
  [[nodiscard]] forms::FrontEndDriver& Driver() override { return driver_; }
  [[nodiscard]] ports::ForegroundWindows& Foreground() override { return foreground_; }
  [[nodiscard]] ports::Clipboard& Clipboard() override { return clipboard_; }
  void Post(std::function<void()> task) override { poster_(std::move(task)); }
  ports::BoxAnswer ShowBox(std::string_view text, int style, ports::BoxAnswer planned) override {
    planned_ = planned;
    return boxes_.Show(text, style);
  }

 private:
  Win32EventBoundary boundary_;
  adapters::HiddenWindow window_{kWindowClass};
  adapters::EventPoster poster_{window_, [this](const std::function<void()>& task) {
                                  boundary_.Run(Win32EventBoundary::Cause::kSystem, task);
                                }};
  adapters::Win32FormHost host_;
  adapters::Win32FrontEndDriver driver_{host_};
  adapters::Win32ForegroundWindows foreground_{host_};
  adapters::Win32Clipboard clipboard_{window_};
  ports::BoxAnswer planned_ = ports::BoxAnswer::kOk;
  adapters::Win32AnsweringMessageBoxes boxes_{boundary_, kProductName,
                                              [this](std::string_view, int) { return planned_; }};
};

}  // namespace

std::unique_ptr<scenario::FrontEnd> Win32FrontEnds::Make(scenario::PathTranslator native_path) {
  return std::make_unique<Win32FrontEnd>(std::move(native_path));
}

}  // namespace kestro::programs
