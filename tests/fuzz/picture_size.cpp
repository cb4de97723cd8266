#include "core/picture_size.h"

#include "fuzz/property.h"

// The start of a picture file: what is shown has a size, and a bearable one.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using kestro::core::kMostPixels;
  const std::string_view start = kestro::fuzz::TextOf(data, size);
  const auto told = kestro::core::ReadPictureSize(start);
  const std::uint64_t pixels = told ? std::uint64_t{told->width} * told->height : 0;
  const bool bearable = pixels > 0 && pixels <= kMostPixels;
  kestro::fuzz::Require(kestro::core::IsShowablePicture(start) == bearable, "shown and of no bearable size");
  return 0;
}
