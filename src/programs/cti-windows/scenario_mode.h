#pragma once

#include <string>
#include <vector>

namespace kestro::programs {

/// Plays scenarios on this program's own windows (see scenario/player_program.h); the exit status.
int PlayScenarios(const std::vector<std::string>& arguments);

}  // namespace kestro::programs
