#include "adapters/posix/command_dialling.h"

#include "adapters/posix/command_words.h"
#include "adapters/posix/desktop_open.h"
#include "adapters/posix/tel_uri.h"
#include "base/runtime_error.h"
#include "base/text.h"

namespace kestro::adapters {
namespace {

constexpr std::string_view kDesktop = "tel:";

bool IsDesktop(std::string_view command) { return command.empty() || command == kDesktop; }

class CommandDialCom final : public ports::DiallingObject {
 public:
  CommandDialCom(std::string command, DetachedProcesses& processes)
      : command_(std::move(command)), processes_(processes) {}

  std::int32_t Dial(std::string_view number) override {
    if (base::Trim(number).empty()) {
      throw base::RuntimeError(base::kInvalidProcedureCall, "There is no number to dial");
    }
    processes_.Start(Arguments(number), CommandDialling::kPatience);
    return 0;
  }

 private:
  [[nodiscard]] std::vector<std::string> Arguments(std::string_view number) const {
    if (IsDesktop(command_)) return {std::string(kDesktopOpener), TelUri(number)};
    return WithNumber(SplitCommandWords(command_), number);
  }

  std::string command_;
  DetachedProcesses& processes_;
};

}  // namespace

std::string CommandDialling::Command() {
  return std::string(base::Trim(settings_.QueryValue(kDiallingKey, kDiallingCommand).value_or("")));
}

bool CommandDialling::HandsToDesktop() { return IsDesktop(Command()); }

std::unique_ptr<ports::DiallingObject> CommandDialling::CreateDialCom() {
  return std::make_unique<CommandDialCom>(Command(), processes_);
}

}  // namespace kestro::adapters
