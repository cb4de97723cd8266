#include "import/line_reader.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace kestro::import {
namespace {

/// A file that is delivered in small blocks.
class TextInBlocks final : public ports::FileReader {
 public:
  TextInBlocks(std::string text, std::size_t block) : text_(std::move(text)), block_(block) {}
  std::size_t Read(std::span<char> block) override {
    const auto part = text_.substr(position_, std::min(block_, block.size()));
    std::copy(part.begin(), part.end(), block.begin());
    position_ += part.size();
    return part.size();
  }

 private:
  std::string text_;
  std::size_t block_;
  std::size_t position_ = 0;
};

/// The lines; "<too long>" for one that is.
std::vector<std::string> Lines(const std::string& text, std::size_t block) {
  LineReader reader(std::make_unique<TextInBlocks>(text, block));
  std::vector<std::string> lines;
  while (true) {
    switch (reader.Next()) {
      case LineReader::Step::kLine:
        lines.emplace_back(reader.line());
        break;
      case LineReader::Step::kTooLong:
        lines.emplace_back("<too long>");
        break;
      case LineReader::Step::kMore:
        break;
      case LineReader::Step::kEnd:
        EXPECT_EQ(LineReader::Step::kEnd, reader.Next());
        return lines;
    }
  }
}

using Texts = std::vector<std::string>;

TEST(LineReader, EndsLinesInEveryWay) {
  const std::pair<std::string, Texts> cases[] = {
      {"", {}},
      {"a", {"a"}},
      {"a\n", {"a"}},
      {"\n", {""}},
      {"a\r\nb\nc\rd", {"a", "b", "c", "d"}},
      {"a\r\r\nb\n\nc\r\n\r\n", {"a", "", "b", "", "c", ""}},
      {"\n\r", {"", ""}},
      {std::string("a\0b\n", 4), {std::string("a\0b", 3)}},
  };
  for (const auto& [text, lines] : cases) {
    for (const std::size_t block : {1U, 2U, 3U, 100U}) {
      EXPECT_EQ(lines, Lines(text, block)) << testing::PrintToString(text) << " in blocks of " << block;
    }
  }
}

TEST(LineReader, LeavesOutWhatALongLineHolds) {
  const std::string longest(LineReader::kMostLineBytes, 'x');
  constexpr std::size_t kAnyBlock = std::size_t{1} << 20U;
  EXPECT_EQ((Texts{"a", longest, "b"}), Lines("a\n" + longest + "\nb", kAnyBlock));
  EXPECT_EQ((Texts{"a", "<too long>", "b"}), Lines("a\r\n" + longest + "x\r\nb\r\n", kAnyBlock));
  EXPECT_EQ((Texts{"<too long>"}), Lines(longest + longest, kAnyBlock));
}

}  // namespace
}  // namespace kestro::import
