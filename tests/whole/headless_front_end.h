#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "adapters/headless/headless_clipboard.h"
#include "adapters/headless/headless_foreground_windows.h"
#include "adapters/headless/headless_form_host.h"
#include "adapters/headless/headless_front_end_driver.h"
#include "scenario/machine.h"

namespace kestro::test {

/// The front end without a screen, whose message boxes are answered by a
/// function and whose event loop can be told what runs in it.
class HeadlessFrontEnd final : public scenario::FrontEnd {
 public:
  using Box = std::function<ports::BoxAnswer(std::string_view text, int style, ports::BoxAnswer planned)>;
  using Task = std::function<void()>;
  /// Gets every posted task when its turn has come, and runs it.
  using Runner = std::function<void(const Task& task)>;

  explicit HeadlessFrontEnd(
      Box box, Runner runner = [](const Task& task) { task(); })
      : box_(std::move(box)), runner_(std::move(runner)) {}

  [[nodiscard]] forms::FormHost& Host() override { return host_; }
  [[nodiscard]] forms::FrontEndDriver& Driver() override { return driver_; }
  [[nodiscard]] ports::ForegroundWindows& Foreground() override { return foreground_; }
  [[nodiscard]] ports::Clipboard& Clipboard() override { return clipboard_; }
  void Post(Task task) override {
    host_.Post([this, task = std::move(task)] { runner_(task); });
  }
  ports::BoxAnswer ShowBox(std::string_view text, int style, ports::BoxAnswer planned) override {
    return box_(text, style, planned);
  }

 private:
  adapters::HeadlessFormHost host_;
  adapters::HeadlessFrontEndDriver driver_{host_};
  adapters::HeadlessForegroundWindows foreground_{host_};
  adapters::HeadlessClipboard clipboard_;
  Box box_;
  Runner runner_;
};

}  // namespace kestro::test
