#pragma once

#include <string>
#include <string_view>

namespace kestro::ports {

/// The system's ANSI code page (Windows' own; windows-1250 elsewhere).
class AnsiCodePage {
 public:
  virtual ~AnsiCodePage() = default;
  /// UTF-8 text of the bytes, exactly one character a byte in a single-byte code
  /// page; a byte without a character becomes the control character of its value.
  [[nodiscard]] virtual std::string ToText(std::string_view bytes) const = 0;
  /// Bytes of the text; a character that the code page lacks becomes "?".
  [[nodiscard]] virtual std::string FromText(std::string_view text) const = 0;
};

}  // namespace kestro::ports
