#pragma once

#include "adapters/headless/headless_clipboard.h"
#include "adapters/headless/headless_foreground_windows.h"
#include "adapters/headless/headless_form_host.h"
#include "adapters/headless/headless_front_end_driver.h"
#include "scenario/player_program.h"

namespace kestro::adapters {

/// The front end that draws nothing, for the scenario player.
class HeadlessFrontEnd : public scenario::FrontEnd {
 public:
  [[nodiscard]] forms::FormHost& Host() override { return host_; }
  [[nodiscard]] forms::FrontEndDriver& Driver() override { return driver_; }
  [[nodiscard]] ports::ForegroundWindows& Foreground() override { return foreground_; }
  [[nodiscard]] ports::Clipboard& Clipboard() override { return clipboard_; }
  void Post(std::function<void()> task) override { host_.Post(std::move(task)); }
  ports::BoxAnswer ShowBox(std::string_view /*text*/, int /*style*/, ports::BoxAnswer planned) override {
    return planned;
  }

 private:
  HeadlessFormHost host_;
  HeadlessFrontEndDriver driver_{host_};
  HeadlessForegroundWindows foreground_{host_};
  HeadlessClipboard clipboard_;
};

class HeadlessFrontEnds final : public scenario::FrontEndFactory {
 public:
  [[nodiscard]] std::unique_ptr<scenario::FrontEnd> Make(scenario::PathTranslator /*native_path*/) override {
    return std::make_unique<HeadlessFrontEnd>();
  }
};

}  // namespace kestro::adapters
