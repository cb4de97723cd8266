#pragma once

#include <string>

#include "ports/clipboard.h"

namespace kestro::adapters {

/// Keeps the text for whoever wants to see it.
class HeadlessClipboard final : public ports::Clipboard {
 public:
  void SetText(std::string_view text) override { text_ = text; }
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  std::string text_;
};

}  // namespace kestro::adapters
