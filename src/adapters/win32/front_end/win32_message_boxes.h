#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/win32/front_end/win32_event_boundary.h"
#include "adapters/win32/hidden_window.h"
#include "ports/message_boxes.h"

namespace kestro::adapters {

/// Real message boxes, in front of every window of the program. Throws
/// base::ProcessEnded when the process ends while a box is open.
class Win32MessageBoxes : public ports::MessageBoxes {
 public:
  /// `title` (UTF-8) stands in the title bar of every box.
  Win32MessageBoxes(Win32EventBoundary& boundary, std::string_view title)
      : boundary_(boundary), title_(title) {}

  ports::BoxAnswer Show(std::string_view text, int style) override;

 protected:
  /// The box is about to be shown.
  virtual void BoxOpens(std::string_view /*text*/, int /*style*/) {}
  [[nodiscard]] Win32EventBoundary& boundary() { return boundary_; }

 private:
  int Open(std::string_view text, UINT style);

  Win32EventBoundary& boundary_;
  std::string title_;
};

/// The same boxes with their buttons pressed by a program: the box opens, then
/// the button of the answer is pressed. An answer that the box has no button for
/// presses its first one.
class Win32AnsweringMessageBoxes final : public Win32MessageBoxes {
 public:
  using Answerer = std::function<ports::BoxAnswer(std::string_view text, int style)>;

  Win32AnsweringMessageBoxes(Win32EventBoundary& boundary, std::string_view title, Answerer answerer);

 private:
  void BoxOpens(std::string_view text, int style) override;
  /// Presses as soon as there is a box to press in.
  void Press();

  Answerer answerer_;
  HiddenWindow waiter_;
  std::vector<std::function<ports::BoxAnswer()>> due_;  // of the boxes that open, from the outer to the inner
};

}  // namespace kestro::adapters
