#include "adapters/sqlite/jet_session.h"

#include <algorithm>

namespace kestro::adapters {

void JetSession::Begin() {
  if (!database_->InTransaction()) database_->Begin();
}

void JetSession::Commit() {
  if (database_->InTransaction()) database_->Commit();
  savepoints_.clear();
}

void JetSession::Rollback() {
  NoteChange();
  savepoints_.clear();
  if (database_->InTransaction()) database_->Rollback();
}

/// The first savepoint of the file with this number or a higher one.
std::size_t JetSession::DepthOf(int number) const {
  return static_cast<std::size_t>(std::ranges::lower_bound(savepoints_, number) - savepoints_.begin());
}

void JetSession::BeginSavepoint(int number) {
  if (DepthOf(number) < savepoints_.size()) return;
  database_->BeginSavepoint();
  savepoints_.push_back(number);
}

void JetSession::ReleaseSavepoint(int number) {
  const std::size_t depth = DepthOf(number);
  if (depth == savepoints_.size()) return;
  const int outer = depth == 0 ? -1 : savepoints_[depth - 1];
  // It goes on standing for those around it that were never told.
  const bool stays = number - 1 > outer;
  const std::size_t kept = stays ? depth + 1 : depth;
  if (kept < savepoints_.size()) database_->ReleaseSavepoint(kept);
  savepoints_.resize(kept);
  if (stays) savepoints_.back() = number - 1;
}

void JetSession::RollbackToSavepoint(int number) {
  if (number < 0) {  // the savepoint that began the transaction; the transaction goes on
    Rollback();
    Begin();
    return;
  }
  const std::size_t depth = DepthOf(number);
  if (depth == savepoints_.size()) return;
  NoteChange();
  database_->RollbackToSavepoint(depth);
  savepoints_.resize(depth + 1);
  // It may have been begun for an inner one: nothing had been changed between the two.
  savepoints_.back() = number;
}

}  // namespace kestro::adapters
