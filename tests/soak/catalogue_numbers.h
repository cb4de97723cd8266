#pragma once

#include <string_view>
#include <vector>

#include "generated/text_catalogue_table.h"

namespace kestro::soak {

/// The entry is the text, its placeholders standing for any text at all.
inline bool Matches(std::string_view entry, std::string_view text) {
  constexpr std::string_view kPlaceholder = "%%p";
  const auto place = entry.find(kPlaceholder);
  if (place == std::string_view::npos) return entry == text;
  if (!text.starts_with(entry.substr(0, place))) return false;
  const std::string_view behind = entry.substr(place + kPlaceholder.size());
  for (std::size_t end = place; end <= text.size(); ++end) {
    if (Matches(behind, text.substr(end))) return true;
  }
  return false;
}

/// Numbers of the catalogue entries that the text can be, with anything in place
/// of their parameters. Several entries have the same text; none means that the
/// text does not come from the catalogue.
[[nodiscard]] inline std::vector<int> CatalogueNumbersOf(std::string_view text) {
  std::vector<int> numbers;
  for (const auto& entry : core::CatalogueTexts()) {
    const bool only_parameters = entry.text.find_first_not_of("%p ") == std::string_view::npos;
    if (!only_parameters && Matches(entry.text, text)) numbers.push_back(entry.number);
  }
  return numbers;
}

}  // namespace kestro::soak
