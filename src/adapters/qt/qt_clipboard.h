#pragma once

#include "ports/clipboard.h"

namespace kestro::adapters {

/// The desktop's clipboard. Needs a QGuiApplication.
class QtClipboard final : public ports::Clipboard {
 public:
  void SetText(std::string_view text) override;
};

}  // namespace kestro::adapters
