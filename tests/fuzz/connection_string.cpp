#include "adapters/sqlite/connection_string.h"

#include <optional>
#include <string>

#include "base/runtime_error.h"
#include "fuzz/property.h"
#include "ports/database.h"

// Connection strings: the path between the two known ends, as it stands, or an error.

namespace {

std::string Around(std::string_view path) {
  using namespace kestro::ports;
  return std::string(kConnectionStringStart).append(path).append(kConnectionStringEnd);
}

std::optional<std::string> PathIn(std::string_view text) {
  try {
    return std::string(kestro::adapters::DataSourceOf(text));
  } catch (const kestro::base::RuntimeError&) {
    return {};
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using kestro::fuzz::Require;
  const std::string_view text = kestro::fuzz::TextOf(data, size);
  const auto raw = PathIn(text);
  Require(!raw || Around(*raw) == text, "a path that is not the one between the ends");
  const bool is_path = !text.empty() && text.find('\0') == std::string_view::npos;
  Require(PathIn(Around(text)) == (is_path ? std::optional<std::string>(text) : std::nullopt),
          "another path");
  return 0;
}
