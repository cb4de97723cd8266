#include "adapters/win32/front_end/image.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <wincodec.h>

namespace kestro::adapters::win32 {
namespace {

constexpr std::uint64_t kMostPixels = 64'000'000;
constexpr int kBytesPerPixel = 4;
constexpr int kRowsAtOnce = 64;

/// COM for as long as the object lives.
class ComScope {
 public:
  ComScope() : initialized_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
  ~ComScope() {
    if (initialized_) CoUninitialize();
  }
  ComScope(const ComScope&) = delete;
  ComScope& operator=(const ComScope&) = delete;

 private:
  bool initialized_;
};

/// Takes the object that a call hands out; empty when the call failed.
template <class Interface, class Call>
Com<Interface> Take(const Call& call) {
  Interface* object = nullptr;
  if (FAILED(call(&object))) return {};
  return Com<Interface>(object);
}

Com<IWICImagingFactory> Factory() {
  return Take<IWICImagingFactory>([](IWICImagingFactory** object) {
    return CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                            reinterpret_cast<void**>(object));
  });
}

/// Bitmaps only: other formats are programs in their own right.
bool IsPicture(IWICBitmapDecoder& decoder) {
  GUID format{};
  if (FAILED(decoder.GetContainerFormat(&format))) return false;
  const std::array known{&GUID_ContainerFormatBmp, &GUID_ContainerFormatGif, &GUID_ContainerFormatIco,
                         &GUID_ContainerFormatJpeg, &GUID_ContainerFormatPng};
  return std::any_of(known.begin(), known.end(), [&](const GUID* one) { return IsEqualGUID(*one, format); });
}

/// Sums up source rows into the means of the target's pixels: a picture is read
/// a few rows at a time, however large it is.
class Scaler {
 public:
  Scaler(int from_width, int from_height, int width, int height)
      : from_width_(from_width),
        from_height_(from_height),
        image_{width, height, std::vector<std::byte>(Size(width, height))},
        sums_(static_cast<std::size_t>(width) * kBytesPerPixel) {}

  static std::size_t Size(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * kBytesPerPixel;
  }

  /// The next row of the source.
  void Add(const std::byte* row) {
    for (int x = 0; x < from_width_; ++x) {
      const auto target = static_cast<std::size_t>(Target(x, from_width_, image_.width)) * kBytesPerPixel;
      for (std::size_t part = 0; part < kBytesPerPixel; ++part) {
        sums_[target + part] += std::to_integer<std::uint64_t>(*row++);
      }
    }
    ++rows_;
    ++row_;
    const int y = Target(row_ - 1, from_height_, image_.height);
    if (row_ == from_height_ || Target(row_, from_height_, image_.height) != y) Finish(y);
  }
  [[nodiscard]] Image Result() { return std::move(image_); }

 private:
  static int Target(int place, int from, int to) {
    return static_cast<int>(static_cast<std::int64_t>(place) * to / from);
  }
  void Finish(int y) {
    std::byte* out = image_.pixels.data() + Size(image_.width, y);
    for (int x = 0; x < image_.width; ++x) {
      // As many source columns as Target leads here.
      const auto first = (static_cast<std::int64_t>(x) * from_width_ + image_.width - 1) / image_.width;
      const auto last = (static_cast<std::int64_t>(x + 1) * from_width_ + image_.width - 1) / image_.width;
      const std::uint64_t count =
          static_cast<std::uint64_t>(last - first) * static_cast<std::uint64_t>(rows_);
      for (std::size_t part = 0; part < kBytesPerPixel; ++part) {
        *out++ = static_cast<std::byte>(sums_[static_cast<std::size_t>(x) * kBytesPerPixel + part] / count);
      }
    }
    std::fill(sums_.begin(), sums_.end(), 0);
    rows_ = 0;
  }

