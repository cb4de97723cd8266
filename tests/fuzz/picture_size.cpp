#include "core/picture_size.h"

#include "fuzz/property.h"

// The start of a picture file: what is shown has a size, and a bearable one.

void kestro::fuzz::Check(std::string_view start) {
  const auto told = core::ReadPictureSize(start);
  const std::uint64_t pixels = told ? std::uint64_t{told->width} * told->height : 0;
  const bool bearable = pixels > 0 && pixels <= core::kMostPixels;
  Require(core::IsShowablePicture(start) == bearable, "shown and of no bearable size");
}
