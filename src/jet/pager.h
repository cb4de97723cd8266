#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "jet/bytes.h"
#include "jet/file_layer.h"
#include "jet/journal.h"
#include "jet/page.h"
#include "jet/page_ref.h"

namespace kestro::jet {

/// The pages of the open file, through a bounded cache, and the transaction that changes them.
///
/// Clean pages give way to others when the cache is full. Changed ones stay until Commit() writes them (with
/// a journal, see JournalWriter) or Rollback() drops them.
class Pager {
 public:
  /// Throws kNotADatabase when the size of `file` is no multiple of the page size.
  Pager(FileLayer& layer, std::unique_ptr<File> file, std::string path, std::size_t cache_pages);
  ~Pager();
  Pager(const Pager&) = delete;
  Pager& operator=(const Pager&) = delete;

  [[nodiscard]] PageNumber page_count() const { return page_count_; }

  /// Throws kDamaged for a page behind the end: the number came from the file.
  [[nodiscard]] PageRef Read(PageNumber page) {
    if (page < by_page_.size()) {
      if (Frame* frame = by_page_[page]) {
        frame->referenced = true;
        return PageRef(*frame);
      }
    }
    return PageRef(Load(page));
  }

  /// For changing a page within the transaction.
  [[nodiscard]] PageEdit Edit(PageNumber page);

  /// A new page of zeros at the end of the file.
  [[nodiscard]] PageEdit Append();

  /// Grows with every change of any page and with every rollback: what was read before may be out of date.
  [[nodiscard]] std::uint64_t changes() const { return changes_; }

  void Begin();
  /// All or nothing: when it throws, the transaction is rolled back (or still open, when nothing was tried).
  /// When it returns, the transaction survives a loss of power.
  void Commit();
  void Rollback();
  /// Commits leave the retired journal for the next one to write over; this removes it. A file that cannot be
  /// removed stays: it does no harm, and the next commit or the next opening takes care of it.
  void RemoveJournal();
  [[nodiscard]] bool in_transaction() const { return in_transaction_; }

  std::size_t BeginSavepoint();
  void ReleaseSavepoint(std::size_t depth);
  void RollbackToSavepoint(std::size_t depth);

  /// A change was left half done: from now on only a rollback to before it is accepted.
  void Doom();
  void RequireSound() const;

 private:
  /// A page as it was when the savepoint was begun.
  struct SavedPage {
    std::unique_ptr<PageBytes> content;  // none: as it is in the file
  };
  struct Savepoint {
    std::uint64_t id = 0;
    PageNumber page_count = 0;
    std::unordered_map<PageNumber, SavedPage> pages;
  };

  Frame& Load(PageNumber page);
  void ReadAhead(PageNumber first, PageNumber end);
  Frame& TakeFrame();
  Frame* SpareFrame();
  Frame* FindVictim();
  void Map(Frame& frame, PageNumber page);
  void Unmap(Frame& frame);
  void ReadFrame(Frame& frame);
  void ReadPages(PageNumber first, MutableBytes bytes);
  void Save(Frame& frame);
  std::unique_ptr<PageBytes> CopyOf(const PageBytes& bytes);
  void KeepRoom(Savepoint& released);
  void Restore(PageNumber page, const SavedPage& saved);
  void Discard(Frame& frame);
  void CutTo(PageNumber page_count);
  void RequireDepth(std::size_t depth) const;

  std::vector<Frame*> ChangedFrames();
  JournalWriter WriteJournal(const std::vector<Frame*>& frames);
  void WriteFrames(const std::vector<Frame*>& frames);
  void UndoFailedCommit(JournalWriter& journal);
  void EndTransaction();
  void ShrinkCache();

  FileLayer& layer_;
  std::unique_ptr<File> file_;
  std::string path_;
  std::size_t cache_pages_;
  std::vector<std::unique_ptr<Frame>> frames_;
  std::vector<Frame*> by_page_;  // one entry a page
  std::size_t hand_ = 0;         // where the search for a page to give up goes on
  PageNumber page_count_ = 0;
  PageNumber committed_count_ = 0;
  PageNumber last_loaded_ = 0;            // the page read from the file last
  std::vector<std::uint8_t> read_ahead_;  // room for pages read at once
  std::uint64_t changes_ = 1;
  bool in_transaction_ = false;
  bool broken_ = false;  // a failed commit could not be undone: only opening anew helps
  JournalWriter::Place journal_ = JournalWriter::Place::kNothing;  // what is beside the file, of ours
  std::vector<Savepoint> savepoints_;
  std::vector<std::unique_ptr<PageBytes>> spare_;  // room of released savepoints, for the next one
  std::uint64_t next_savepoint_ = 1;
  std::size_t doomed_depth_ = 0;  // valid when doomed_: savepoints that were open
  bool doomed_ = false;
};

/// Dooms the transaction unless the change came to its end.
class ChangeGuard {
 public:
  explicit ChangeGuard(Pager& pager) : pager_(&pager) {}
  ~ChangeGuard() {
    if (pager_ != nullptr) pager_->Doom();
  }
  ChangeGuard(const ChangeGuard&) = delete;
  ChangeGuard& operator=(const ChangeGuard&) = delete;
  void Done() { pager_ = nullptr; }

 private:
  Pager* pager_;
};

}  // namespace kestro::jet