  int from_width_;
  int from_height_;
  Image image_;
  std::vector<std::uint64_t> sums_;
  int rows_ = 0;  // in the sums
  int row_ = 0;   // of the source
};

/// Size in the same proportions, at most `most` a side, never larger than it is.
SIZE Within(int width, int height, int most) {
  if (width <= most && height <= most) return {width, height};
  const int longer = std::max(width, height);
  return {std::max(MulDiv(width, most, longer), 1), std::max(MulDiv(height, most, longer), 1)};
}

Image ReadScaled(IWICBitmapSource& source, int most) {
  UINT width = 0;
  UINT height = 0;
  if (FAILED(source.GetSize(&width, &height)) || width == 0 || height == 0) return {};
  if (static_cast<std::uint64_t>(width) * height > kMostPixels) return {};
  const auto [w, h] = Within(static_cast<int>(width), static_cast<int>(height), most);
  Scaler scaler(static_cast<int>(width), static_cast<int>(height), static_cast<int>(w), static_cast<int>(h));
  const std::size_t stride = std::size_t{width} * kBytesPerPixel;
  std::vector<std::byte> rows(stride * kRowsAtOnce);
  for (int y = 0; y < static_cast<int>(height); y += kRowsAtOnce) {
    const int count = std::min(kRowsAtOnce, static_cast<int>(height) - y);
    const WICRect part{0, y, static_cast<INT>(width), count};
    if (FAILED(source.CopyPixels(&part, static_cast<UINT>(stride), static_cast<UINT>(rows.size()),
                                 reinterpret_cast<BYTE*>(rows.data())))) {
      return {};
    }
    for (int row = 0; row < count; ++row) scaler.Add(rows.data() + static_cast<std::size_t>(row) * stride);
  }
  return scaler.Result();
}

/// How a camera was held: 1 to 8, where 1 is upright.
int OrientationOf(IWICBitmapFrameDecode& frame) {
  const auto reader = Take<IWICMetadataQueryReader>(
      [&](IWICMetadataQueryReader** object) { return frame.GetMetadataQueryReader(object); });
  if (!reader) return 1;
  PROPVARIANT value{};
  int orientation = 1;
  if (SUCCEEDED(reader->GetMetadataByName(L"/app1/ifd/{ushort=274}", &value)) && value.vt == VT_UI2) {
    orientation = value.uiVal;
  }
  PropVariantClear(&value);
  return orientation >= 1 && orientation <= 8 ? orientation : 1;
}

/// The image turned upright: 2 to 4 mirror it, 5 to 8 lay its columns as rows.
Image Upright(const Image& image, int orientation) {
  if (orientation == 1 || image.empty()) return image;
  const bool lies = orientation >= 5;
  Image turned{lies ? image.height : image.width, lies ? image.width : image.height,
               std::vector<std::byte>(image.pixels.size())};
  const bool from_right = orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
  const bool from_bottom = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
  for (int y = 0; y < turned.height; ++y) {
    for (int x = 0; x < turned.width; ++x) {
      const int along = lies ? y : x;
      const int down = lies ? x : y;
      const int from_x = from_right ? image.width - 1 - along : along;
      const int from_y = from_bottom ? image.height - 1 - down : down;
      std::memcpy(turned.pixels.data() + Scaler::Size(turned.width, y) + Scaler::Size(x, 1),
                  image.pixels.data() + Scaler::Size(image.width, from_y) + Scaler::Size(from_x, 1),
                  kBytesPerPixel);
    }
  }
  return turned;
}

Image Decode(IWICImagingFactory& factory, IWICBitmapDecoder& decoder, int most) {
  if (!IsPicture(decoder)) return {};
  const auto frame = Take<IWICBitmapFrameDecode>(
      [&](IWICBitmapFrameDecode** object) { return decoder.GetFrame(0, object); });
  const auto converter = Take<IWICFormatConverter>(
      [&](IWICFormatConverter** object) { return factory.CreateFormatConverter(object); });
  if (!frame || !converter) return {};
  if (FAILED(converter->Initialize(frame.get(), GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone,
                                   nullptr, 0.0, WICBitmapPaletteTypeCustom))) {
    return {};
  }
  return Upright(ReadScaled(*converter, most), OrientationOf(*frame));
}

Com<IWICStream> StreamOf(IWICImagingFactory& factory) {
  return Take<IWICStream>([&](IWICStream** object) { return factory.CreateStream(object); });
}

}  // namespace

