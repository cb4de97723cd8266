#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "ports/database.h"

namespace kestro::contacts {

/// An open connection for one operation; closed when the operation is over, however it ends.
class DatabaseSession {
 public:
  /// Value of a "?" mark.
  using Value = std::variant<std::int64_t, std::string_view>;

  DatabaseSession(ports::Database& database, std::string_view connection_string);
  ~DatabaseSession();
  DatabaseSession(const DatabaseSession&) = delete;
  DatabaseSession& operator=(const DatabaseSession&) = delete;

  [[nodiscard]] ports::Connection& connection() { return *connection_; }
  /// The recordset must not outlive the session.
  [[nodiscard]] std::unique_ptr<ports::Recordset> Query(std::string_view text,
                                                        const std::vector<Value>& values = {});
  /// A statement to be run several times.
  [[nodiscard]] std::unique_ptr<ports::Command> Prepare(std::string_view text);
  static void Run(ports::Command& statement, const std::vector<Value>& values);
  void Run(std::string_view text, const std::vector<Value>& values = {});
  /// Runs an insertion and returns the key of the new row.
  std::int64_t Insert(std::string_view text, const std::vector<Value>& values);
  /// Raises when a selection by key finds nothing: the row was deleted meanwhile.
  void RequireRow(std::string_view text, std::int64_t key);
  /// All that `changes` does is stored, or, when it raises, nothing of it.
  void InTransaction(const std::function<void()>& changes);

 private:
  ports::Database& database_;
  std::unique_ptr<ports::Connection> connection_;
};

}  // namespace kestro::contacts
