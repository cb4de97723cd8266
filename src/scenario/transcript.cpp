#include "scenario/transcript.h"

#include <algorithm>

namespace kestro::scenario {
namespace {

std::string_view WithoutLeadingBlanks(std::string_view line) {
  return line.substr(std::min(line.size(), line.find_first_not_of(' ')));
}

}  // namespace

void Transcript::Begin(std::string_view action, bool looking) {
  if (!looking) {
    if (first_of_action_.size() == 1) lines_.clear();
    first_of_action_.back() = lines_.size();
  }
  Print("> " + std::string(action));
}

void Transcript::Add(std::string line) {
  if (closed_) return;
  lines_.push_back(line);
  Print(std::move(line));
}

template <class Predicate>
bool Transcript::AnyOfAction(Predicate predicate) const {
  const auto first = std::next(lines_.begin(), static_cast<std::ptrdiff_t>(first_of_action_.back()));
  return std::any_of(first, lines_.end(),
                     [&](const auto& line) { return predicate(WithoutLeadingBlanks(line)); });
}

bool Transcript::Contains(std::string_view text) const {
  // A script's line cannot end in blanks, a transcript's can.
  return AnyOfAction([&](std::string_view line) {
    return line.starts_with(text) && line.find_first_not_of(' ', text.size()) == std::string_view::npos;
  });
}

bool Transcript::ContainsBeginning(std::string_view text) const {
  return AnyOfAction([&](std::string_view line) { return line.starts_with(text); });
}

void Transcript::Print(std::string line) {
  if (closed_) return;
  sink_(line);
  tail_.push_back(std::move(line));
  if (tail_.size() > kTailLength) tail_.pop_front();
}

}  // namespace kestro::scenario
