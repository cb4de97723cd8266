#pragma once

#include <deque>
#include <optional>
#include <string>

#include "ports/message_boxes.h"
#include "scenario/transcript.h"

namespace kestro::scenario {

/// File dialogs answered by the script, in the order of its answers; without
/// one the dialog is cancelled. Writes each dialog down. No dialog is drawn on
/// any front end: the files that it would list are those of this machine.
class RecordingFileDialogs final : public ports::FileDialogs {
 public:
  explicit RecordingFileDialogs(Transcript& transcript) : transcript_(transcript) {}

  /// A path, or nothing for a cancelled dialog.
  void Queue(std::optional<std::string> path) { answers_.push_back(std::move(path)); }
  [[nodiscard]] std::size_t queued() const { return answers_.size(); }

  std::optional<std::string> OpenFile(const ports::FileDialogRequest& request) override;

 private:
  Transcript& transcript_;
  std::deque<std::optional<std::string>> answers_;
};

}  // namespace kestro::scenario
