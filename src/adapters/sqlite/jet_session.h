#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "adapters/sqlite/jet_order.h"
#include "jet/database.h"

namespace kestro::adapters {

/// An open database file as the virtual tables of one connection share it. One thread only.
///
/// SQLite tells each table that takes part about transactions and savepoints; the file has one transaction.
/// So everything here may be said several times and counts once.
class JetSession {
 public:
  explicit JetSession(std::unique_ptr<jet::Database> database) : database_(std::move(database)) {}

  [[nodiscard]] jet::Database& database() { return *database_; }
  [[nodiscard]] JetOrders& orders() { return orders_; }

  /// Grows with every change of a row and with every way back: what was read before may be out of date.
  [[nodiscard]] std::uint64_t changes() const { return changes_; }
  /// Before a row is changed.
  void NoteChange() { ++changes_; }

  void Begin();
  void Commit();
  void Rollback();

  /// Savepoints by SQLite's numbers: 0 for the outermost one within the transaction, below 0 for one that
  /// began the transaction. Of those that are open when the first table joins only the innermost is told: it
  /// stands for all of them, since nothing was changed between.
  void BeginSavepoint(int number);
  void ReleaseSavepoint(int number);
  void RollbackToSavepoint(int number);

 private:
  [[nodiscard]] std::size_t DepthOf(int number) const;

  std::unique_ptr<jet::Database> database_;
  std::vector<int> savepoints_;  // SQLite's number of each savepoint of the file, ascending; it stands for
                                 // those between the one before and itself, too
  std::uint64_t changes_ = 0;
  JetOrders orders_;
};

}  // namespace kestro::adapters
