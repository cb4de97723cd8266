#pragma once

#include <memory>
#include <utility>

#include "ports/database.h"

namespace kestro::test {

/// Passes everything on to another command; a test overrides what it looks at.
class PassingCommand : public ports::Command {
 public:
  explicit PassingCommand(std::unique_ptr<ports::Command> inner) : inner_(std::move(inner)) {}
  void SetCommandType(int type) override { inner_->SetCommandType(type); }
  void SetCommandText(std::string_view text) override { inner_->SetCommandText(text); }
  void SetActiveConnection(ports::Connection& connection) override {
    inner_->SetActiveConnection(connection);
  }
  void AppendParameter(std::int64_t value) override { inner_->AppendParameter(value); }
  void AppendParameter(std::string_view value) override { inner_->AppendParameter(value); }
  std::unique_ptr<ports::Recordset> Execute(int options) override { return inner_->Execute(options); }

 protected:
  std::unique_ptr<ports::Command> inner_;
};

/// A database whose commands go through `Wrapper`, made of a command and `State&`, which the test has.
template <class Wrapper, class State>
class WrappedDatabase final : public ports::Database {
 public:
  explicit WrappedDatabase(ports::Database& inner) : inner_(inner) {}
  std::unique_ptr<ports::Connection> CreateConnection() override { return inner_.CreateConnection(); }
  std::unique_ptr<ports::Command> CreateCommand() override {
    return std::make_unique<Wrapper>(inner_.CreateCommand(), state);
  }

  State state{};

 private:
  ports::Database& inner_;
};

}  // namespace kestro::test
