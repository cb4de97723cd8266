#include "scenario/recording_message_boxes.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "scenario/quoting.h"

namespace kestro::scenario {
namespace {

using ports::BoxAnswer;

/// Style bits that choose the buttons.
constexpr int kButtonMask = 7;

constexpr std::array<std::pair<BoxAnswer, std::string_view>, 4> kWords = {{
    {BoxAnswer::kOk, "ok"},
    {BoxAnswer::kCancel, "cancel"},
    {BoxAnswer::kYes, "yes"},
    {BoxAnswer::kNo, "no"},
}};

bool AsksYesOrNo(int style) { return (style & kButtonMask) == ports::kYesNo; }

BoxAnswer UsualAnswer(int style) { return AsksYesOrNo(style) ? BoxAnswer::kYes : BoxAnswer::kOk; }

bool Offers(int style, BoxAnswer answer) {
  return answer == UsualAnswer(style) || (AsksYesOrNo(style) && answer == BoxAnswer::kNo);
}

}  // namespace

std::string_view AnswerWord(BoxAnswer answer) {
  return std::find_if(kWords.begin(), kWords.end(), [&](const auto& word) { return word.first == answer; })
      ->second;
}

std::optional<BoxAnswer> AnswerOfWord(std::string_view word) {
  const auto found =
      std::find_if(kWords.begin(), kWords.end(), [&](const auto& entry) { return entry.second == word; });
  return found == kWords.end() ? std::nullopt : std::optional(found->first);
}

BoxAnswer RecordingMessageBoxes::NextAnswer(int style) {
  if (answers_.empty()) return UsualAnswer(style);
  const BoxAnswer answer = answers_.front();
  answers_.pop_front();
  if (Offers(style, answer)) return answer;
  problems_.Add("the message box does not offer the answer " + std::string(AnswerWord(answer)));
  return UsualAnswer(style);
}

BoxAnswer RecordingMessageBoxes::Show(std::string_view text, int style) {
  ++open_;
  const BoxAnswer answer = presenter_(text, style, NextAnswer(style));
  --open_;
  transcript_.Add("box style=" + std::to_string(style) + " " + Quoted(text) + " = " +
                  std::string(AnswerWord(answer)));
  return answer;
}

}  // namespace kestro::scenario
