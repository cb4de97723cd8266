#pragma once

#include <windows.h>

#include <optional>

namespace kestro::adapters::win32 {

// Screen densities. Where the system knows no density of single monitors, that
// of the whole screen counts.

inline constexpr int kPlainDpi = 96;

[[nodiscard]] int SystemDpi();
[[nodiscard]] int DpiOf(HWND window);
/// The font of message boxes and windows at that density.
[[nodiscard]] LOGFONTW MessageFont(int dpi);
/// Outer rectangle of a window with that inner one.
[[nodiscard]] RECT FrameAround(RECT inside, DWORD style, DWORD extended_style, bool has_menu, int dpi);
[[nodiscard]] int SystemMetric(int index, int dpi);

/// The program measures windows in twips, 1440 an inch.
[[nodiscard]] inline int ToPixels(int twips, int dpi) { return MulDiv(twips, dpi, 1440); }
[[nodiscard]] inline int ToTwips(int pixels, int dpi) { return MulDiv(pixels, 1440, dpi); }
/// Pixels of a plain screen at that density.
[[nodiscard]] inline int Scaled(int pixels, int dpi) { return MulDiv(pixels, dpi, kPlainDpi); }

/// The part of the window's monitor that programs may use; without a window that of the first one.
[[nodiscard]] RECT WorkArea(HWND window);

}  // namespace kestro::adapters::win32
