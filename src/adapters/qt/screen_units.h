#pragma once

namespace kestro::adapters {

/// The program measures windows and screens in twips; a logical pixel has 15 of
/// them (1440 an inch, 96 pixels an inch).
inline constexpr int kTwipsPerPixel = 15;

[[nodiscard]] constexpr int ToPixels(int twips) { return twips / kTwipsPerPixel; }
[[nodiscard]] constexpr int ToTwips(int pixels) { return pixels * kTwipsPerPixel; }

}  // namespace kestro::adapters
