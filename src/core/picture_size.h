#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kestro::core {

struct PictureSize {
  std::uint32_t width = 0;  // pixels
  std::uint32_t height = 0;
};

/// Bytes of a picture file that ReadPictureSize wants to see at most.
inline constexpr std::size_t kPictureStartBytes = std::size_t{1} << 20U;

/// Pictures with more pixels are not shown: decoding one would cost too much memory.
inline constexpr std::uint64_t kMostPixels = 64'000'000;

/// Size that the start of a bmp, gif, jpeg or png file tells; nothing for
/// anything else, a cut-off start included.
[[nodiscard]] std::optional<PictureSize> ReadPictureSize(std::string_view start);

/// The file is a picture of one of those kinds, not empty and of at most kMostPixels.
[[nodiscard]] bool IsShowablePicture(std::string_view start);

}  // namespace kestro::core
