#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "core/procedure_frame.h"
#include "ports/ansi_code_page.h"

namespace kestro::telephony {

/// Reads the line functions' variable-size structures.
class TAPIModule {
 public:
  TAPIModule(core::LogModule& log, const ports::AnsiCodePage& code_page)
      : procedure_(log, "KESTROCTI.TAPIModule", core::Spelling::kFullStop), code_page_(code_page) {}

  /// Text of `size` bytes at `offset` of the structure, a terminating zero
  /// inside the size included; empty when the size is 0 (or negative) or the
  /// offset 0. Raises 9 when the text does not lie inside the structure.
  [[nodiscard]] std::string GetTAPIStructString(std::span<const std::uint8_t> structure, std::uint32_t offset,
                                                std::uint32_t size) const;

 private:
  core::ProcedureFrame procedure_;
  const ports::AnsiCodePage& code_page_;
};

}  // namespace kestro::telephony
