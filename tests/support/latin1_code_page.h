#pragma once

#include <string>
#include <string_view>

#include "base/text.h"
#include "ports/ansi_code_page.h"

namespace kestro::test {

/// One character a byte, as in the first 256 code points.
class Latin1CodePage final : public ports::AnsiCodePage {
 public:
  std::string ToText(std::string_view bytes) const override {
    std::string text;
    for (const char byte : bytes) base::AppendCharacter(text, static_cast<unsigned char>(byte));
    return text;
  }
  std::string FromText(std::string_view text) const override {
    std::string bytes;
    for (std::size_t position = 0; position < text.size();) {
      const char32_t character = base::NextCharacter(text, position);
      bytes.push_back(character < 256 ? static_cast<char>(character) : '?');
    }
    return bytes;
  }
};

}  // namespace kestro::test
