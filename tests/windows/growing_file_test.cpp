#include <filesystem>

#include <gtest/gtest.h>

#include "adapters/win32/win32_file_system.h"
#include "adapters/win32/win32_growing_file.h"
#include "base/runtime_error.h"
#include "support/error_number.h"

namespace kestro::adapters {
namespace {

namespace fs = std::filesystem;

TEST(Win32GrowingFile, GrowsIsRenamedAndRefusesWhatIsNoFile) {
  const fs::path folder = fs::temp_directory_path() / "kestro-growing-file";
  fs::remove_all(folder);
  const std::string place = folder.string() + "\\\xC5\xBDlu\xC5\xA5";
  const std::string path = place + "\\file";
  const Win32FileSystem files("", "");
  Win32GrowingFile file;
  file.MakeFolder(folder.string());
  file.MakeFolder(place);
  file.MakeFolder(place);
  EXPECT_EQ(file.Open(path), 0U);
  file.Append("one\r\n");
  EXPECT_EQ(files.ReadStart(path, 9), "one\r\n") << "others may read it";
  EXPECT_EQ(file.Open(path), 5U);
  file.Append("two\r\n");
  EXPECT_EQ(test::ErrorNumberOf([&] { file.Rename(path, path + ".1"); }), base::kPathAccessError)
      << "it is open";
  for (int i = 0; i < 2; ++i) {
    file.Close();
    file.Rename(path, path + ".1");
    file.Rename(path, path + ".1");  // there is none
    EXPECT_EQ(files.ReadStart(path + ".1", 99), i == 0 ? "one\r\ntwo\r\n" : "new");
    EXPECT_EQ(file.Open(path), 0U);
    file.Append("new");
  }
  EXPECT_EQ(test::ErrorNumberOf([&] { file.Open(place); }), base::kPathAccessError);
  EXPECT_EQ(test::ErrorNumberOf([&] { file.Open(path + "\\none\\file"); }), base::kPathNotFound);
  fs::remove_all(folder);
}

}  // namespace
}  // namespace kestro::adapters
