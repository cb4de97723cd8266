#pragma once

#include "adapters/win32/front_end/fonts.h"

namespace kestro::adapters::win32 {

/// Height of a field of one line, and of a list beside it. The system puts the
/// text at the top of a field: what is left below must not show.
[[nodiscard]] inline int FieldHeight(const Fonts& fonts) {
  return fonts.normal.line() + 2 * SystemMetric(SM_CYEDGE, fonts.dpi) + fonts.Scaled(3);
}
/// Room around the text of a field or a button, one side, with its border.
[[nodiscard]] inline int FieldPadding(const Fonts& fonts) { return fonts.Scaled(4); }

}  // namespace kestro::adapters::win32
