#include <algorithm>

#include "adapters/posix/command_words.h"
#include "base/runtime_error.h"
#include "fuzz/property.h"

// The dialling command of the settings (first line of the input) and a number for it (the rest).

void kestro::fuzz::Check(std::string_view text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  const std::string_view number = text.substr(std::min(end + 1, text.size()));
  try {
    const auto words = adapters::SplitCommandWords(text.substr(0, end));
    const auto with_number = adapters::WithNumber(words, number);
    Require(with_number.size() == words.size() || with_number.size() == words.size() + 1,
            "words are lost or split");
    if (with_number.size() > words.size()) Require(with_number.back() == number, "another number");
  } catch (const base::RuntimeError& error) {
    Require(error.number() == base::kInvalidProcedureCall, "another error");
  }
}
