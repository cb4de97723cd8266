#pragma once

#include "ports/database.h"

namespace kestro::scenario {

/// What the database of a scenario still does.
enum class DatabaseFault { kNone, kWriting, kReading };

/// The machine's database, whose statements fail on demand: all that change
/// something, or all that read, with kDatabaseError before anything happens.
class FaultyDatabase final : public ports::Database {
 public:
  explicit FaultyDatabase(ports::Database& database) : database_(database) {}

  void SetFault(DatabaseFault fault) { fault_ = fault; }

  [[nodiscard]] std::unique_ptr<ports::Connection> CreateConnection() override {
    return database_.CreateConnection();
  }
  [[nodiscard]] std::unique_ptr<ports::Command> CreateCommand() override;

 private:
  ports::Database& database_;
  DatabaseFault fault_ = DatabaseFault::kNone;
};

/// The fault of a script's word: writing-fails, reading-fails or works.
[[nodiscard]] DatabaseFault DatabaseFaultOfWord(std::string_view word);

}  // namespace kestro::scenario
