#pragma once

#include <memory>
#include <utility>

#include "faults/fault_plan.h"
#include "support/passing_command.h"

namespace kestro::faults {

/// A database of which one operation fails: opening, closing, a statement, a
/// transaction, moving through rows.
class FailingDatabase final : public Failing<ports::Database, Port::kDatabase> {
 public:
  using Failing::Failing;
  std::unique_ptr<ports::Connection> CreateConnection() override {
    return std::make_unique<Connection>(inner_.CreateConnection(), plan_);
  }
  std::unique_ptr<ports::Command> CreateCommand() override {
    return std::make_unique<Command>(inner_.CreateCommand(), plan_);
  }

 private:
  template <class Interface>
  using Owner = FailingOwner<Interface, Port::kDatabase>;

  class Connection final : public Owner<ports::Connection> {
   public:
    using FailingOwner::FailingOwner;
    [[nodiscard]] ports::Connection& inner() const { return inner_; }
    void SetConnectionString(std::string_view text) override { inner_.SetConnectionString(text); }
    void SetCursorLocation(int location) override { inner_.SetCursorLocation(location); }
    void SetIsolationLevel(int level) override { inner_.SetIsolationLevel(level); }
    void Open(std::string_view connection_string, std::string_view user, std::string_view password,
              int options) override {
      Pass().Open(connection_string, user, password, options);
    }
    void Close() override { Pass().Close(); }
    void BeginTransaction() override { Pass().BeginTransaction(); }
    void CommitTransaction() override { Pass().CommitTransaction(); }
    void RollbackTransaction() override { Pass().RollbackTransaction(); }
    std::int64_t LastInsertedKey() override { return inner_.LastInsertedKey(); }
  };

  class Recordset final : public Owner<ports::Recordset> {
   public:
    using FailingOwner::FailingOwner;
    bool AtEnd() const override { return inner_.AtEnd(); }
    void MoveNext() override { Pass().MoveNext(); }
    std::int64_t RecordCount() const override { return Pass().RecordCount(); }
    std::int64_t Position() const override { return inner_.Position(); }
    void MoveTo(std::int64_t row) override { Pass().MoveTo(row); }
    int FieldCount() const override { return inner_.FieldCount(); }
    std::string_view FieldName(int index) const override { return inner_.FieldName(index); }
    ports::DatabaseValue Field(int index) const override { return Pass().Field(index); }
    std::string_view Text(int index) const override { return inner_.Text(index); }
    std::int64_t Integer(int index) const override { return inner_.Integer(index); }
    int FieldIndex(std::string_view name) const override { return inner_.FieldIndex(name); }
    std::string Sort() const override { return inner_.Sort(); }
    void SetSort(std::string_view sort) override { Pass().SetSort(sort); }
    void Close() override { Pass().Close(); }
    ports::Connection* ActiveConnection() override { return inner_.ActiveConnection(); }
    void ClearActiveConnection() override { inner_.ClearActiveConnection(); }
  };

  class Command final : public test::PassingCommand {
   public:
    Command(std::unique_ptr<ports::Command> inner, FaultPlan& plan)
        : PassingCommand(std::move(inner)), plan_(plan) {}
    void SetActiveConnection(ports::Connection& connection) override {
      inner_->SetActiveConnection(dynamic_cast<Connection&>(connection).inner());
    }
    std::unique_ptr<ports::Recordset> Execute(int options) override {
      plan_.Pass(Port::kDatabase);
      return std::make_unique<Recordset>(inner_->Execute(options), plan_);
    }

   private:
    FaultPlan& plan_;
  };
};

}  // namespace kestro::faults
