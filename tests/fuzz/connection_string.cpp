#include "adapters/sqlite/connection_string.h"

#include <string>

#include "base/runtime_error.h"
#include "fuzz/property.h"
#include "ports/database.h"

// Connection strings: the path between the two known ends, as it stands, or an error.

namespace {

using kestro::fuzz::Require;

std::string Around(std::string_view path) {
  return std::string(kestro::ports::kConnectionStringStart)
      .append(path)
      .append(kestro::ports::kConnectionStringEnd);
}

void CheckRaw(std::string_view text) {
  try {
    Require(Around(kestro::adapters::DataSourceOf(text)) == text,
            "a path that is not the one between the ends");
  } catch (const kestro::base::RuntimeError&) {
    // Not ours.
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = kestro::fuzz::TextOf(data, size);
  CheckRaw(text);
  const std::string around = Around(text);
  try {
    Require(kestro::adapters::DataSourceOf(around) == text, "another path");
  } catch (const kestro::base::RuntimeError&) {
    Require(text.empty() || text.find('\0') != std::string_view::npos, "a path is refused");
  }
  return 0;
}
