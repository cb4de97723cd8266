#include "adapters/win32/front_end/screenshot.h"

#include <cstring>

#include "adapters/win32/front_end/image.h"

namespace kestro::adapters::win32 {
namespace {

constexpr std::size_t kBytesPerPixel = 4;

Image Grab(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  Image image{static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top), {}};
  image.pixels.resize(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height) *
                      kBytesPerPixel);
  const OwnedBitmap bitmap = BitmapOf(image);
  {
    const WindowDc source(window, WindowDc::Area::kWhole);
    const MemoryDc memory;
    const Selected selected(memory.get(), bitmap.get());
    BitBlt(memory.get(), 0, 0, image.width, image.height, source.get(), 0, 0, SRCCOPY);
    GdiFlush();
  }
  BITMAP bits{};
  if (GetObjectW(bitmap.get(), sizeof bits, &bits) == 0 || bits.bmBits == nullptr) return {};
  std::memcpy(image.pixels.data(), bits.bmBits, image.pixels.size());
  for (std::size_t i = kBytesPerPixel - 1; i < image.pixels.size(); i += kBytesPerPixel) {
    image.pixels[i] = std::byte{0xFF};  // a screen has no transparency
  }
  return image;
}

}  // namespace

bool SaveScreenshot(HWND window, const std::wstring& file) {
  constexpr UINT kOnlyOrder = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER;
  SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, kOnlyOrder);
  RedrawWindow(window, nullptr, nullptr,
               RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_FRAME | RDW_INVALIDATE | RDW_ERASE);
  return SavePng(Grab(window), file);
}

}  // namespace kestro::adapters::win32
