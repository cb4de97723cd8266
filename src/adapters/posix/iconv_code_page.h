#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "ports/ansi_code_page.h"

namespace kestro::adapters {

/// A code page of the C library's converter. One thread at a time.
///
/// A byte without a character is the control character of its value, in both
/// directions: every byte comes back as itself.
class IconvCodePage final : public ports::AnsiCodePage {
 public:
  static constexpr const char* kCentralEuropean = "CP1250";

  /// Raises 5 for a name that the converter does not know.
  explicit IconvCodePage(const std::string& name = kCentralEuropean);

  [[nodiscard]] std::string ToText(std::string_view bytes) const override;
  /// A byte of the text that is not UTF-8 becomes "?" as an unknown character does.
  [[nodiscard]] std::string FromText(std::string_view text) const override;

 private:
  struct Closer {
    void operator()(void* converter) const;
  };
  using Converter = std::unique_ptr<void, Closer>;

  static Converter Open(const std::string& to, const std::string& from);
  /// Moves the text's first character, which the converter does not take, over to the bytes.
  void ConvertOther(std::string_view& text, std::string& bytes) const;

  Converter to_text_;
  Converter from_text_;
  std::array<bool, 256> has_character_{};
};

}  // namespace kestro::adapters
