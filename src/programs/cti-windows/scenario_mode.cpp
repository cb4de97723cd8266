#include "programs/cti-windows/scenario_mode.h"

#include <filesystem>
#include <iostream>

#include "adapters/headless/headless_front_end.h"
#include "adapters/win32/user_folders.h"
#include "adapters/win32/wide_text.h"
#include "programs/cti-windows/win32_front_end.h"
#include "programs/cti-windows/windows_machine.h"
#include "scenario/player_program.h"

namespace kestro::programs {
namespace {

namespace fs = std::filesystem;

scenario::ScenarioMachine MakeMachine(const fs::path& folder) {
  const fs::path installed = adapters::ToWide(adapters::ProgramFolder());
  auto machine = std::make_unique<WindowsMachine>(folder, installed);
  auto native_path = [&files = *machine](std::string_view path) { return files.RealPath(path); };
  return {std::move(machine), native_path};
}

std::unique_ptr<scenario::FrontEndFactory> FrontEndsNamed(std::string_view name) {
  if (name == "win32") return std::make_unique<Win32FrontEnds>();
  if (name == "headless") return std::make_unique<adapters::HeadlessFrontEnds>();
  return nullptr;
}

}  // namespace

int PlayScenarios(const std::vector<std::string>& arguments) {
  const scenario::PlayerSystem system{"CTI /scenario", "win32|headless", "win32", FrontEndsNamed,
                                      MakeMachine};
  return scenario::RunPlayer(system, arguments, std::cout, std::cerr);
}

}  // namespace kestro::programs
