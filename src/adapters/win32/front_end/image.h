#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "adapters/win32/front_end/handles.h"

namespace kestro::adapters::win32 {

/// An image in memory, top row first; a pixel is blue, green, red, opacity, the
/// colours multiplied by the opacity.
struct Image {
  int width = 0;
  int height = 0;
  std::vector<std::byte> pixels;

  [[nodiscard]] bool empty() const { return width == 0 || height == 0; }
};

/// A picture file (bmp, gif, ico, jpeg, png, told by its contents) scaled down to
/// `most` pixels a side in its own proportions, turned as its camera noted. Empty
/// for a file that is missing, broken, of another kind or of more than 64 million
/// pixels.
[[nodiscard]] Image LoadPicture(const std::wstring& file, int most);
/// The same of a picture in memory.
[[nodiscard]] Image LoadPicture(std::span<const std::byte> bytes, int most);

/// Every pixel is the mean of those that it stands for.
[[nodiscard]] Image ScaledTo(const Image& image, int width, int height);
/// The bitmap of an image, for AlphaBlend and image lists.
[[nodiscard]] OwnedBitmap BitmapOf(const Image& image);

/// Writes an image without transparency as PNG; false when it cannot be written.
[[nodiscard]] bool SavePng(const Image& image, const std::wstring& file);

}  // namespace kestro::adapters::win32