Image LoadPicture(const std::wstring& file, int most) {
  const ComScope com;
  const auto factory = Factory();
  if (!factory) return {};
  const auto decoder = Take<IWICBitmapDecoder>([&](IWICBitmapDecoder** object) {
    return factory->CreateDecoderFromFilename(file.c_str(), nullptr, GENERIC_READ,
                                              WICDecodeMetadataCacheOnDemand, object);
  });
  return decoder ? Decode(*factory, *decoder, most) : Image{};
}

Image LoadPicture(std::span<const std::byte> bytes, int most) {
  const ComScope com;
  const auto factory = Factory();
  if (!factory) return {};
  const auto stream = StreamOf(*factory);
  std::vector<BYTE> copy(bytes.size());  // the stream wants to own its right to write
  std::memcpy(copy.data(), bytes.data(), bytes.size());
  if (!stream || FAILED(stream->InitializeFromMemory(copy.data(), static_cast<DWORD>(copy.size()))))
    return {};
  const auto decoder = Take<IWICBitmapDecoder>([&](IWICBitmapDecoder** object) {
    return factory->CreateDecoderFromStream(stream.get(), nullptr, WICDecodeMetadataCacheOnLoad, object);
  });
  return decoder ? Decode(*factory, *decoder, most) : Image{};
}

Image ScaledTo(const Image& image, int width, int height) {
  if (image.empty() || width <= 0 || height <= 0) return {};
  if (width > image.width || height > image.height) return image;
  Scaler scaler(image.width, image.height, width, height);
  for (int y = 0; y < image.height; ++y) scaler.Add(image.pixels.data() + Scaler::Size(image.width, y));
  return scaler.Result();
}

OwnedBitmap BitmapOf(const Image& image) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = image.width;
  info.bmiHeader.biHeight = -image.height;  // top row first
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 8 * kBytesPerPixel;
  void* bits = nullptr;
  OwnedBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (bitmap && bits != nullptr) std::memcpy(bits, image.pixels.data(), image.pixels.size());
  return bitmap;
}

bool SavePng(const Image& image, const std::wstring& file) {
  const ComScope com;
  const auto factory = Factory();
  if (!factory || image.empty()) return false;
  const auto stream = StreamOf(*factory);
  const auto encoder = Take<IWICBitmapEncoder>([&](IWICBitmapEncoder** object) {
    return factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, object);
  });
  if (!stream || !encoder || FAILED(stream->InitializeFromFilename(file.c_str(), GENERIC_WRITE)) ||
      FAILED(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache))) {
    return false;
  }
  const auto frame = Take<IWICBitmapFrameEncode>(
      [&](IWICBitmapFrameEncode** object) { return encoder->CreateNewFrame(object, nullptr); });
  WICPixelFormatGUID format = GUID_WICPixelFormat32bppBGRA;
  const auto width = static_cast<UINT>(image.width);
  const auto height = static_cast<UINT>(image.height);
  if (!frame || FAILED(frame->Initialize(nullptr)) || FAILED(frame->SetSize(width, height)) ||
      FAILED(frame->SetPixelFormat(&format)) || !IsEqualGUID(format, GUID_WICPixelFormat32bppBGRA)) {
    return false;
  }
  std::vector<BYTE> pixels(image.pixels.size());
  std::memcpy(pixels.data(), image.pixels.data(), pixels.size());
  return SUCCEEDED(frame->WritePixels(height, width * kBytesPerPixel, static_cast<UINT>(pixels.size()),
                                      pixels.data())) &&
         SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit());
}

}  // namespace kestro::adapters::win32
