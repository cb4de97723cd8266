#include "core/masking_log.h"

#include <algorithm>

#include "base/text.h"

namespace kestro::core {
namespace {

constexpr std::size_t kFewestDigits = 5;
constexpr std::size_t kDigitsShown = 2;

bool IsDigit(char32_t character) { return character >= '0' && character <= '9'; }

bool IsSeparator(char32_t character) {
  constexpr std::u32string_view kSeparators =
      U" -+()./"
      U"\u00A0\u2007\u2009\u202F"         // no-break, figure, thin and narrow no-break space
      U"\u2010\u2011\u2012\u2013\u2212";  // hyphens, dashes, minus
  return kSeparators.find(character) != std::u32string_view::npos;
}

/// Masks the digits of a run that is known to hold `digits` of them.
void AppendRun(std::string& result, std::string_view run, std::size_t digits) {
  std::size_t left = digits < kFewestDigits ? 0 : digits - kDigitsShown;
  for (const char character : run) {
    const bool masked = left > 0 && IsDigit(static_cast<unsigned char>(character));
    result.push_back(masked ? '*' : character);
    if (masked) --left;
  }
}

}  // namespace

std::string MaskNumbers(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  std::size_t run = 0;     // where the current run begins
  std::size_t digits = 0;  // in it
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t start = position;
    const char32_t character = base::NextCharacter(text, position);
    if (IsDigit(character)) {
      ++digits;
    } else if (!IsSeparator(character)) {
      AppendRun(result, text.substr(run, start - run), digits);
      result.append(text.substr(start, position - start));
      run = position;
      digits = 0;
    }
  }
  AppendRun(result, text.substr(run), digits);
  return result;
}

void MaskingLog::SetFileLogging(bool enabled) {
  enabled_ = enabled;
  component_.SetFileLogging(enabled);
}

void MaskingLog::ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) {
  if (!Masks()) return component_.ErrorEntry(number, source, description);
  component_.ErrorEntry(number, MaskNumbers(source), MaskNumbers(description));
}

void MaskingLog::LineEntry(const base::LogSource& source, std::string_view message) {
  if (!Masks()) return component_.LineEntry(source, message);
  component_.LineEntry(source, MaskNumbers(message));
}

}  // namespace kestro::core
