#pragma once

#include "ports/ansi_code_page.h"

namespace kestro::adapters {

/// A code page of the system's converter: its own ANSI code page unless another
/// number is given. A byte without a character is the control character of its
/// value in both directions, and every byte of a single-byte page comes back as
/// itself.
class SystemCodePage final : public ports::AnsiCodePage {
 public:
  static constexpr unsigned kSystem = 0;
  static constexpr unsigned kCentralEuropean = 1250;

  explicit SystemCodePage(unsigned number = kSystem) : number_(number) {}

  [[nodiscard]] std::string ToText(std::string_view bytes) const override;
  /// A byte of the text that is not UTF-8 becomes "?" as an unknown character does.
  [[nodiscard]] std::string FromText(std::string_view text) const override;

 private:
  unsigned number_;
};

}  // namespace kestro::adapters
