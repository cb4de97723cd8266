#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace kestro::adapters::win32 {

/// The text of a window or of a native control.
[[nodiscard]] std::wstring TextOf(HWND window);

/// The text as a native control can hold it: up to a zero character, lines separated by CR LF.
[[nodiscard]] std::wstring ForControl(std::string_view text);

/// The character behind the first "&" that marks one (not "&&"), in upper case; 0 for none.
[[nodiscard]] wchar_t MnemonicOf(std::string_view caption);

/// A text that a native control shows. What the control cannot hold as it is (the
/// line ends of another system) comes back as it was, as long as the control
/// still shows the same.
class ShownText {
 public:
  /// Leaves a control alone that shows the text already.
  void Put(HWND window, const std::string& text);
  [[nodiscard]] std::string Read(HWND window) const;

 private:
  std::string text_;
  std::wstring native_;
  bool plain_line_ends_ = false;  // LF alone
};

/// What remains of an edit of a text.
struct LimitedText {
  std::wstring text;
  std::size_t cursor = 0;  // behind what was taken
};

/// forms::LimitTyping for texts of Windows.
[[nodiscard]] LimitedText LimitTyping(std::wstring_view before, std::wstring_view after, int most);

}  // namespace kestro::adapters::win32
