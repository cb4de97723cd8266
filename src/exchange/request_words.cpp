#include "exchange/request_words.h"

#include "base/text.h"

namespace kestro::exchange {
namespace {

constexpr char32_t kReplacementCharacter = 0xFFFD;
constexpr std::string_view kReplacementInUtf8 = "\xEF\xBF\xBD";

bool IsControl(char32_t character) {
  const bool line_separator = character == 0x2028 || character == 0x2029;
  return character < 0x20 || (character >= 0x7F && character < 0xA0) || line_separator;
}

void RequirePlainText(std::string_view line) {
  for (std::size_t position = 0; position < line.size();) {
    const std::size_t start = position;
    const char32_t character = base::NextCharacter(line, position);
    const bool malformed =
        character == kReplacementCharacter && line.substr(start, position - start) != kReplacementInUtf8;
    if (malformed) throw RequestError("the request is not UTF-8");
    if (IsControl(character)) throw RequestError("the request holds a control character");
  }
}

/// Reads the quoted word whose opening quote is at `position` and moves behind its closing one.
std::string ReadQuoted(std::string_view line, std::size_t& position) {
  std::string text;
  for (++position; position < line.size(); ++position) {
    if (line[position] == '"') {
      ++position;
      return text;
    }
    if (line[position] == '\\') {
      ++position;
      const bool known = position < line.size() && (line[position] == '"' || line[position] == '\\');
      if (!known) throw RequestError(R"(only \" and \\ may follow a backslash in quotes)");
    }
    text.push_back(line[position]);
  }
  throw RequestError("a closing quote is missing");
}

}  // namespace

std::vector<RequestWord> SplitRequest(std::string_view line) {
  RequirePlainText(line);
  std::vector<RequestWord> words;
  for (std::size_t position = 0;;) {
    position = line.find_first_not_of(' ', position);
    if (position == std::string_view::npos) return words;
    if (line[position] == '"') {
      words.push_back({ReadQuoted(line, position), true});
      if (position < line.size() && line[position] != ' ')
        throw RequestError("a blank is missing behind a quote");
    } else {
      const std::size_t end = std::min(line.find(' ', position), line.size());
      words.push_back({std::string(line.substr(position, end - position)), false});
      if (words.back().text.find('"') != std::string::npos) throw RequestError("a quote inside a word");
      position = end;
    }
  }
}

std::string QuoteRequestWord(std::string_view text) {
  std::string quoted = "\"";
  for (const char character : text) {
    if (character == '"' || character == '\\') quoted.push_back('\\');
    quoted.push_back(character);
  }
  return quoted.append(1, '"');
}

}  // namespace kestro::exchange
