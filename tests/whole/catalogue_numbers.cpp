#include "whole/catalogue_numbers.h"

#include "generated/text_catalogue_table.h"

namespace kestro::test {
namespace {

constexpr std::string_view kPlaceholder = "%%p";

/// `entry` with its placeholders standing for any text at all.
bool Matches(std::string_view entry, std::string_view text) {
  const auto first = entry.find(kPlaceholder);
  if (first == std::string_view::npos) return entry == text;
  if (!text.starts_with(entry.substr(0, first))) return false;
  text.remove_prefix(first);
  entry.remove_prefix(first + kPlaceholder.size());
  for (;;) {
    const auto next = entry.find(kPlaceholder);
    if (next == std::string_view::npos) return text.ends_with(entry);
    const auto found = text.find(entry.substr(0, next));
    if (found == std::string_view::npos) return false;
    text.remove_prefix(found + next);
    entry.remove_prefix(next + kPlaceholder.size());
  }
}

}  // namespace

std::vector<int> CatalogueNumbersOf(std::string_view text) {
  std::vector<int> numbers;
  for (const auto& entry : core::CatalogueTexts()) {
    const bool only_parameters = entry.text.find_first_not_of("%p ") == std::string_view::npos;
    if (!only_parameters && Matches(entry.text, text)) numbers.push_back(entry.number);
  }
  return numbers;
}

}  // namespace kestro::test
