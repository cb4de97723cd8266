#include <exception>
#include <iostream>

#include "adapters/headless/headless_front_end.h"
#include "programs/cti-scenario/posix_machine.h"
#include "programs/cti-scenario/qt_front_end.h"
#include "scenario/player.h"
#include "scenario/player_program.h"

namespace kestro::programs {
namespace {

std::unique_ptr<scenario::FrontEndFactory> FrontEndsNamed(std::string_view name) {
  if (name == "headless") return std::make_unique<adapters::HeadlessFrontEnds>();
#ifdef KESTRO_WITH_QT
  if (name == "qt") return QtFrontEnds();
#endif
  return nullptr;
}

scenario::ScenarioMachine MakeMachine(const std::filesystem::path& folder) {
  auto machine = std::make_unique<PosixMachine>(folder);
  auto native_path = [&files = *machine](std::string_view path) { return files.NativePath(path); };
  return {std::move(machine), native_path};
}

scenario::PlayerSystem System() {
#ifdef KESTRO_WITH_QT
  const std::string front_ends = "headless|qt";
#else
  const std::string front_ends = "headless";
#endif
  return {"cti-scenario", front_ends, "headless", FrontEndsNamed, MakeMachine};
}

}  // namespace
}  // namespace kestro::programs

int main(int argc, char* argv[]) {
  try {
    const kestro::scenario::PlayerSystem system = kestro::programs::System();
    return kestro::scenario::RunPlayer(system, {argv + 1, argv + argc}, std::cout, std::cerr);
  } catch (const std::exception& error) {
    std::cerr << "cti-scenario: " << error.what() << "\n";
    return kestro::scenario::Verdict::kUnreadable;
  }
}
