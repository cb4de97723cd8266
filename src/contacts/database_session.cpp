#include "contacts/database_session.h"

#include <exception>

#include "base/runtime_error.h"

namespace kestro::contacts {
namespace {

std::unique_ptr<ports::Recordset> Execute(ports::Command& statement,
                                          const std::vector<DatabaseSession::Value>& values) {
  for (const auto& value : values) {
    std::visit([&statement](const auto& alternative) { statement.AppendParameter(alternative); }, value);
  }
  return statement.Execute(ports::Command::kExecuteUnspecified);
}

}  // namespace

DatabaseSession::DatabaseSession(ports::Database& database, std::string_view connection_string)
    : database_(database), connection_(database.CreateConnection()) {
  connection_->SetConnectionString(connection_string);
  connection_->SetCursorLocation(ports::Connection::kUseServerCursor);
  connection_->SetIsolationLevel(ports::Connection::kReadUncommitted);
  connection_->Open({}, {}, {}, ports::Connection::kConnectUnspecified);
}

DatabaseSession::~DatabaseSession() {
  try {
    connection_->Close();
  } catch (const std::exception&) {
    // Closed through its recordset already; or the operation has raised its own error.
  }
}

std::unique_ptr<ports::Command> DatabaseSession::Prepare(std::string_view text) {
  auto command = database_.CreateCommand();
  command->SetCommandType(ports::Command::kText);
  command->SetCommandText(text);
  command->SetActiveConnection(*connection_);
  return command;
}

std::unique_ptr<ports::Recordset> DatabaseSession::Query(std::string_view text,
                                                         const std::vector<Value>& values) {
  return Execute(*Prepare(text), values);
}

void DatabaseSession::Run(std::string_view text, const std::vector<Value>& values) {
  Query(text, values)->Close();
}

void DatabaseSession::Run(ports::Command& statement, const std::vector<Value>& values) {
  Execute(statement, values)->Close();
}

std::int64_t DatabaseSession::Insert(std::string_view text, const std::vector<Value>& values) {
  Run(text, values);
  return connection_->LastInsertedKey();
}

void DatabaseSession::RequireRow(std::string_view text, std::int64_t key) {
  const auto rows = Query(text, {key});
  const bool missing = rows->AtEnd();
  rows->Close();
  if (missing) throw base::RuntimeError(base::kDatabaseError, "The record does not exist any more.");
}

void DatabaseSession::InTransaction(const std::function<void()>& changes) {
  connection_->BeginTransaction();
  try {
    changes();
    connection_->CommitTransaction();
  } catch (...) {
    try {
      connection_->RollbackTransaction();
    } catch (const std::exception&) {
      // Closing the connection rolls back as well; the first error is the one to report.
    }
    throw;
  }
}

}  // namespace kestro::contacts
