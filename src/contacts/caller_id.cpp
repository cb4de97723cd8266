#include "contacts/caller_id.h"

#include <array>

#include "base/text.h"

namespace kestro::contacts {
namespace {

constexpr std::string_view kHomePrefix = "+420";

/// In this order. The two blanks have gone with the first pass already; their
/// pass of its own is kept on purpose.
constexpr std::array<std::string_view, 8> kSeparators = {" ", "/", "\\", "-", "  ", ".", "(", ")"};

}  // namespace

std::string InternationalCallerId(std::string_view caller_id) {
  std::string number(base::Trim(caller_id));
  if (base::CharacterCount(number) >= 3 && number.starts_with("00")) number.replace(0, 2, "+");
  if (base::CharacterCount(number) < 2 || number.front() == '+') return number;
  if (number.front() == '0') number.erase(0, 1);
  return std::string(kHomePrefix) + number;
}

std::string WithoutSeparators(std::string_view text) {
  std::string number(text);
  for (const auto separator : kSeparators) number = base::ReplaceAll(number, separator, "");
  return number;
}

std::string InternationalCallerIdFromText(std::string_view text) {
  return InternationalCallerId(WithoutSeparators(text));
}

}  // namespace kestro::contacts
