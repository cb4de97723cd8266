#include "core/picture_size.h"

#include <string>

#include <gtest/gtest.h>

namespace kestro::core {
namespace {

using namespace std::string_literals;

std::string Png(const std::string& size) { return "\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR"s + size; }
std::string Bitmap(const std::string& size) { return "BM"s + std::string(16, '\0') + size; }

TEST(PictureSizeTest, EveryKindTellsItsSize) {
  // All are 258 pixels wide and 3 high; the second bitmap goes from the top down.
  for (const std::string& start :
       {Png("\0\0\x01\x02\0\0\0\x03"s), "GIF87a\x02\x01\x03\x00"s, "GIF89a\x02\x01\x03\x00"s,
        Bitmap("\x02\x01\0\0\x03\0\0\0"s), Bitmap("\x02\x01\0\0\xFD\xFF\xFF\xFF"s),
        "\xFF\xD8\xFF\xE0\x00\x04xx\xFF\xC4\x00\x03x\xFF\xFF\xC2\x00\x11\x08\x00\x03\x01\x02"s}) {
    const auto size = ReadPictureSize(start);
    ASSERT_TRUE(size) << start;
    EXPECT_EQ(size->width, 0x102U);
    EXPECT_EQ(size->height, 3U);
    for (std::size_t length = 0; length < start.size(); ++length) {
      EXPECT_FALSE(ReadPictureSize(start.substr(0, length))) << length;
    }
  }
}

TEST(PictureSizeTest, AFrameIsTheOnlySegmentWithASize) {
  for (int marker = 0xBF; marker <= 0xD0; ++marker) {
    const bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    const auto picture =
        "\xFF\xD8\xFF\xE0\x00\x02\xFF"s + static_cast<char>(marker) + "\x00\x11\x08\x00\x03\x01\x02"s;
    EXPECT_EQ(ReadPictureSize(picture).has_value(), frame) << marker;
  }
}

TEST(PictureSizeTest, RefusesWhatCannotBeShown) {
  EXPECT_TRUE(IsShowablePicture(Png("\0\0\0\x01\0\0\0\x01"s)));
  EXPECT_TRUE(IsShowablePicture(Png("\0\0\x1F\x40\0\0\x1F\x40"s)));   // 8000 x 8000
  EXPECT_FALSE(IsShowablePicture(Png("\0\0\x1F\x41\0\0\x1F\x40"s)));  // one column more
  EXPECT_FALSE(IsShowablePicture(Png("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s)));
  EXPECT_FALSE(IsShowablePicture(Png("\0\0\0\0\0\0\0\x01"s)));
  for (const auto& start : {""s, "not a picture"s, "\xFF\xD8\xFF\xE0\x00\x01"s, "\xFF\xD8\x00\x00\x00\x00"s,
                            "\xFF\xD8"s + std::string(100, '\xFF')}) {
    EXPECT_FALSE(IsShowablePicture(start)) << start;
  }
}

}  // namespace
}  // namespace kestro::core
