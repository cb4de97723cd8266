#include "adapters/sqlite/text_matcher.h"

#include <algorithm>

#include "adapters/sqlite/text_form.h"

namespace kestro::adapters {
namespace {

/// All there are: the long s and the Kelvin sign, U+212A, whose bytes 2A 21 read "*!".
constexpr OtherSpelling kOtherSpellings[] = {{'s', "\u017F", "\x7F\x01"}, {'k', "\u212A", "*!"}};

std::string AsciiStart(std::u32string_view folded) {
  const auto end = std::ranges::find_if(folded, [](char32_t character) { return character >= 0x80; });
  return {folded.begin(), end};
}

/// For the first two characters.
PairScan StartScan(std::string_view ascii, std::size_t unit) {
  if (ascii.empty()) return {'\0', '\0', 0};  // never used
  return ascii.size() == 1 ? PairScan(ascii[0], ascii[0], 0) : PairScan(ascii[0], ascii[1], unit);
}

}  // namespace

TextMatcher::TextMatcher(std::string_view part)
    : folding_(LetterFoldingTable()),
      part_(Folded(part)),
      ascii_start_(AsciiStart(part_)),
      byte_scan_(StartScan(ascii_start_, Latin1Form::kUnit)),
      utf16_scan_(StartScan(ascii_start_, Utf16Form::kUnit)) {}

std::u32string TextMatcher::Folded(std::string_view part) const {
  std::u32string folded;
  for (std::size_t position = 0; position < part.size();) {
    folded.push_back(TakeFolded<Utf8Form>(part, position));
  }
  return folded;
}

bool TextMatcher::FoundIn(std::string_view text) const { return FoundInForm<Utf8Form>(text); }

bool TextMatcher::FoundInLatin1(std::string_view text) const { return FoundInForm<Latin1Form>(text); }

bool TextMatcher::FoundInUtf16(std::string_view text) const {
  return FoundInForm<Utf16Form>(text.substr(0, text.size() & ~std::size_t{1}));
}

template <typename Form>
bool TextMatcher::FoundInForm(std::string_view text) const {
  if (part_.empty()) return true;
  if (ascii_start_.empty()) return FoundByCharacters<Form>(text);
  if (FoundByBytes<Form>(text)) return true;
  const auto in_text = [&](const OtherSpelling& other) {
    const std::string_view spelling = Form::Spelling(other);
    return !spelling.empty() && ascii_start_.find(other.letter) != std::string::npos &&
           text.find(spelling) != std::string_view::npos;
  };
  return std::ranges::any_of(kOtherSpellings, in_text) && FoundByCharacters<Form>(text);
}

template <typename Form>
bool TextMatcher::FoundByBytes(std::string_view text) const {
  const PairScan& scan = Form::kUnit == 1 ? byte_scan_ : utf16_scan_;
  for (auto position = scan.Next(text, 0); position != std::string_view::npos;
       position = scan.Next(text, position + 1)) {
    if (position % Form::kUnit == 0 && StandsAt<Form>(text, position)) return true;
  }
  return false;
}

template <typename Form>
bool TextMatcher::FoundByCharacters(std::string_view text) const {
  for (std::size_t position = 0; position < text.size(); Form::Take(text, position)) {
    if (StandsAt<Form>(text, position)) return true;
  }
  return false;
}

template <typename Form>
bool TextMatcher::StandsAt(std::string_view text, std::size_t position) const {
  return std::ranges::all_of(part_, [&](char32_t character) {
    return position < text.size() && TakeFolded<Form>(text, position) == character;
  });
}

template <typename Form>
char32_t TextMatcher::TakeFolded(std::string_view text, std::size_t& position) const {
  const char32_t character = Form::Take(text, position);
  return character < Utf8Form::kMalformedByte ? folding_.Fold(character) : character;
}

}  // namespace kestro::adapters
