#include <algorithm>
#include <string>

#include "adapters/posix/iconv_code_page.h"
#include "adapters/posix/utf8.h"
#include "adapters/sqlite/text_order.h"
#include "base/text.h"
#include "contacts/caller_id.h"
#include "fuzz/property.h"

// Texts of both kinds, bytes of the ANSI code page and UTF-8, whole or broken.

namespace kestro::fuzz {
namespace {

const adapters::IconvCodePage& CodePage() {
  static const adapters::IconvCodePage kPage;
  return kPage;
}

void CheckConversion(std::string_view bytes) {
  const std::string text = CodePage().ToText(bytes);
  Require(base::IsUtf8(text), "a text that is not UTF-8");
  Require(base::CharacterCount(text) == bytes.size(), "not one character a byte");
  Require(CodePage().FromText(text).size() == bytes.size(), "not one byte a character");
  Require(CodePage().FromText(bytes).size() == base::CharacterCount(bytes),
          "not one byte a character of any text");
}

void CheckCharacters(std::string_view text) {
  std::size_t position = 0;
  std::size_t count = 0;
  std::string copy;
  for (; position < text.size(); ++count) base::AppendCharacter(copy, base::NextCharacter(text, position));
  Require(position == text.size() && count == base::CharacterCount(text),
          "characters that are counted otherwise");
  Require(base::IsUtf8(copy), "a copy that is not UTF-8");
  if (base::IsUtf8(text)) Require(copy == text, "a copy that differs");
  for (const std::size_t first : {std::size_t{0}, count / 2, count, count + 1}) {
    const auto part = base::FirstCharacters(text, first);
    Require(base::CharacterCount(part) == std::min(first, count), "another number of characters");
  }
}

void CheckCase(std::string_view text) {
  const std::string folded = base::FoldCase(text);
  Require(base::FoldCase(folded) == folded, "folding twice is another thing");
  Require(base::EqualIgnoringCase(text, folded), "the folded text is another one");
  Require(base::CharacterCount(base::UpperCase(text)) == base::CharacterCount(text),
          "upper case of another length");
}

void CheckNumbers(std::string_view text) {
  if (const auto number = base::ParseInt32(text)) {
    Require(base::ParseInt32(std::to_string(*number)) == number, "another number");
  }
  const std::string caller = contacts::InternationalCallerIdFromText(text);
  Require(contacts::WithoutSeparators(caller) == caller, "a caller id with separators");
}

void CheckOrder(std::string_view left, std::string_view right) {
  using adapters::CompareTextOrder;
  const auto sign = [](int value) { return (value > 0) - (value < 0); };
  const int order = sign(CompareTextOrder(left, right));
  Require(order == -sign(CompareTextOrder(right, left)), "an order that depends on the side");
  Require((order == 0) == (left == right), "two texts at one place");
}

}  // namespace

void Check(std::string_view text) {
  CheckConversion(text);
  CheckCharacters(text);
  CheckCase(text);
  CheckNumbers(text);
  CheckOrder(text.substr(0, text.size() / 2), text.substr(text.size() / 2));
}

}  // namespace kestro::fuzz
