#include "fuzz/property.h"
#include "scenario/script.h"

// Scenario files: a script, or an error that names one of its lines.

namespace {

using kestro::fuzz::Require;

void CheckLines(const std::vector<kestro::scenario::Action>& script, int lines) {
  int last = 0;
  for (const auto& action : script) {
    Require(action.line > last && action.line <= lines, "an action of no line");
    Require(!action.text.empty() && action.text.find('\n') == std::string::npos,
            "an action that is not one line");
    last = action.line;
    CheckLines(action.block, lines);
    if (!action.block.empty()) last = action.end_line;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = kestro::fuzz::TextOf(data, size);
  int lines = 1;
  for (const char character : text) lines += character == '\n' ? 1 : 0;
  try {
    CheckLines(kestro::scenario::ParseScript(text), lines);
  } catch (const kestro::scenario::ScriptError& error) {
    Require(error.line() >= 1 && error.line() <= lines, "an error of no line");
    Require(*error.what() != '\0', "an error without a reason");
  }
  return 0;
}
