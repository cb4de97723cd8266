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
constexpr std::uint64_t kLongestKeptJournal = std::uint64_t{8} << 20;  // a longer one is removed

}  // namespace

void Pager::Commit() {
  RequireSound();
  const std::vector<Frame*> frames = ChangedFrames();
  if (frames.empty()) {
    EndTransaction();
    return;
  }
  std::optional<JournalWriter> journal;
  try {
    journal.emplace(WriteJournal(frames));
  } catch (...) {
    // The database is untouched; the transaction stays open.
    journal_ = JournalWriter::Place::kLeftOver;
    RemoveJournal();
    throw;
  }
  try {
    WriteFrames(frames);
    file_->Sync();
    journal->Retire();
  } catch (...) {
    UndoFailedCommit(*journal);
    throw;
  }
  // The transaction counts. Nothing that may fail comes behind this point.
  for (Frame* frame : frames) frame->dirty = false;
  committed_count_ = page_count_;
  EndTransaction();
  ShrinkCache();
  journal_ = JournalWriter::Place::kRetired;
  const bool keep = journal->size() <= kLongestKeptJournal;
  journal.reset();
  if (!keep) RemoveJournal();
}

void Pager::RemoveJournal() {
  if (journal_ == JournalWriter::Place::kNothing) return;
  try {
    layer_.Remove(JournalPath(path_));
    journal_ = JournalWriter::Place::kNothing;
  } catch (const Error&) {
    // See the declaration.
  }
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

JournalWriter Pager::WriteJournal(const std::vector<Frame*>& frames) {
  const auto old_page = [this](const Frame* frame) { return frame->page < committed_count_; };
  const auto records = static_cast<std::uint32_t>(std::ranges::count_if(frames, old_page));
  const std::string path = JournalPath(path_);
  JournalWriter::Place place = std::exchange(journal_, JournalWriter::Place::kNothing);
  if (!layer_.Exists(path)) place = JournalWriter::Place::kNothing;  // somebody may have removed it
  JournalWriter journal(layer_, path, place, static_cast<std::uint64_t>(committed_count_) * kPageSize,
                        records);
  for (const Frame* frame : frames) {
    if (old_page(frame)) journal.Add(frame->page, *file_);
  }
  journal.Finish();
  return journal;
}

void Pager::WriteFrames(const std::vector<Frame*>& frames) {
  std::vector<std::uint8_t> run;
  for (std::size_t first = 0; first < frames.size();) {
    std::size_t next = first + 1;
    while (next < frames.size() && next - first < kMostPagesPerWrite &&
           frames[next]->page == frames[first]->page + (next - first)) {
      ++next;
    }
    run.clear();
    for (std::size_t i = first; next - first > 1 && i < next; ++i) {
      run.insert(run.end(), frames[i]->bytes.begin(), frames[i]->bytes.end());
    }
    file_->WriteAt(static_cast<std::uint64_t>(frames[first]->page) * kPageSize,
                   run.empty() ? ByteSpan(frames[first]->bytes) : ByteSpan(run));
    first = next;
  }
}

// Some pages may have reached the file: brings back what was there, as the next opening would.
void Pager::UndoFailedCommit(JournalWriter& journal) {
  try {
    journal.Revive();
    const std::optional<JournalHeader> header = ReadCompleteJournal(journal.file());
    if (!header) throw Error(ErrorKind::kFileSystem, "The journal cannot be read back");
    RestoreFromJournal(journal.file(), *header, *file_);
    journal.Retire();
    journal_ = JournalWriter::Place::kRetired;
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
