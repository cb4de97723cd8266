#pragma once

#include "scenario/player_program.h"

namespace kestro::programs {

/// The windows of this program, for the scenario player.
class Win32FrontEnds final : public scenario::FrontEndFactory {
 public:
  [[nodiscard]] std::unique_ptr<scenario::FrontEnd> Make(scenario::PathTranslator native_path) override;
};

}  // namespace kestro::programs
