#include "adapters/posix/iconv_code_page.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <iconv.h>

#include "base/runtime_error.h"
#include "base/text.h"

namespace kestro::adapters {
namespace {

constexpr std::size_t kOutputBytes = 256;

bool IsInvalid(iconv_t converter) { return reinterpret_cast<std::intptr_t>(converter) == -1; }

/// Converts as much of the start of `input` as it can, moves `input` behind it
/// and appends the result. On return the input is empty or begins with
/// something that has no counterpart.
void ConvertRun(iconv_t converter, std::string_view& input, std::string& output) {
  ::iconv(converter, nullptr, nullptr, nullptr, nullptr);
  while (!input.empty()) {
    std::array<char, kOutputBytes> buffer{};
    // The converter only reads its input; its declaration is older than const.
    char* in = const_cast<char*>(input.data());
    std::size_t in_left = input.size();
    char* out = buffer.data();
    std::size_t out_left = buffer.size();
    const std::size_t result = ::iconv(converter, &in, &in_left, &out, &out_left);
    const bool output_full = result == static_cast<std::size_t>(-1) && errno == E2BIG;
    output.append(buffer.data(), buffer.size() - out_left);
    input.remove_prefix(input.size() - in_left);
    if (!output_full) return;
  }
}

/// Where the first of the tag characters U+E0000 to U+E007F may begin, the length when there is none: glibc's
/// converters leave them out without a word.
std::size_t FindTag(std::string_view text) {
  constexpr std::string_view kStart = "\xF3\xA0";
  for (std::size_t place = text.find(kStart); place < text.size(); place = text.find(kStart, place + 1)) {
    const std::string_view next = text.substr(place + kStart.size(), 1);
    if (next == "\x80" || next == "\x81") return place;
  }
  return text.size();
}

}  // namespace

void IconvCodePage::Closer::operator()(void* converter) const { ::iconv_close(converter); }

IconvCodePage::Converter IconvCodePage::Open(const std::string& to, const std::string& from) {
  auto* const converter = ::iconv_open(to.c_str(), from.c_str());
  if (IsInvalid(converter)) {
    throw base::RuntimeError(base::kInvalidProcedureCall, "Unknown code page: " + to + ", " + from);
  }
  return Converter(converter);
}

IconvCodePage::IconvCodePage(const std::string& name)
    : to_text_(Open("UTF-8", name)), from_text_(Open(name, "UTF-8")) {
  for (std::size_t value = 0; value < has_character_.size(); ++value) {
    const char byte = static_cast<char>(value);
    std::string_view input(&byte, 1);
    std::string text;
    ConvertRun(to_text_.get(), input, text);
    has_character_[value] = input.empty();
  }
}

std::string IconvCodePage::ToText(std::string_view bytes) const {
  std::string text;
  text.reserve(bytes.size());
  while (true) {
    ConvertRun(to_text_.get(), bytes, text);
    if (bytes.empty()) return text;
    base::AppendCharacter(text, static_cast<unsigned char>(bytes.front()));
    bytes.remove_prefix(1);
  }
}

std::string IconvCodePage::FromText(std::string_view text) const {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    std::string_view stretch = text.substr(0, FindTag(text));
    text.remove_prefix(stretch.size());
    while (true) {
      ConvertRun(from_text_.get(), stretch, bytes);
      if (stretch.empty()) break;
      ConvertOther(stretch, bytes);
    }
    if (!text.empty()) ConvertOther(text, bytes);
  }
  return bytes;
}

void IconvCodePage::ConvertOther(std::string_view& text, std::string& bytes) const {
  std::size_t position = 0;
  const char32_t character = base::NextCharacter(text, position);
  text.remove_prefix(position);
  const bool stands_for_byte = character < has_character_.size() && !has_character_[character];
  bytes.push_back(stands_for_byte ? static_cast<char>(character) : '?');
}

}  // namespace kestro::adapters
