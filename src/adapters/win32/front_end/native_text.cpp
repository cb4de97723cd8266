#include "adapters/win32/front_end/native_text.h"

#include <algorithm>

#include "adapters/win32/wide_text.h"
#include "forms/typing_limit.h"

namespace kestro::adapters::win32 {
namespace {

bool IsHighSurrogate(wchar_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(wchar_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

/// One element a character, of one or two units.
std::u32string Characters(std::wstring_view text) {
  std::u32string characters;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t character = text[i];
    if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      character = 0x10000 + ((character - 0xD800) << 10) + (text[++i] - 0xDC00U);
    }
    characters += character;
  }
  return characters;
}

std::wstring Units(std::u32string_view characters) {
  std::wstring text;
  for (const char32_t character : characters) {
    if (character < 0x10000) {
      text += static_cast<wchar_t>(character);
    } else {
      text += static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10));
      text += static_cast<wchar_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
    }
  }
  return text;
}

/// Every line end becomes CR LF.
std::wstring WithWindowsLineEnds(std::wstring_view text) {
  std::wstring lines;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != L'\r' && text[i] != L'\n') {
      lines += text[i];
      continue;
    }
    if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') ++i;
    lines += L"\r\n";
  }
  return lines;
}

}  // namespace

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)), L'\0');
  const LRESULT length =
      SendMessageW(window, WM_GETTEXT, text.size() + 1, reinterpret_cast<LPARAM>(text.data()));
  text.resize(std::min(text.size(), static_cast<std::size_t>(std::max<LRESULT>(length, 0))));
  return text;
}

std::wstring ForControl(std::string_view text) {
  return WithWindowsLineEnds(ToWide(text.substr(0, text.find('\0'))));
}

wchar_t MnemonicOf(std::string_view caption) {
  const std::wstring wide = ToWide(caption);
  for (std::size_t i = 0; i + 1 < wide.size(); ++i) {
    if (wide[i] != L'&') continue;
    if (wide[i + 1] != L'&') {
      wchar_t mark = wide[i + 1];
      CharUpperBuffW(&mark, 1);
      return mark;
    }
    ++i;
  }
  return 0;
}

void ShownText::Put(HWND window, const std::string& text) {
  text_ = text;
  native_ = ForControl(text);
  plain_line_ends_ = text.find('\n') != std::string::npos && text.find("\r\n") == std::string::npos;
  if (TextOf(window) != native_) SetWindowTextW(window, native_.c_str());
}

std::string ShownText::Read(HWND window) const {
  const std::wstring shown = TextOf(window);
  if (shown == native_) return text_;
  std::string text = ToUtf8(shown);
  if (!plain_line_ends_) return text;
  for (std::size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n", end)) {
    text.erase(end, 1);
  }
  return text;
}

LimitedText LimitTyping(std::wstring_view before, std::wstring_view after, int most) {
  const auto [text, cursor] = forms::LimitTyping(Characters(before), Characters(after), most);
  return {Units(text), Units(std::u32string_view(text).substr(0, cursor)).size()};
}

}  // namespace kestro::adapters::win32
