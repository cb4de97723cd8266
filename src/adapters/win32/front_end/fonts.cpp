#include "adapters/win32/front_end/fonts.h"

#include <algorithm>

namespace kestro::adapters::win32 {
namespace {

LOGFONTW HeadingFont(int dpi) {
  LOGFONTW font = MessageFont(dpi);
  font.lfHeight = font.lfHeight * 3 / 2;
  font.lfWeight = FW_BOLD;
  return font;
}

}  // namespace

Font::Font(const LOGFONTW& description) : font_(CreateFontIndirectW(&description)) {
  const MemoryDc dc;
  const Selected selected(dc.get(), get());
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc.get(), &metrics);
  line_ = metrics.tmHeight;
  average_ = std::max<int>(metrics.tmAveCharWidth, 1);
}

SIZE Font::Measure(std::wstring_view text, int width, Mnemonic mnemonic) const {
  if (text.empty()) return {0, line_};
  const MemoryDc dc;
  const Selected selected(dc.get(), get());
  RECT room{0, 0, std::max(width, 1), 0};
  UINT format = DT_CALCRECT | DT_WORDBREAK | DT_EDITCONTROL | DT_EXPANDTABS;
  if (mnemonic == Mnemonic::kNone) format |= DT_NOPREFIX;
  DrawTextW(dc.get(), text.data(), static_cast<int>(text.size()), &room, format);
  return {room.right, std::max<LONG>(room.bottom, line_)};
}

Fonts::Fonts(int dots_per_inch)
    : dpi(dots_per_inch), normal(MessageFont(dots_per_inch)), heading(HeadingFont(dots_per_inch)) {}

}  // namespace kestro::adapters::win32
