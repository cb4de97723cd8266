#include <array>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "adapters/win32/front_end/image.h"
#include "adapters/win32/front_end/tracks.h"

namespace kestro::front_end_tests {
namespace {

using adapters::win32::Image;
using adapters::win32::LoadPicture;
using adapters::win32::Need;
using adapters::win32::SavePng;
using adapters::win32::ScaledTo;
using adapters::win32::Tracks;

TEST(Win32Tracks, RoomIsSharedOutAsTheElementsNeedIt) {
  constexpr int kGap = 10;
  struct Case {
    const char* name;
    std::vector<Need> needs;
    std::optional<int> growing;
    int length;
    std::vector<int> lengths;  // of the tracks
  };
  const Need first{0, 1, 20, 50, false};
  const Need second{1, 1, 30, 60, false};
  const Need wide{0, 2, 0, 200, false};
  const Case cases[] = {
      {"as wanted", {first, second}, {}, 120, {50, 60}},
      {"what is left over stays so", {first, second}, {}, 200, {50, 60}},
      {"the growing one takes it", {{0, 1, 20, 50, true}, second}, 1, 200, {50, 140}},
      {"those that like to grow", {{0, 1, 20, 50, true}, {1, 1, 30, 60, true}}, {}, 200, {90, 100}},
      {"an empty one grows", {first, {2, 1, 30, 60, false}}, 1, 200, {50, 80, 60}},
      {"too short", {first, {1, 1, 30, 90, false}}, {}, 120, {40, 70}},
      {"never below the least", {first, second}, {}, 10, {20, 30}},
      {"a wide element", {first, second, wide}, {}, 200, {90, 100}},
      {"a wide element over a growing one", {first, second, wide}, 1, 200, {50, 140}},
  };
  for (const Case& test : cases) {
    Tracks tracks(test.needs, kGap, test.growing);
    tracks.Fill(test.length);
    for (std::size_t i = 0; i < test.lengths.size(); ++i) {
      EXPECT_EQ(tracks.PlaceOf(static_cast<int>(i), 1).length, test.lengths[i]) << test.name << " " << i;
    }
  }
}

/// A bitmap file without compression, all pixels alike.
std::string BitmapFile(std::uint32_t width, std::uint32_t height, std::size_t bytes_of_pixels) {
  std::string file = "BM";
  const auto number = [&file](std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) file += static_cast<char>(value >> shift & 0xFF);
  };
  for (const std::uint32_t value : {54U + static_cast<std::uint32_t>(bytes_of_pixels), 0U, 54U, 40U, width,
                                    height, 1U | 32U << 16, 0U, 0U, 0U, 0U, 0U, 0U}) {
    number(value);
  }
  for (std::size_t i = 0; i < bytes_of_pixels / 4; ++i) file += std::string("\x10\x20\x30\xFF", 4);
  return file;
}

std::wstring Write(const char* name, const std::string& bytes) {
  const auto path = std::filesystem::temp_directory_path() / name;
  std::ofstream(path, std::ios::binary) << bytes;
  return path.wstring();
}

TEST(Win32Images, OnlyPicturesOfASaneSizeAreShown) {
  const Image small = LoadPicture(Write("small.bmp", BitmapFile(40, 20, 40 * 20 * 4)), 100);
  EXPECT_EQ(small.width, 40);
  EXPECT_EQ(small.height, 20);
  const Image scaled = LoadPicture(Write("wide.bmp", BitmapFile(400, 200, 400 * 200 * 4)), 100);
  EXPECT_EQ(scaled.width, 100);
  EXPECT_EQ(scaled.height, 50);
  EXPECT_EQ(scaled.pixels.at(0), std::byte{0x10});
  EXPECT_EQ(scaled.pixels.back(), std::byte{0xFF});
  EXPECT_TRUE(LoadPicture(Write("huge.bmp", BitmapFile(8001, 8000, 64)), 100).empty()) << "64 megapixels";
  EXPECT_TRUE(LoadPicture(Write("text.bmp", "no picture at all"), 100).empty());
  EXPECT_TRUE(LoadPicture(L"missing.bmp", 100).empty());
}

TEST(Win32Images, EveryPixelIsTheMeanOfThoseItStandsFor) {
  Image checks{4, 2, std::vector<std::byte>(32)};
  for (std::size_t i = 0; i < 8; i += 2) {
    for (std::size_t part = 0; part < 4; ++part) checks.pixels[i * 4 + part] = std::byte{200};
  }
  const Image half = ScaledTo(checks, 2, 1);
  ASSERT_EQ(half.pixels.size(), 8U);
  for (const std::byte part : half.pixels) EXPECT_EQ(part, std::byte{100});
  EXPECT_EQ(ScaledTo(checks, 9, 9).width, 4) << "nothing is made larger";
  const Image thirds = ScaledTo(checks, 3, 1);
  EXPECT_EQ(thirds.width, 3);
  EXPECT_EQ(thirds.pixels.at(0), std::byte{100}) << "two columns: one of each";
}

TEST(Win32Images, APngIsReadBackAsItWas) {
  Image image{3, 2, std::vector<std::byte>(24, std::byte{0xFF})};
  image.pixels[4] = std::byte{0x12};
  const std::wstring file = Write("saved.png", "");
  ASSERT_TRUE(SavePng(image, file));
  EXPECT_EQ(LoadPicture(file, 100).pixels, image.pixels);
  EXPECT_FALSE(SavePng(image, L"Z:\\no such folder\\saved.png"));
}

}  // namespace
}  // namespace kestro::front_end_tests
