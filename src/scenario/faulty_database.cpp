#include "scenario/faulty_database.h"

#include "base/runtime_error.h"
#include "base/text.h"

namespace kestro::scenario {
namespace {

bool Reads(std::string_view statement) {
  static constexpr std::string_view kSelect = "select";
  return base::EqualIgnoringCase(base::Trim(statement).substr(0, kSelect.size()), kSelect);
}

class FaultyCommand final : public ports::Command {
 public:
  FaultyCommand(std::unique_ptr<ports::Command> command, const DatabaseFault& fault)
      : command_(std::move(command)), fault_(fault) {}

  void SetCommandType(int type) override { command_->SetCommandType(type); }
  void SetCommandText(std::string_view text) override {
    reads_ = Reads(text);
    command_->SetCommandText(text);
  }
  void SetActiveConnection(ports::Connection& connection) override {
    command_->SetActiveConnection(connection);
  }
  void AppendParameter(std::int64_t value) override { command_->AppendParameter(value); }
  void AppendParameter(std::string_view value) override { command_->AppendParameter(value); }

  std::unique_ptr<ports::Recordset> Execute(int options) override {
    if (fault_ == (reads_ ? DatabaseFault::kReading : DatabaseFault::kWriting)) {
      throw base::RuntimeError(base::kDatabaseError, "The database failed");
    }
    return command_->Execute(options);
  }

 private:
  std::unique_ptr<ports::Command> command_;
  const DatabaseFault& fault_;
  bool reads_ = false;
};

}  // namespace

std::unique_ptr<ports::Command> FaultyDatabase::CreateCommand() {
  return std::make_unique<FaultyCommand>(database_.CreateCommand(), fault_);
}

DatabaseFault DatabaseFaultOfWord(std::string_view word) {
  if (word == "writing-fails") return DatabaseFault::kWriting;
  return word == "reading-fails" ? DatabaseFault::kReading : DatabaseFault::kNone;
}

}  // namespace kestro::scenario
