#include "scenario/script_line.h"

#include <charconv>
#include <limits>

#include "base/text.h"

namespace kestro::scenario {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr char32_t kReplacementCharacter = 0xFFFD;

std::string_view CutBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsControlCharacter(char character) {
  const auto code = static_cast<unsigned char>(character);
  return code < 0x20 || code == 0x7F;
}

class LineReader {
 public:
  explicit LineReader(std::string_view line) : line_(line) {}

  ScriptLine Read() {
    ScriptLine result;
    std::size_t end = position_;
    while (SkipBlanks()) {
      if (result.words.empty()) start_ = position_;
      result.words.push_back(ReadWord());
      end = position_;
    }
    result.written = line_.substr(start_, end > start_ ? end - start_ : 0);
    return result;
  }

 private:
  [[nodiscard]] bool AtEnd() const { return position_ >= line_.size(); }
  [[nodiscard]] bool AtBlank() const { return kBlanks.find(line_[position_]) != std::string_view::npos; }

  /// False at the end of the line or at a comment.
  bool SkipBlanks() {
    while (!AtEnd() && AtBlank()) ++position_;
    return !AtEnd() && line_[position_] != '#';
  }

  Word ReadWord() {
    if (line_[position_] == '"') return {Word::Kind::kText, ReadText(), {}};
    const std::size_t first = position_;
    while (!AtEnd() && !AtBlank() && line_[position_] != '"' && line_[position_] != '#') ++position_;
    const std::string_view bare = line_.substr(first, position_ - first);
    if (AtEnd() || line_[position_] != '"') return {Word::Kind::kBare, std::string(bare), {}};
    if (bare.size() < 2 || bare.back() != '=') throw LineError("a quote inside a word");
    return {Word::Kind::kPair, ReadText(), std::string(bare.substr(0, bare.size() - 1))};
  }

  std::string ReadText() {
    std::string text;
    for (++position_; !AtEnd(); ++position_) {
      const char character = line_[position_];
      if (character == '"') {
        ++position_;
        if (!AtEnd() && !AtBlank() && line_[position_] != '#') throw LineError("no blank behind a text");
        return text;
      }
      if (character == '\\') {
        ReadEscape(text);
      } else {
        text.push_back(character);
      }
    }
    throw LineError("a text without its closing quote");
  }

  /// From the backslash to the last character of the escape.
  void ReadEscape(std::string& text) {
    ++position_;
    switch (AtEnd() ? '\0' : line_[position_]) {
      case '"':
        return text.push_back('"');
      case '\\':
        return text.push_back('\\');
      case 'r':
        return text.push_back('\r');
      case 'n':
        return text.push_back('\n');
      case 't':
        return text.push_back('\t');
      case 'x':
        return base::AppendCharacter(text, ReadHexByte());
      default:
        throw LineError(R"(an unknown escape: there are \" \\ \r \n \t \xHH)");
    }
  }

  char32_t ReadHexByte() {
    const std::string_view digits = line_.substr(position_ + 1, 2);
    unsigned value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (digits.size() != 2 || error != std::errc{} || end != digits.data() + 2) {
      throw LineError(R"(\x without two hexadecimal digits)");
    }
    position_ += 2;
    return value;
  }

  std::string_view line_;
  std::size_t position_ = 0;
  std::size_t start_ = 0;
};

}  // namespace

void CheckCharacters(std::string_view line) {
  for (std::size_t position = 0; position < line.size();) {
    const std::size_t before = position;
    const char32_t character = base::NextCharacter(line, position);
    if (character == kReplacementCharacter && position == before + 1) throw LineError("malformed UTF-8");
    if (IsControlCharacter(line[before]) && line[before] != '\t') throw LineError("a control character");
  }
}

ScriptLine SplitLine(std::string_view line) { return LineReader(line).Read(); }

FirstWord TakeFirstWord(std::string_view line) {
  line = CutBlanks(line);
  const auto end = line.find_first_of(kBlanks);
  if (end == std::string_view::npos) return {line, {}};
  return {line.substr(0, end), CutBlanks(line.substr(end))};
}

std::optional<std::int64_t> ParseNumber(std::string_view word) {
  const bool hexadecimal = word.starts_with("0x") || word.starts_with("0X");
  const std::string_view digits = hexadecimal ? word.substr(2) : word;
  if (hexadecimal && digits.starts_with('-')) return std::nullopt;
  std::int64_t value = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, hexadecimal ? 16 : 10);
  if (error != std::errc{} || end != digits.data() + digits.size()) return std::nullopt;
  const bool in_range =
      value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<std::uint32_t>::max();
  return in_range ? std::optional(value) : std::nullopt;
}

}  // namespace kestro::scenario
