#include "core/dial_link.h"

#include "core/masking_log.h"
#include "fuzz/property.h"

// Links of web pages and the masking of log texts, on the same bytes.

void kestro::fuzz::Check(std::string_view text) {
  const std::string number = core::NumberOfLink(text);
  const std::size_t plus = number.starts_with('+') ? 1 : 0;
  Require(number.find_first_not_of("0123456789", plus) == std::string::npos, "no plain number");
  Require(number.size() <= core::kMostLinkDigits + 1, "a number too long");
  Require(number.empty() || (core::IsDialLink(text) && core::IsLinkNumber(number)), "a number of no link");

  const std::string masked = core::MaskNumbers(text);
  Require(masked.size() == text.size() && core::MaskNumbers(masked) == masked, "masked twice");
  std::size_t digits = 0;  // in a row
  for (const char character : masked) {
    digits = character >= '0' && character <= '9' ? digits + 1 : 0;
    Require(digits <= 4, "a number that is not masked");
  }
}
