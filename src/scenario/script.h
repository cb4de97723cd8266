#pragma once

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "scenario/action_table.h"

namespace kestro::scenario {

/// A script that cannot be read or asks for something that does not exist.
/// what() is the reason alone; `line` counts from 1.
class ScriptError : public std::runtime_error {
 public:
  ScriptError(int line, const std::string& reason) : std::runtime_error(reason), line_(line) {}
  [[nodiscard]] int line() const { return line_; }

 private:
  int line_;
};

/// One argument as written: a text, a bare word, or a number (then `text` is the word, too).
struct Argument {
  std::string text;
  std::int64_t number = 0;
  bool is_number = false;
};

/// One action of a script. `arguments` holds what must be there, in order;
/// `options` what may be there, by the word in front of it (a contact's keys
/// with their values, too; an optional argument without a word has the key "").
struct Action {
  ActionKind kind{};
  int line = 0;
  std::string text;  // as written, without comment and surrounding blanks
  std::vector<Argument> arguments;
  std::map<std::string, Argument, std::less<>> options;
  std::vector<Action> block;  // of `during`
  int end_line = 0;           // of the block's `end`

  [[nodiscard]] const std::string& Text(std::size_t index) const { return arguments.at(index).text; }
  /// Number as a 32-bit pattern: -1 and 0xFFFFFFFF are the same.
  [[nodiscard]] std::int32_t Number(std::size_t index) const;
  /// nullptr when the option is not there.
  [[nodiscard]] const Argument* Option(std::string_view name) const;
};

/// Reads a whole script (UTF-8; lines end in LF or CR LF). Raises ScriptError.
/// Every action of the language is known here, whether or not the application
/// already has the window or control it is for.
[[nodiscard]] std::vector<Action> ParseScript(std::string_view bytes);

/// Longest line accepted, in bytes.
inline constexpr std::size_t kMaximumLineLength = 16384;

}  // namespace kestro::scenario
