#pragma once

#include "adapters/win32/hidden_window.h"
#include "ports/clipboard.h"

namespace kestro::adapters {

class Win32Clipboard final : public ports::Clipboard {
 public:
  /// The window must outlive the object.
  explicit Win32Clipboard(HiddenWindow& window) : window_(window) {}

  /// Left as it is while another program holds it open for long.
  void SetText(std::string_view text) override;

 private:
  HiddenWindow& window_;
};

}  // namespace kestro::adapters
