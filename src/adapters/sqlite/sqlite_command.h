#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "adapters/sqlite/sqlite_connection.h"
#include "adapters/sqlite/sqlite_recordset.h"
#include "ports/database.h"

namespace kestro::adapters {

class SqliteCommand final : public ports::Command {
 public:
  /// Only statements as text are known.
  void SetCommandType(int type) override;
  void SetCommandText(std::string_view text) override { text_ = text; }
  void SetActiveConnection(ports::Connection& connection) override;
  void AppendParameter(std::int64_t value) override { parameters_.emplace_back(value); }
  void AppendParameter(std::string_view value) override { parameters_.emplace_back(std::string(value)); }
  [[nodiscard]] std::unique_ptr<ports::Recordset> Execute(int options) override;

 private:
  std::string text_;
  SqliteConnection* connection_ = nullptr;
  std::vector<StatementParameter> parameters_;
};

}  // namespace kestro::adapters
