#include "fuzz/property.h"
#include "scenario/script.h"

// Scenario files: a script, or an error that names one of its lines.

namespace kestro::fuzz {
namespace {

void CheckLines(const std::vector<scenario::Action>& script, int lines) {
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

void Check(std::string_view text) {
  int lines = 1;
  for (const char character : text) lines += character == '\n' ? 1 : 0;
  try {
    CheckLines(scenario::ParseScript(text), lines);
  } catch (const scenario::ScriptError& error) {
    Require(error.line() >= 1 && error.line() <= lines, "an error of no line");
    Require(*error.what() != '\0', "an error without a reason");
  }
}

}  // namespace kestro::fuzz
