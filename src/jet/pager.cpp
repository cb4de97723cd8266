#include "jet/pager.h"

#include <algorithm>
#include <utility>

#include "jet/error.h"

namespace kestro::jet {
namespace {

constexpr std::size_t kLeastCachePages = 16;
// A search for a page to give up that meets only changed or used ones must not take longer and longer.
constexpr std::size_t kMostVictimSteps = 64;
constexpr PageNumber kPagesPerRead = 8;
// The pages of a table lie one behind the other, but for single pages of its indexes.
constexpr PageNumber kMostStride = 4;

}  // namespace

Pager::Pager(FileLayer& layer, std::unique_ptr<File> file, std::string path, std::size_t cache_pages)
    : layer_(layer),
      file_(std::move(file)),
      path_(std::move(path)),
      cache_pages_(std::max(cache_pages, kLeastCachePages)) {
  const std::uint64_t size = file_->Size();
  if (size % kPageSize != 0 || size / kPageSize > kMostPages) {
    throw Error(ErrorKind::kNotADatabase, "The size of the file is not that of a database");
  }
  page_count_ = static_cast<PageNumber>(size / kPageSize);
  committed_count_ = page_count_;
  by_page_.resize(page_count_);
}

Pager::~Pager() {
  try {
    RemoveJournal();
  } catch (...) {
    // Not even an Error; the journal may stay.
  }
}

Frame& Pager::Load(PageNumber page) {
  if (page >= page_count_) {
    throw Error(ErrorKind::kDamaged, "Page " + std::to_string(page) + " is behind the end of the file");
  }
  const bool onwards = page > last_loaded_ && page - last_loaded_ <= kMostStride;
  last_loaded_ = page;
  if (onwards) {
    PageNumber end = page + 1;
    const PageNumber limit = std::min({page + kPagesPerRead, page_count_, committed_count_});
    while (end < limit && by_page_[end] == nullptr) ++end;
    if (end - page > 1) ReadAhead(page, end);
    if (Frame* frame = by_page_[page]) return *frame;
  }
  Frame& frame = TakeFrame();
  frame.page = page;
  ReadFrame(frame);
  Map(frame, page);
  return frame;
}

// Pages that are not in memory, so that they are as in the file. One request for all costs hardly more than
// one for each. The first one comes last: the others may be given up again when there is little room.
void Pager::ReadAhead(PageNumber first, PageNumber end) {
  read_ahead_.resize(kPagesPerRead * kPageSize);
  const MutableBytes bytes = MutableBytes(read_ahead_).first((end - first) * kPageSize);
  ReadPages(first, bytes);
  for (PageNumber page = end; page-- > first;) {
    Frame* frame = SpareFrame();
    if (frame == nullptr) return;
    Copy(frame->bytes, 0, bytes.subspan((page - first) * kPageSize, kPageSize));
    Map(*frame, page);
  }
  last_loaded_ = end - 1;
}

void Pager::ReadFrame(Frame& frame) { ReadPages(frame.page, frame.bytes); }

void Pager::ReadPages(PageNumber first, MutableBytes bytes) {
  if (broken_)
    throw Error(ErrorKind::kFileSystem, "A failed commit could not be undone; open the file again");
  if (file_->ReadAt(static_cast<std::uint64_t>(first) * kPageSize, bytes) != bytes.size()) {
    throw Error(ErrorKind::kFileSystem, "The database file has become shorter");
  }
}

Frame& Pager::TakeFrame() {
  if (Frame* spare = SpareFrame()) return *spare;
  frames_.push_back(std::make_unique<Frame>());
  return *frames_.back();
}

// Within the bound of the cache; null when all pages in it are needed.
Frame* Pager::SpareFrame() {
  if (frames_.size() < cache_pages_) {
    frames_.push_back(std::make_unique<Frame>());
    return frames_.back().get();
  }
  Frame* const victim = FindVictim();
  if (victim != nullptr) Unmap(*victim);
  return victim;
}

Frame* Pager::FindVictim() {
  for (std::size_t step = 0; step < kMostVictimSteps; ++step) {
    hand_ = hand_ + 1 < frames_.size() ? hand_ + 1 : 0;
    Frame& frame = *frames_[hand_];
    if (frame.pins > 0 || frame.dirty) continue;
    if (!std::exchange(frame.referenced, false)) return &frame;
  }
  return nullptr;
}

void Pager::Map(Frame& frame, PageNumber page) {
  frame.page = page;
  frame.dirty = false;
  frame.referenced = true;
  frame.saved_in = 0;
  frame.mapped = true;
  by_page_[page] = &frame;
}

void Pager::Unmap(Frame& frame) {
  if (frame.mapped && frame.page < by_page_.size()) by_page_[frame.page] = nullptr;
  frame.mapped = false;
  frame.dirty = false;
  frame.referenced = false;
}

void Pager::RequireSound() const {
  if (!in_transaction_) throw Error(ErrorKind::kMisuse, "A change needs a transaction");
  if (doomed_)
    throw Error(ErrorKind::kMisuse, "An earlier change failed; the transaction must be rolled back");
}

PageEdit Pager::Edit(PageNumber page) {
  RequireSound();
  if (page == 0 && committed_count_ > 0) {
    throw Error(ErrorKind::kDamaged, "The first page is never changed, but another one refers to it");
  }
  const PageRef held = Read(page);
  Frame& frame = *by_page_[page];
  if (!savepoints_.empty() && frame.saved_in != savepoints_.back().id) Save(frame);
  frame.dirty = true;
  ++changes_;
  return PageEdit(frame);
}

PageEdit Pager::Append() {
  RequireSound();
  if (page_count_ >= kMostPages) throw Error(ErrorKind::kFull, "The database has reached 2 GiB");
  Frame& frame = TakeFrame();
  by_page_.resize(page_count_ + 1);
  Map(frame, page_count_);
  ++page_count_;
  frame.bytes.fill(0);
  frame.dirty = true;
  if (!savepoints_.empty()) frame.saved_in = savepoints_.back().id;
  ++changes_;
  return PageEdit(frame);
}

void Pager::Begin() {
  if (in_transaction_) throw Error(ErrorKind::kMisuse, "A transaction is open already");
  if (broken_)
    throw Error(ErrorKind::kFileSystem, "A failed commit could not be undone; open the file again");
  in_transaction_ = true;
  doomed_ = false;
}

void Pager::Discard(Frame& frame) {
  // Somebody may still hold the page: then the frame stays where it is, with the old content.
  if (frame.pins > 0 && frame.page < committed_count_) {
    frame.dirty = false;
    frame.saved_in = 0;
    ReadFrame(frame);
  } else {
    Unmap(frame);
  }
}

void Pager::CutTo(PageNumber page_count) {
  for (PageNumber page = page_count; page < page_count_; ++page) {
    if (by_page_[page] != nullptr) Unmap(*by_page_[page]);
  }
  page_count_ = page_count;
  by_page_.resize(page_count);
}

void Pager::Rollback() {
  if (!in_transaction_) throw Error(ErrorKind::kMisuse, "There is no transaction to roll back");
  CutTo(committed_count_);
  EndTransaction();
  for (const std::unique_ptr<Frame>& frame : frames_) {
    if (frame->dirty) Discard(*frame);
  }
}

void Pager::EndTransaction() {
  in_transaction_ = false;
  doomed_ = false;
  savepoints_.clear();
  ++changes_;
}

void Pager::Doom() {
  if (!in_transaction_ || doomed_) return;
  doomed_ = true;
  doomed_depth_ = savepoints_.size();
}

}  // namespace kestro::jet
