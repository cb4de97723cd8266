#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "adapters/qt/event_boundary.h"
#include "ports/message_boxes.h"

class QMessageBox;

namespace kestro::adapters {

/// Real message boxes, in front of every window of the program. Throws
/// base::ProcessEnded when the process ends while a box is open.
class QtMessageBoxes : public ports::MessageBoxes {
 public:
  /// `title` (UTF-8) stands in the title bar of every box.
  QtMessageBoxes(EventBoundary& boundary, std::string_view title) : boundary_(boundary), title_(title) {}

  ports::BoxAnswer Show(std::string_view text, int style) override;

 protected:
  /// The box is about to be shown.
  virtual void BoxOpens(QMessageBox& /*box*/, std::string_view /*text*/, int /*style*/) {}
  [[nodiscard]] EventBoundary& boundary() { return boundary_; }

 private:
  EventBoundary& boundary_;
  std::string title_;
};

/// The same boxes with their buttons pressed by a program: the box opens, then
/// the button of the answer is pressed. An answer that the box has no button for
/// presses its first one.
class QtAnsweringMessageBoxes final : public QtMessageBoxes {
 public:
  using Answerer = std::function<ports::BoxAnswer(std::string_view text, int style)>;

  QtAnsweringMessageBoxes(EventBoundary& boundary, std::string_view title, Answerer answerer)
      : QtMessageBoxes(boundary, title), answerer_(std::move(answerer)) {}

 private:
  void BoxOpens(QMessageBox& box, std::string_view text, int style) override;

  Answerer answerer_;
};

}  // namespace kestro::adapters
