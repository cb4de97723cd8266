#include "adapters/win32/code_page.h"

#include <windows.h>

#include <array>

#include "adapters/win32/wide_text.h"
#include "base/text.h"

namespace kestro::adapters {
namespace {

constexpr std::size_t kMostBytesOfCharacter = 8;

/// The bytes of one character, "?" when the code page lacks it. No look-alike takes its place.
std::string BytesOf(unsigned code_page, char32_t character) {
  std::string utf8;
  base::AppendCharacter(utf8, character);
  const std::wstring wide = ToWide(utf8);
  std::array<char, kMostBytesOfCharacter> bytes{};
  BOOL replaced = FALSE;
  const int count =
      ::WideCharToMultiByte(code_page, WC_NO_BEST_FIT_CHARS, wide.data(), static_cast<int>(wide.size()),
                            bytes.data(), static_cast<int>(bytes.size()), "?", &replaced);
  if (count <= 0 || replaced != FALSE) return "?";
  return {bytes.data(), static_cast<std::size_t>(count)};
}

}  // namespace

std::string SystemCodePage::ToText(std::string_view bytes) const {
  const int size = static_cast<int>(bytes.size());
  const int needed = ::MultiByteToWideChar(number_, 0, bytes.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  ::MultiByteToWideChar(number_, 0, bytes.data(), size, wide.data(), needed);
  return ToUtf8(wide);
}

std::string SystemCodePage::FromText(std::string_view text) const {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const auto first = static_cast<unsigned char>(text[position]);
    if (first < 0x80) {
      bytes.push_back(static_cast<char>(first));
      ++position;
    } else {
      bytes += BytesOf(number_, base::NextCharacter(text, position));
    }
  }
  return bytes;
}

}  // namespace kestro::adapters
