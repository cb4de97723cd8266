#include "faults/failing_database.h"

#include <utility>

namespace kestro::faults {
namespace {

class FailingConnection final : public ports::Connection {
 public:
  FailingConnection(std::unique_ptr<ports::Connection> inner, FaultPlan& plan)
      : inner_(std::move(inner)), plan_(plan) {}

  void SetConnectionString(std::string_view text) override { inner_->SetConnectionString(text); }
  void SetCursorLocation(int location) override { inner_->SetCursorLocation(location); }
  void SetIsolationLevel(int level) override { inner_->SetIsolationLevel(level); }
  void Open(std::string_view connection_string, std::string_view user, std::string_view password,
            int options) override {
    plan_.Pass(Port::kDatabase);
    inner_->Open(connection_string, user, password, options);
  }
  void Close() override {
    plan_.Pass(Port::kDatabase);
    inner_->Close();
  }
  void BeginTransaction() override {
    plan_.Pass(Port::kDatabase);
    inner_->BeginTransaction();
  }
  void CommitTransaction() override {
    plan_.Pass(Port::kDatabase);
    inner_->CommitTransaction();
  }
  void RollbackTransaction() override {
    plan_.Pass(Port::kDatabase);
    inner_->RollbackTransaction();
  }
  [[nodiscard]] std::int64_t LastInsertedKey() override { return inner_->LastInsertedKey(); }

  [[nodiscard]] ports::Connection& inner() { return *inner_; }

 private:
  std::unique_ptr<ports::Connection> inner_;
  FaultPlan& plan_;
};

class FailingRecordset final : public ports::Recordset {
 public:
  FailingRecordset(std::unique_ptr<ports::Recordset> inner, FaultPlan& plan)
      : inner_(std::move(inner)), plan_(plan) {}

  [[nodiscard]] bool AtEnd() const override { return inner_->AtEnd(); }
  void MoveNext() override {
    plan_.Pass(Port::kDatabase);
    inner_->MoveNext();
  }
  [[nodiscard]] std::int64_t RecordCount() const override {
    plan_.Pass(Port::kDatabase);
    return inner_->RecordCount();
  }
  [[nodiscard]] std::int64_t Position() const override { return inner_->Position(); }
  void MoveTo(std::int64_t row) override {
    plan_.Pass(Port::kDatabase);
    inner_->MoveTo(row);
  }
  [[nodiscard]] int FieldCount() const override { return inner_->FieldCount(); }
  [[nodiscard]] std::string_view FieldName(int index) const override { return inner_->FieldName(index); }
  [[nodiscard]] ports::DatabaseValue Field(int index) const override {
    plan_.Pass(Port::kDatabase);
    return inner_->Field(index);
  }
  [[nodiscard]] std::string_view Text(int index) const override { return inner_->Text(index); }
  [[nodiscard]] std::int64_t Integer(int index) const override { return inner_->Integer(index); }
  [[nodiscard]] int FieldIndex(std::string_view name) const override { return inner_->FieldIndex(name); }
  [[nodiscard]] std::string Sort() const override { return inner_->Sort(); }
  void SetSort(std::string_view sort) override {
    plan_.Pass(Port::kDatabase);
    inner_->SetSort(sort);
  }
  void Close() override {
    plan_.Pass(Port::kDatabase);
    inner_->Close();
  }
  [[nodiscard]] ports::Connection* ActiveConnection() override { return inner_->ActiveConnection(); }
  void ClearActiveConnection() override { inner_->ClearActiveConnection(); }

 private:
  std::unique_ptr<ports::Recordset> inner_;
  FaultPlan& plan_;
};

class FailingCommand final : public ports::Command {
 public:
  FailingCommand(std::unique_ptr<ports::Command> inner, FaultPlan& plan)
      : inner_(std::move(inner)), plan_(plan) {}

  void SetCommandType(int type) override { inner_->SetCommandType(type); }
  void SetCommandText(std::string_view text) override { inner_->SetCommandText(text); }
  void SetActiveConnection(ports::Connection& connection) override {
    inner_->SetActiveConnection(dynamic_cast<FailingConnection&>(connection).inner());
  }
  void AppendParameter(std::int64_t value) override { inner_->AppendParameter(value); }
  void AppendParameter(std::string_view value) override { inner_->AppendParameter(value); }
  std::unique_ptr<ports::Recordset> Execute(int options) override {
    plan_.Pass(Port::kDatabase);
    return std::make_unique<FailingRecordset>(inner_->Execute(options), plan_);
  }

 private:
  std::unique_ptr<ports::Command> inner_;
  FaultPlan& plan_;
};

}  // namespace

std::unique_ptr<ports::Connection> FailingDatabase::CreateConnection() {
  return std::make_unique<FailingConnection>(inner_.CreateConnection(), plan_);
}

std::unique_ptr<ports::Command> FailingDatabase::CreateCommand() {
  return std::make_unique<FailingCommand>(inner_.CreateCommand(), plan_);
}

}  // namespace kestro::faults
