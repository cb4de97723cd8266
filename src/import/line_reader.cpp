#include "import/line_reader.h"

#include <algorithm>
#include <utility>

namespace kestro::import {

/// A file that grows behind its end stays ended.
bool LineReader::Fill() {
  if (at_end_) return false;
  position_ = 0;
  filled_ = file_->Read(block_);
  at_end_ = filled_ == 0;
  return !at_end_;
}

LineReader::Step LineReader::Next() {
  if (position_ == filled_ && !Fill()) return in_line_ ? Finish({}) : Step::kEnd;
  if (std::exchange(behind_carriage_return_, false) && block_[position_] == '\n') {
    ++position_;
    return Step::kMore;
  }
  const std::string_view unread(block_.data() + position_, filled_ - position_);
  const auto end = std::find_if(unread.begin(), unread.end(), [](char c) { return c == '\n' || c == '\r'; });
  const std::string_view part = unread.substr(0, static_cast<std::size_t>(end - unread.begin()));
  position_ += part.size();
  if (end == unread.end()) {
    Keep(part);
    return Step::kMore;
  }
  behind_carriage_return_ = *end == '\r';
  ++position_;
  return Finish(part);
}

void LineReader::Keep(std::string_view part) {
  if (!in_line_) begun_.clear();
  in_line_ = true;
  too_long_ = too_long_ || begun_.size() + part.size() > kMostLineBytes;
  if (!too_long_) begun_.append(part);
}

LineReader::Step LineReader::Finish(std::string_view rest) {
  line_ = rest;
  if (in_line_) {
    Keep(rest);
    line_ = begun_;
  }
  in_line_ = false;
  return std::exchange(too_long_, false) ? Step::kTooLong : Step::kLine;
}

}  // namespace kestro::import
