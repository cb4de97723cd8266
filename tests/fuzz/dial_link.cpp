#include "core/dial_link.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/text.h"
#include "core/masking_log.h"

// Links of web pages and the masking of log texts, on the same bytes.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  namespace core = kestro::core;
  const std::string text(data, data + size);

  const std::string number = core::NumberOfLink(text);
  const bool plain =
      number.find_first_not_of("0123456789", number.starts_with('+') ? 1 : 0) == std::string::npos;
  if (!plain || number.size() > core::kMostLinkDigits + 1) std::abort();
  if (!number.empty() && !(core::IsDialLink(text) && core::IsLinkNumber(number))) std::abort();

  const std::string masked = core::MaskNumbers(text);
  if (masked.size() != text.size() || core::MaskNumbers(masked) != masked) std::abort();
  std::size_t digits = 0;  // in a row
  for (const char character : masked) {
    digits = character >= '0' && character <= '9' ? digits + 1 : 0;
    if (digits > 4) std::abort();
  }
  return 0;
}
