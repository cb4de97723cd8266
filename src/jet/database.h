#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "jet/catalog.h"
#include "jet/file_layer.h"
#include "jet/header_page.h"
#include "jet/storage.h"
#include "jet/table.h"
#include "jet/table_design.h"

namespace kestro::jet {

enum class OpenMode { kReadOnly, kReadWrite };

struct DatabaseOptions {
  /// Pages of 4 KiB kept in memory; many make a scan slower. Pages changed by the running transaction come on
  /// top.
  std::size_t cache_pages = 1024;
  /// The time for the catalogue's dates: days since 1899-12-30. Empty: the system's clock, UTC.
  std::function<double()> now;
};

/// An open database file. The file belongs to this object alone as long as it is open for writing; open for
/// reading, others may read it too. One thread at a time.
///
/// Changes are collected in memory and reach the file with Commit(), all or none, also when the machine
/// stops in the middle of it. An abandoned object (destroyed, or the program ended) rolls back.
class Database {
 public:
  /// kReadWrite finishes what a crash has interrupted, and falls back to reading when the file may not be
  /// changed (ReadOnlyReason() says why). kReadOnly changes nothing, and refuses a file in need of recovery.
  /// Throws kNotFound, kBusy, kFileSystem, kNotADatabase (text says what is not supported), kDamaged.
  static std::unique_ptr<Database> Open(FileLayer& layer, const std::string& path, OpenMode mode,
                                        DatabaseOptions options = {});

  /// Creates an empty database; kFileSystem when the file exists already. A crash leaves either no usable
  /// file or the whole one.
  static std::unique_ptr<Database> Create(FileLayer& layer, const std::string& path,
                                          DatabaseOptions options = {});

  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  /// Empty when the file may be changed. A table can have a reason of its own.
  [[nodiscard]] const std::string& ReadOnlyReason() const { return storage_->read_only_reason; }

  /// The user's tables, in the order of their creation. Linked ones are left out: their rows are elsewhere.
  [[nodiscard]] std::vector<std::string> Tables();

  /// Also opens system tables, for reading. kNotFound when there is none of this name (case does not count).
  /// The same object as long as somebody holds it.
  [[nodiscard]] std::shared_ptr<Table> OpenTable(std::string_view name);

  /// Both need a transaction. kValue for a design or a name that is not possible.
  std::shared_ptr<Table> CreateTable(const TableDesign& design);
  void DropTable(std::string_view name);

  void Begin();
  void Commit();
  void Rollback();
  [[nodiscard]] bool InTransaction() const;

  /// Removes the file that commits use again and leave beside the database: for when no change is in sight.
  /// Closing the database does it too.
  void LeaveOneFile();

  /// Savepoints nest within a transaction and are known by their depth: the first open one is 0.
  std::size_t BeginSavepoint();
  /// Forgets the savepoint and those within it; their changes become part of what is around.
  void ReleaseSavepoint(std::size_t depth);
  /// Undoes everything since it was begun; it stays open, those within it are gone.
  void RollbackToSavepoint(std::size_t depth);

  // --- for the checker ---
  [[nodiscard]] Storage& storage() { return *storage_; }
  [[nodiscard]] Catalog& catalog() { return *catalog_; }

 private:
  Database(FileLayer& layer, std::string path, DatabaseOptions options);

  void ForgetChanges();
  void RequireChangeable() const;

  FileLayer& layer_;
  std::string path_;
  DatabaseOptions options_;
  std::unique_ptr<Storage> storage_;
  std::unique_ptr<Catalog> catalog_;
  std::map<PageNumber, std::weak_ptr<Table>> tables_;  // by definition page
  bool tables_changed_ = false;                        // since Begin()
};

/// Rolls back unless Commit() was called.
class Transaction {
 public:
  explicit Transaction(Database& database) : database_(&database) { database.Begin(); }
  ~Transaction() {
    if (database_ != nullptr && database_->InTransaction()) database_->Rollback();
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit() {
    database_->Commit();
    database_ = nullptr;
  }

 private:
  Database* database_;
};

}  // namespace kestro::jet
