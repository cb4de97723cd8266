#pragma once

#include <string_view>

#include "adapters/win32/front_end/dpi.h"
#include "adapters/win32/front_end/handles.h"

namespace kestro::adapters::win32 {

/// A font with what layouts ask of it, in pixels.
class Font {
 public:
  explicit Font(const LOGFONTW& description);

  [[nodiscard]] HFONT get() const { return font_.get(); }
  [[nodiscard]] int line() const { return line_; }
  /// Width of about that many characters of running text.
  [[nodiscard]] int Width(int characters) const { return average_ * characters; }

  enum class Mnemonic { kMarked, kNone };
  /// Size of the text when its lines are at most `width` pixels wide: broken
  /// between words where possible, inside a word where not.
  [[nodiscard]] SIZE Measure(std::wstring_view text, int width, Mnemonic mnemonic) const;

 private:
  OwnedFont font_;
  int line_ = 0;
  int average_ = 0;
};

/// The fonts of one window at its density.
struct Fonts {
  explicit Fonts(int dots_per_inch);

  int dpi;
  Font normal;
  Font heading;

  [[nodiscard]] int Scaled(int pixels) const { return win32::Scaled(pixels, dpi); }
};

}  // namespace kestro::adapters::win32
