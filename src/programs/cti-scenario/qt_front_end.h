#pragma once

#include <memory>

#include "scenario/player_program.h"

namespace kestro::programs {

#ifdef KESTRO_WITH_QT
/// Uses the offscreen platform unless the environment names another one.
[[nodiscard]] std::unique_ptr<scenario::FrontEndFactory> QtFrontEnds();
#endif

}  // namespace kestro::programs
