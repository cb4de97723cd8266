#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/procedure_frame.h"

namespace kestro::core {

/// Line break inside a message.
inline constexpr std::string_view kLineBreak = "\r\n";

/// The numbered catalogue of every text that the user sees.
class Localization {
 public:
  explicit Localization(LogModule& log) : procedure_(log, "KESTROCTI.Localization", Spelling::kFullStop) {}

  /// Text of the entry with the parameters put in: each replaces the first
  /// "%%p" that is left; surplus ones change nothing and missing ones leave
  /// their placeholder. Raises 13 for an identifier that is no number and 326
  /// for one without an entry.
  [[nodiscard]] std::string GetLocalizedString(std::string_view text_id,
                                               std::span<const std::string> parameters = {}) const;
  [[nodiscard]] std::string GetLocalizedString(std::string_view text_id,
                                               std::initializer_list<std::string> parameters) const {
    return GetLocalizedString(text_id, std::span(parameters.begin(), parameters.size()));
  }

 private:
  ProcedureFrame procedure_;
};

}  // namespace kestro::core
