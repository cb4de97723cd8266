#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string_view>

#include "ports/message_boxes.h"
#include "scenario/problems.h"
#include "scenario/transcript.h"

namespace kestro::scenario {

/// Shows a box and gives it the planned answer; returns what the box answered.
using BoxPresenter =
    std::function<ports::BoxAnswer(std::string_view text, int style, ports::BoxAnswer planned)>;

/// Message boxes answered by the script, in the order of its answers; without
/// one, a question is answered yes and a notice ok. Writes each box down. An
/// answer that the box does not offer is a problem.
class RecordingMessageBoxes final : public ports::MessageBoxes {
 public:
  RecordingMessageBoxes(BoxPresenter presenter, Transcript& transcript, Problems& problems)
      : presenter_(std::move(presenter)), transcript_(transcript), problems_(problems) {}

  void Queue(ports::BoxAnswer answer) { answers_.push_back(answer); }
  [[nodiscard]] std::size_t queued() const { return answers_.size(); }
  /// A box is on the screen.
  [[nodiscard]] bool open() const { return open_ > 0; }

  ports::BoxAnswer Show(std::string_view text, int style) override;

 private:
  [[nodiscard]] ports::BoxAnswer NextAnswer(int style);

  BoxPresenter presenter_;
  Transcript& transcript_;
  Problems& problems_;
  std::deque<ports::BoxAnswer> answers_;
  int open_ = 0;
};

/// The script's word for an answer, and the other way round.
[[nodiscard]] std::string_view AnswerWord(ports::BoxAnswer answer);
[[nodiscard]] std::optional<ports::BoxAnswer> AnswerOfWord(std::string_view word);

}  // namespace kestro::scenario
