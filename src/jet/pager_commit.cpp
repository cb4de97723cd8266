#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "jet/error.h"
#include "jet/journal.h"
#include "jet/pager.h"

namespace kestro::jet {
namespace {

constexpr std::size_t kMostPagesPerWrite = 64;

}  // namespace

void Pager::Commit() {
  RequireSound();
  const std::vector<Frame*> frames = ChangedFrames();
  if (frames.empty()) {
    EndTransaction();
    return;
  }
  const std::string journal = JournalPath(path_);
  try {
    WriteJournal(frames);
  } catch (...) {
    layer_.Remove(journal);  // the database is untouched; the transaction stays open
    throw;
  }
  try {
    WriteFrames(frames);
    file_->Sync();
    layer_.Remove(journal);
  } catch (...) {
    UndoFailedCommit();
    throw;
  }
  for (Frame* frame : frames) frame->dirty = false;
  committed_count_ = page_count_;
  EndTransaction();
  ShrinkCache();
  // The transaction counts; only whether that survives a loss of power is open when this fails.
  layer_.SyncFolder(journal);
}

// A big transaction makes the cache grow beyond its bound.
void Pager::ShrinkCache() {
  if (frames_.size() <= cache_pages_) return;
  std::size_t kept = 0;
  std::erase_if(frames_, [this, &kept](const std::unique_ptr<Frame>& frame) {
    if (frame->pins > 0 || ++kept <= cache_pages_) return false;
    Unmap(*frame);
    return true;
  });
  hand_ = 0;
}

std::vector<Frame*> Pager::ChangedFrames() {
  std::vector<Frame*> frames;
  for (const std::unique_ptr<Frame>& frame : frames_) {
    if (frame->dirty) frames.push_back(frame.get());
  }
  std::ranges::sort(frames, {}, &Frame::page);
  return frames;
}

void Pager::WriteJournal(const std::vector<Frame*>& frames) {
  const auto old_page = [this](const Frame* frame) { return frame->page < committed_count_; };
  const auto records = static_cast<std::uint32_t>(std::ranges::count_if(frames, old_page));
  JournalWriter journal(layer_, JournalPath(path_), static_cast<std::uint64_t>(committed_count_) * kPageSize,
                        records);
  PageBytes original;
  for (const Frame* frame : frames) {
    if (!old_page(frame)) continue;
    if (file_->ReadAt(static_cast<std::uint64_t>(frame->page) * kPageSize, original) != kPageSize) {
      throw Error(ErrorKind::kFileSystem, "The database file has become shorter");
    }
    journal.Add(frame->page, original);
  }
  journal.Finish();
}

void Pager::WriteFrames(const std::vector<Frame*>& frames) {
  std::vector<std::uint8_t> run;
  for (std::size_t first = 0; first < frames.size();) {
    run.clear();
    std::size_t next = first;
    while (next < frames.size() && next - first < kMostPagesPerWrite &&
           frames[next]->page == frames[first]->page + (next - first)) {
      run.insert(run.end(), frames[next]->bytes.begin(), frames[next]->bytes.end());
      ++next;
    }
    file_->WriteAt(static_cast<std::uint64_t>(frames[first]->page) * kPageSize, run);
    first = next;
  }
}

// Some pages may have reached the file: brings back what was there, as the next opening would.
void Pager::UndoFailedCommit() {
  try {
    const std::string path = JournalPath(path_);
    {
      const std::unique_ptr<File> journal = layer_.Open(path, FileMode::kReadWrite);
      const std::optional<JournalHeader> header = ReadCompleteJournal(*journal);
      if (!header) throw Error(ErrorKind::kFileSystem, "The journal cannot be read back");
      RestoreFromJournal(*journal, *header, *file_);
    }
    layer_.Remove(path);
    layer_.SyncFolder(path);
    Rollback();
  } catch (...) {
    // Whoever opens the file next does it: the journal is still there. Nothing in memory may be trusted.
    CutTo(committed_count_);
    EndTransaction();
    for (const std::unique_ptr<Frame>& frame : frames_) Unmap(*frame);
    broken_ = true;
  }
}

}  // namespace kestro::jet
