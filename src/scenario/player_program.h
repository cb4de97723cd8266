#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "scenario/machine.h"

namespace kestro::scenario {

/// Native path of one of the application's paths.
using PathTranslator = std::function<std::string(std::string_view system_path)>;

/// Makes front ends of one kind, each for one scenario. Lives as long as the program.
class FrontEndFactory {
 public:
  virtual ~FrontEndFactory() = default;
  [[nodiscard]] virtual std::unique_ptr<FrontEnd> Make(PathTranslator native_path) = 0;
};

/// A machine and where its files really lie.
struct ScenarioMachine {
  std::unique_ptr<Machine> machine;
  PathTranslator native_path;
};

/// What a program that plays scenarios knows of the system it is built for.
struct PlayerSystem {
  std::string command;            // how the program is called, for its usage
  std::string front_end_names;    // separated by "|", for its usage
  std::string default_front_end;  // played on without a word on the command line
  /// Null for a name that the program was not built with.
  std::function<std::unique_ptr<FrontEndFactory>(std::string_view name)> front_ends;
  /// On a folder that is there and empty, and outlives the machine.
  std::function<ScenarioMachine(const std::filesystem::path& folder)> make_machine;
};

/// Plays the scenarios that the arguments (UTF-8) name. Transcripts go to `out`
/// or, when the arguments say so, to files; what went wrong goes to `errors`.
/// The exit status: 0 all expectations held, 1 one failed, 2 a script or the
/// arguments cannot be read. Errors of the machine come through.
int RunPlayer(const PlayerSystem& system, const std::vector<std::string>& arguments, std::ostream& out,
              std::ostream& errors);

}  // namespace kestro::scenario
