#include <algorithm>
#include <utility>

#include "jet/error.h"
#include "jet/pager.h"

namespace kestro::jet {

std::size_t Pager::BeginSavepoint() {
  RequireSound();
  Savepoint savepoint;
  savepoint.id = next_savepoint_++;
  savepoint.page_count = page_count_;
  savepoints_.push_back(std::move(savepoint));
  return savepoints_.size() - 1;
}

void Pager::RequireDepth(std::size_t depth) const {
  if (!in_transaction_ || depth >= savepoints_.size()) {
    throw Error(ErrorKind::kMisuse, "There is no savepoint of this depth");
  }
}

// Keeps the content of a page about to be changed for the innermost savepoint, once.
void Pager::Save(Frame& frame) {
  Savepoint& savepoint = savepoints_.back();
  frame.saved_in = savepoint.id;
  if (frame.page >= savepoint.page_count) return;  // did not exist then
  const auto [place, added] = savepoint.pages.try_emplace(frame.page);
  if (added && frame.dirty) place->second.content = std::make_unique<PageBytes>(frame.bytes);
}

void Pager::ReleaseSavepoint(std::size_t depth) {
  RequireDepth(depth);
  while (savepoints_.size() > depth) {
    Savepoint inner = std::move(savepoints_.back());
    savepoints_.pop_back();
    // What the outer one has kept itself is older.
    if (savepoints_.empty()) continue;
    Savepoint& outer = savepoints_.back();
    for (auto& [page, saved] : inner.pages) {
      if (page < outer.page_count) outer.pages.try_emplace(page, std::move(saved));
    }
  }
  if (doomed_) doomed_depth_ = std::min(doomed_depth_, savepoints_.size());
}

void Pager::Restore(PageNumber page, const SavedPage& saved) {
  Frame* frame = by_page_[page];
  if (saved.content != nullptr) {
    frame->bytes = *saved.content;  // changed pages never leave the cache
    frame->saved_in = 0;
    return;
  }
  Discard(*frame);
}

void Pager::RollbackToSavepoint(std::size_t depth) {
  RequireDepth(depth);
  CutTo(savepoints_[depth].page_count);
  while (savepoints_.size() > depth) {
    for (const auto& [page, saved] : savepoints_.back().pages) {
      if (page < page_count_ && by_page_[page] != nullptr) Restore(page, saved);
    }
    savepoints_.pop_back();
  }
  if (doomed_ && depth < doomed_depth_) doomed_ = false;
  Savepoint again;
  again.id = next_savepoint_++;
  again.page_count = page_count_;
  savepoints_.push_back(std::move(again));
  ++changes_;
}

}  // namespace kestro::jet
