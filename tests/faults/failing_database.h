#pragma once

#include "faults/fault_plan.h"
#include "ports/database.h"

namespace kestro::faults {

/// A database of which one operation fails: opening, closing, a statement, a
/// transaction, moving through rows.
class FailingDatabase final : public ports::Database {
 public:
  FailingDatabase(ports::Database& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}
  [[nodiscard]] std::unique_ptr<ports::Connection> CreateConnection() override;
  [[nodiscard]] std::unique_ptr<ports::Command> CreateCommand() override;

 private:
  ports::Database& inner_;
  FaultPlan& plan_;
};

}  // namespace kestro::faults
