#include "programs/cti-scenario/front_ends.h"

#include "adapters/headless/headless_clipboard.h"
#include "adapters/headless/headless_foreground_windows.h"
#include "adapters/headless/headless_form_host.h"
#include "adapters/headless/headless_front_end_driver.h"

namespace kestro::programs {
namespace {

class HeadlessFrontEnd final : public scenario::FrontEnd {
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
  adapters::HeadlessFormHost host_;
  adapters::HeadlessFrontEndDriver driver_{host_};
  adapters::HeadlessForegroundWindows foreground_{host_};
  adapters::HeadlessClipboard clipboard_;
};

class HeadlessFactory final : public FrontEndFactory {
 public:
  [[nodiscard]] std::unique_ptr<scenario::FrontEnd> Make(PathTranslator /*native_path*/) override {
    return std::make_unique<HeadlessFrontEnd>();
  }
};

}  // namespace

std::unique_ptr<FrontEndFactory> HeadlessFrontEnds() { return std::make_unique<HeadlessFactory>(); }

std::unique_ptr<FrontEndFactory> FrontEndsNamed(std::string_view name) {
  if (name == "headless") return HeadlessFrontEnds();
#ifdef KESTRO_WITH_QT
  if (name == "qt") return QtFrontEnds();
#endif
  return nullptr;
}

std::string_view FrontEndNames() {
#ifdef KESTRO_WITH_QT
  return "headless|qt";
#else
  return "headless";
#endif
}

}  // namespace kestro::programs
