#include "adapters/posix/command_words.h"

#include "adapters/posix/utf8.h"
#include "base/runtime_error.h"

namespace kestro::adapters {
namespace {

[[noreturn]] void RaiseBadCommand(const char* reason) {
  throw base::RuntimeError(base::kInvalidProcedureCall, reason);
}

/// Appends what stands between the quote at `position` and its partner and moves behind that.
void ReadQuoted(std::string_view command, std::size_t& position, std::string& word) {
  const char quote = command[position];
  for (++position; position < command.size(); ++position) {
    if (command[position] == quote) {
      ++position;
      return;
    }
    const bool escapes = quote == '"' && command[position] == '\\' && position + 1 < command.size() &&
                         (command[position + 1] == '"' || command[position + 1] == '\\');
    if (escapes) ++position;
    word.push_back(command[position]);
  }
  RaiseBadCommand("A quote in the dialling command is not closed");
}

std::string ReadWord(std::string_view command, std::size_t& position) {
  std::string word;
  while (position < command.size() && command[position] != ' ') {
    if (command[position] == '"' || command[position] == '\'') {
      ReadQuoted(command, position, word);
    } else {
      word.push_back(command[position++]);
    }
  }
  return word;
}

/// Puts the number into the word; true when it had a place for it.
bool PutNumber(std::string& word, std::string_view number) {
  std::string filled;
  bool found = false;
  for (std::size_t position = 0; position < word.size(); ++position) {
    const std::string_view mark = std::string_view(word).substr(position, 2);
    if (mark == "%n") {
      if (filled.empty() && number.starts_with('-')) RaiseBadCommand("The number begins with a dash");
      filled.append(number);
      found = true;
    } else {
      filled.push_back(word[position]);
    }
    if (mark == "%n" || mark == "%%") ++position;
  }
  word = std::move(filled);
  return found;
}

}  // namespace

std::vector<std::string> SplitCommandWords(std::string_view command) {
  if (HasControlCharacter(command)) RaiseBadCommand("The dialling command holds a control character");
  std::vector<std::string> words;
  for (std::size_t position = 0;;) {
    position = command.find_first_not_of(' ', position);
    if (position == std::string_view::npos) return words;
    words.push_back(ReadWord(command, position));
  }
}

std::vector<std::string> WithNumber(const std::vector<std::string>& words, std::string_view number) {
  std::vector<std::string> filled = words;
  bool found = false;
  for (std::string& word : filled) found = PutNumber(word, number) || found;
  if (found) return filled;
  std::string last = "%n";
  PutNumber(last, number);
  filled.push_back(std::move(last));
  return filled;
}

}  // namespace kestro::adapters
