#pragma once

#include "adapters/qt/event_boundary.h"
#include "adapters/qt/qt_form_host.h"
#include "ports/message_boxes.h"

namespace kestro::adapters {

/// The desktop's file dialog. Throws base::ProcessEnded when the process ends
/// while it is open.
class QtFileDialogs final : public ports::FileDialogs {
 public:
  /// The translators lead from the program's paths to native ones and back.
  QtFileDialogs(EventBoundary& boundary, PathTranslator native_path, PathTranslator system_path)
      : boundary_(boundary), native_path_(std::move(native_path)), system_path_(std::move(system_path)) {}

  std::optional<std::string> OpenFile(const ports::FileDialogRequest& request) override;

 private:
  EventBoundary& boundary_;
  PathTranslator native_path_;
  PathTranslator system_path_;
};

}  // namespace kestro::adapters
