#include <algorithm>
#include <utility>

#include "jet/error.h"
#include "jet/pager.h"

namespace kestro::jet {
namespace {

constexpr std::size_t kMostSparePages = 64;

}  // namespace

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
  if (added && frame.dirty) place->second.content = CopyOf(frame.bytes);
}

// A savepoint a row would take and give back the same few pages over and over.
std::unique_ptr<PageBytes> Pager::CopyOf(const PageBytes& bytes) {
  if (spare_.empty()) return std::make_unique<PageBytes>(bytes);
  std::unique_ptr<PageBytes> copy = std::move(spare_.back());
  spare_.pop_back();
  *copy = bytes;
  return copy;
}

void Pager::KeepRoom(Savepoint& released) {
  for (auto& [page, saved] : released.pages) {
    if (saved.content != nullptr && spare_.size() < kMostSparePages)
      spare_.push_back(std::move(saved.content));
  }
}

void Pager::ReleaseSavepoint(std::size_t depth) {
  RequireDepth(depth);
  while (savepoints_.size() > depth) {
    Savepoint inner = std::move(savepoints_.back());
    savepoints_.pop_back();
    if (!savepoints_.empty()) {
      // What the outer one has kept itself is older.
      Savepoint& outer = savepoints_.back();
      for (auto& [page, saved] : inner.pages) {
        if (page < outer.page_count) outer.pages.try_emplace(page, std::move(saved));
      }
    }
    KeepRoom(inner);
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
