#include "core/picture_size.h"

namespace kestro::core {
namespace {

/// Unsigned number of `count` bytes at `offset`; nothing outside the bytes.
std::optional<std::uint32_t> BigEndian(std::string_view bytes, std::size_t offset, std::size_t count) {
  if (offset > bytes.size() || count > bytes.size() - offset) return std::nullopt;
  std::uint32_t value = 0;
  for (const char byte : bytes.substr(offset, count))
    value = (value << 8U) | static_cast<unsigned char>(byte);
  return value;
}

std::optional<std::uint32_t> LittleEndian(std::string_view bytes, std::size_t offset, std::size_t count) {
  if (offset > bytes.size() || count > bytes.size() - offset) return std::nullopt;
  std::uint32_t value = 0;
  for (std::size_t i = count; i-- > 0;) value = (value << 8U) | static_cast<unsigned char>(bytes[offset + i]);
  return value;
}

std::optional<PictureSize> SizeOf(std::optional<std::uint32_t> width, std::optional<std::uint32_t> height) {
  if (!width || !height) return std::nullopt;
  return PictureSize{*width, *height};
}

/// A negative height is that of a bitmap stored from the top down.
std::uint32_t Magnitude(std::uint32_t value) { return (value & 0x80000000U) != 0 ? ~value + 1 : value; }

std::optional<PictureSize> BitmapSize(std::string_view bytes) {
  auto size = SizeOf(LittleEndian(bytes, 18, 4), LittleEndian(bytes, 22, 4));
  if (size) size->height = Magnitude(size->height);
  return size;
}

/// Walks the segments up to the one that describes the frame.
std::optional<PictureSize> JpegSize(std::string_view bytes) {
  for (std::size_t offset = 2; offset + 4 <= bytes.size();) {
    if (static_cast<unsigned char>(bytes[offset]) != 0xFFU) return std::nullopt;
    const auto marker = static_cast<unsigned char>(bytes[offset + 1]);
    if (marker == 0xFFU) {  // a filling byte
      ++offset;
      continue;
    }
    const bool frame =
        marker >= 0xC0U && marker <= 0xCFU && marker != 0xC4U && marker != 0xC8U && marker != 0xCCU;
    if (frame) return SizeOf(BigEndian(bytes, offset + 7, 2), BigEndian(bytes, offset + 5, 2));
    // A length that does not even count its own two bytes leads to one of them, where no segment starts.
    offset += 2 + BigEndian(bytes, offset + 2, 2).value_or(0);
  }
  return std::nullopt;
}

}  // namespace

std::optional<PictureSize> ReadPictureSize(std::string_view start) {
  if (start.starts_with("\x89PNG\r\n\x1A\n")) return SizeOf(BigEndian(start, 16, 4), BigEndian(start, 20, 4));
  if (start.starts_with("GIF87a") || start.starts_with("GIF89a")) {
    return SizeOf(LittleEndian(start, 6, 2), LittleEndian(start, 8, 2));
  }
  if (start.starts_with("\xFF\xD8")) return JpegSize(start);
  if (start.starts_with("BM")) return BitmapSize(start);
  return std::nullopt;
}

bool IsShowablePicture(std::string_view start) {
  const auto size = ReadPictureSize(start);
  if (!size) return false;
  const std::uint64_t pixels = std::uint64_t{size->width} * size->height;
  return pixels > 0 && pixels <= kMostPixels;
}

}  // namespace kestro::core
