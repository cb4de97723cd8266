#pragma once

#include <string_view>

namespace kestro::ports {

/// The clipboard that the user's programs share. User-interface thread only.
class Clipboard {
 public:
  virtual ~Clipboard() = default;
  /// Puts the text (UTF-8) there, in place of what it held. Its line breaks (CR
  /// LF) become those of the user's system.
  virtual void SetText(std::string_view text) = 0;
};

}  // namespace kestro::ports
