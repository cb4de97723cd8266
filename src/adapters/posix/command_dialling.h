#pragma once

#include <chrono>

#include "adapters/posix/detached_processes.h"
#include "ports/dialling_object.h"
#include "ports/settings_store.h"

namespace kestro::adapters {

/// Key and value of the settings that name the dialling command.
inline constexpr std::string_view kDiallingKey = R"(Software\Kestro\CTI\Dialling)";
inline constexpr std::string_view kDiallingCommand = "Command";

/// A dialling object that runs a command of the user's with the number (see
/// command_words.h). Without one, or with the command "tel:", it hands the
/// number to the desktop's own telephone program (see tel_uri.h).
///
/// Dial blocks for at most kPatience, and returns 0 unless the command fails at
/// once; what comes of a command that goes on is not known here.
class CommandDialling final : public ports::DiallingObjects {
 public:
  static constexpr std::chrono::milliseconds kPatience{2000};

  /// Both must outlive it and the objects that it creates.
  CommandDialling(ports::SettingsStore& settings, DetachedProcesses& processes)
      : settings_(settings), processes_(processes) {}

  /// A command is set.
  [[nodiscard]] bool Configured() { return !Command().empty(); }

  /// Dial raises 5 for an empty number, for a command that cannot be read and
  /// for a number that the command would take for an option, and what
  /// DetachedProcesses::Start raises.
  [[nodiscard]] std::unique_ptr<ports::DiallingObject> CreateDialCom() override;
  /// The command is "tel:", or there is none.
  [[nodiscard]] bool HandsToDesktop() override;

 private:
  [[nodiscard]] std::string Command();

  ports::SettingsStore& settings_;
  DetachedProcesses& processes_;
};

}  // namespace kestro::adapters
