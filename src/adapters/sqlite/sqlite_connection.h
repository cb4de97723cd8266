#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/sqlite/handle_pool.h"
#include "ports/database.h"

namespace kestro::adapters {

/// Turns a system path ("\" separators) into one of the machine at hand.
using NativePathFunction = std::function<std::filesystem::path(std::string_view system_path)>;

class SqliteConnection final : public ports::Connection {
 public:
  /// Both must outlive the connection.
  SqliteConnection(HandlePool& pool, const NativePathFunction& native_path)
      : pool_(pool), native_path_(native_path) {}
  /// Closes; an open transaction is rolled back.
  ~SqliteConnection() override;
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;

  void SetConnectionString(std::string_view text) override { connection_string_ = text; }
  /// The engine has one cursor kind and no users; locking is stricter than any level asked for.
  void SetCursorLocation(int /*location*/) override {}
  void SetIsolationLevel(int /*level*/) override {}
  void Open(std::string_view connection_string, std::string_view user, std::string_view password,
            int options) override;
  void Close() override;
  void BeginTransaction() override;
  void CommitTransaction() override;
  void RollbackTransaction() override;
  [[nodiscard]] std::int64_t LastInsertedKey() override;

  /// Raises when the connection is not open.
  [[nodiscard]] const std::shared_ptr<SqliteHandle>& handle() const;
  /// Sets what LastInsertedKey reports.
  void NoteInsertedKey(std::int64_t key) { last_inserted_key_ = key; }

 private:
  HandlePool& pool_;
  const NativePathFunction& native_path_;
  std::string connection_string_;
  std::shared_ptr<SqliteHandle> handle_;
  std::int64_t last_inserted_key_ = 0;
  bool in_transaction_ = false;
};

}  // namespace kestro::adapters
