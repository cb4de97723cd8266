#ifdef KESTRO_WITH_QT

#include "programs/cti-scenario/qt_front_end.h"

#include <iostream>

#include <QApplication>

#include "adapters/qt/event_boundary.h"
#include "adapters/qt/qt_clipboard.h"
#include "adapters/qt/qt_event_poster.h"
#include "adapters/qt/qt_foreground_windows.h"
#include "adapters/qt/qt_form_host.h"
#include "adapters/qt/qt_front_end_driver.h"
#include "adapters/qt/qt_message_boxes.h"

namespace kestro::programs {
namespace {

constexpr const char* kPlatformVariable = "QT_QPA_PLATFORM";
constexpr const char* kTitle = "KESTRO CTI";

class QtFrontEnd final : public scenario::FrontEnd {
 public:
  explicit QtFrontEnd(scenario::PathTranslator native_path) : host_(boundary_, std::move(native_path)) {}

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
  adapters::EventBoundary boundary_;
  adapters::QtFormHost host_;
  adapters::QtFrontEndDriver driver_{host_};
  adapters::QtForegroundWindows foreground_{host_};
  adapters::QtClipboard clipboard_;
  adapters::QtEventPoster poster_{boundary_};
  ports::BoxAnswer planned_ = ports::BoxAnswer::kOk;
  adapters::QtAnsweringMessageBoxes boxes_{boundary_, kTitle,
                                           [this](std::string_view, int) { return planned_; }};
};

/// The offscreen platform warns at every step that it has no real screen.
void PassMessageOn(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& message) {
  static constexpr const char* kNoScreen = "This plugin does not support";
  if (!message.startsWith(QLatin1String(kNoScreen))) std::cerr << message.toStdString() << std::endl;
}

class QtFactory final : public scenario::FrontEndFactory {
 public:
  [[nodiscard]] std::unique_ptr<scenario::FrontEnd> Make(scenario::PathTranslator native_path) override {
    return std::make_unique<QtFrontEnd>(std::move(native_path));
  }

 private:
  // Qt keeps references to both.
  int argument_count_ = 1;
  char program_name_[13] = "cti-scenario";
  char* arguments_[2] = {program_name_, nullptr};
  QApplication application_{argument_count_, arguments_};
};

}  // namespace

std::unique_ptr<scenario::FrontEndFactory> QtFrontEnds() {
  if (!qEnvironmentVariableIsSet(kPlatformVariable)) qputenv(kPlatformVariable, "offscreen");
  qInstallMessageHandler(PassMessageOn);
  return std::make_unique<QtFactory>();
}

}  // namespace kestro::programs

#endif  // KESTRO_WITH_QT
