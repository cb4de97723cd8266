#include <algorithm>

#include "adapters/posix/command_words.h"
#include "base/runtime_error.h"
#include "fuzz/property.h"

// The dialling command of the settings (first line of the input) and a number for it (the rest).

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using kestro::fuzz::Require;
  const std::string_view text = kestro::fuzz::TextOf(data, size);
  const std::size_t end = std::min(text.find('\n'), text.size());
  const std::string_view number = text.substr(std::min(end + 1, text.size()));
  try {
    const auto words = kestro::adapters::SplitCommandWords(text.substr(0, end));
    const auto with_number = kestro::adapters::WithNumber(words, number);
    Require(with_number.size() == words.size() || with_number.size() == words.size() + 1,
            "words are lost or split");
    if (with_number.size() > words.size()) Require(with_number.back() == number, "another number");
  } catch (const kestro::base::RuntimeError& error) {
    Require(error.number() == kestro::base::kInvalidProcedureCall, "another error");
  }
  return 0;
}
