#include <array>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "adapters/posix/posix_file_system.h"
#include "unit/posix/posix_support.h"
#include "unit/support/temporary_folder.h"

namespace kestro {
namespace {

namespace fs = std::filesystem;

class TextLines : public testing::Test {
 protected:
  std::string Read(const char* path, std::size_t most_bytes = 100) const {
    return files_.ReadTextLinesJoined(path, most_bytes);
  }
  std::int32_t ErrorOf(const char* path, std::size_t most_bytes = 100) const {
    return test::ErrorNumberOf([&] { static_cast<void>(Read(path, most_bytes)); });
  }

  test_support::TemporaryFolder folder_;
  adapters::PosixFileSystem files_{adapters::PathMap({adapters::PathMount{"C:", folder_.path()}}), "/opt/x",
                                   ""};
};

TEST_F(TextLines, HaveNothingBetweenThem) {
  const std::pair<std::string, std::string> rows[] = {{"", ""},
                                                      {"\r\n", ""},
                                                      {"a", "a"},
                                                      {"a\nb\n", "ab"},
                                                      {"a\r\n\r\nb", "ab"},
                                                      {"a\rb\n\rc", "abc"},
                                                      {" a \n\tb", " a \tb"},
                                                      {"\xE9\n\xFF", "\xE9\xFF"},
                                                      {std::string("a\0\nb", 4), std::string("a\0b", 3)}};
  for (const auto& [content, joined] : rows) {
    test_support::WriteFile(folder_.File("file"), content);
    EXPECT_EQ(joined, Read("C:\\file"));
  }
}

TEST_F(TextLines, AreReadInBlocksWhateverBecomesOfTheFile) {
  test_support::WriteFile(folder_.File("file"), "one\ntwo");
  const auto reader = files_.OpenForReading("C:\\file");
  fs::remove(folder_.File("file"));
  std::array<char, 5> block{};
  EXPECT_EQ(5U, reader->Read(block));
  EXPECT_EQ("one\nt", std::string_view(block.data(), block.size()));
  EXPECT_EQ(2U, reader->Read(block));
  EXPECT_EQ(0U, reader->Read(block));
  ASSERT_EQ(0, ::mkfifo(folder_.File("reader-pipe").c_str(), 0600));
  for (const auto& [path, error] : {std::pair{"C:\\file", 53}, {"C:\\", 75}, {"C:\\reader-pipe", 75}}) {
    EXPECT_EQ(error, test::ErrorNumberOf([&] { static_cast<void>(files_.OpenForReading(path)); })) << path;
  }
}

TEST_F(TextLines, OfAFileThatCannotBeReadAreAnError) {
  test_support::WriteFile(folder_.File("file"), std::string(100'000, 'x'));
  EXPECT_EQ(100'000U, Read("C:\\file", 100'000).size());
  EXPECT_EQ(7, ErrorOf("C:\\file", 99'999));
  EXPECT_EQ(7, ErrorOf("C:\\file", 0));
  EXPECT_EQ(53, ErrorOf("C:\\missing"));
  EXPECT_EQ(53, ErrorOf("C:\\missing\\file"));
  EXPECT_EQ(75, ErrorOf("C:\\"));
  ASSERT_EQ(0, ::mkfifo(folder_.File("pipe").c_str(), 0600));
  EXPECT_EQ(75, ErrorOf("C:\\pipe"));
  fs::create_symlink("/dev/zero", folder_.File("device"));
  EXPECT_EQ(75, ErrorOf("C:\\device"));
}

}  // namespace
}  // namespace kestro
