#include "adapters/posix/posix_file_system.h"

#include <array>
#include <functional>
#include <sys/stat.h>
#include <tuple>

#include <gtest/gtest.h>

#include "adapters/posix/path_map.h"
#include "adapters/posix/posix_growing_file.h"
#include "adapters/posix/settings_file.h"
#include "adapters/posix/user_folders.h"
#include "unit/posix/posix_support.h"

namespace kestro {
namespace {

namespace fs = std::filesystem;
using adapters::PathMap;
using test::ErrorNumberOf;
using test::Permissions;
using test_support::ReadFile;
using test_support::WriteFile;

class PosixFileSystem : public testing::Test {
 protected:
  std::int32_t Copy(const char* from, const char* to, bool overwrite = false) {
    return ErrorNumberOf([&] { files_.CopyFileTo(from, to, overwrite); });
  }
  std::string Read(const char* path, std::size_t most_bytes = 100) const {
    return files_.ReadTextLinesJoined(path, most_bytes);
  }

  test_support::TemporaryFolder folder_;
  const PathMap map_{{adapters::PathMount{"C:", folder_.path()}}};
  adapters::PosixFileSystem files_{map_, folder_.path() / "Program/", folder_.path() / "Data"};
  const fs::path native_ = folder_.File("file");  // C:\file, as the system names it
};

TEST_F(PosixFileSystem, TellsFilesFromFolders) {
  WriteFile(folder_.File("a"), "1");
  files_.CreateFolder("C:\\new");
  EXPECT_EQ(0700, Permissions(folder_.File("new")));
  EXPECT_TRUE(files_.FileExists("C:\\a"));
  EXPECT_FALSE(files_.FolderExists("C:\\a"));
  EXPECT_FALSE(files_.FileExists("C:\\new"));
  EXPECT_TRUE(files_.FolderExists("C:\\new"));
  EXPECT_FALSE(files_.FileExists("C:\\missing"));
  EXPECT_FALSE(files_.FileExists("X:\\a")) << "a drive that is not there";
  EXPECT_EQ(58, ErrorNumberOf([&] { files_.CreateFolder("C:\\new"); }));
  EXPECT_EQ(76, ErrorNumberOf([&] { files_.CreateFolder("C:\\missing\\new"); }));
  EXPECT_EQ(76, ErrorNumberOf([&] { files_.CreateFolder("C:\\a\\new"); }));
  EXPECT_EQ("C:\\Program", files_.ProgramFolder());
  EXPECT_EQ("C:\\Data", files_.UserDataFolder());
  const adapters::PosixFileSystem homeless({}, "/opt/x", "");
  EXPECT_EQ(76, ErrorNumberOf([&] { return homeless.UserDataFolder(); }));
}

TEST_F(PosixFileSystem, ReadOnlyIsWhatTheOwnerMayNotWrite) {
  WriteFile(folder_.File("a"), "1");
  EXPECT_EQ(0, files_.FileAttributes("C:\\a"));
  fs::permissions(folder_.File("a"), fs::perms(0466));
  EXPECT_EQ(1, files_.FileAttributes("C:\\a"));
  EXPECT_EQ(16, files_.FileAttributes("C:\\"));
  EXPECT_EQ(53, ErrorNumberOf([&] { return files_.FileAttributes("C:\\missing"); }));
}

TEST_F(PosixFileSystem, CopiesForTheUserAlone) {
  const std::string content(200'000, 'x');
  WriteFile(folder_.File("template"), content);
  fs::permissions(folder_.File("template"), fs::perms(0444));
  const test::ScopedUmask open(0);
  EXPECT_EQ(0, Copy("C:\\template", "C:\\copy"));
  EXPECT_EQ(content, ReadFile(folder_.File("copy")));
  EXPECT_EQ(0600, Permissions(folder_.File("copy")));
  EXPECT_EQ(2, folder_.FileCount());
}

TEST_F(PosixFileSystem, ACopyThatFailsChangesNothingAndLeavesNothing) {
  WriteFile(folder_.File("a"), "new");
  WriteFile(folder_.File("b"), "old");
  WriteFile(folder_.File("protected"), "old");
  fs::permissions(folder_.File("protected"), fs::perms(0400));
  fs::create_directory(folder_.File("folder"));
  ASSERT_EQ(0, ::mkfifo(folder_.File("pipe").c_str(), 0600));
  EXPECT_EQ(53, Copy("C:\\missing", "C:\\c"));
  EXPECT_EQ(58, Copy("C:\\a", "C:\\b"));
  EXPECT_EQ(76, Copy("C:\\a", "C:\\missing\\c"));
  EXPECT_EQ(75, Copy("C:\\a", "C:\\protected", true));
  EXPECT_EQ(75, Copy("C:\\a", "C:\\folder", true));
  EXPECT_EQ(75, Copy("C:\\folder", "C:\\c"));
  EXPECT_EQ(75, Copy("C:\\pipe", "C:\\c"));
  EXPECT_EQ("old", ReadFile(folder_.File("b")));
  EXPECT_EQ("old", ReadFile(folder_.File("protected")));
  EXPECT_EQ(5, folder_.FileCount());
  EXPECT_EQ(0, Copy("C:\\a", "C:\\b", true));
  EXPECT_EQ("new", ReadFile(folder_.File("b")));
}

TEST_F(PosixFileSystem, ACopyThatRunsOutOfSpaceLeavesTheOldFile) {
  WriteFile(folder_.File("a"), std::string(100'000, 'x'));
  WriteFile(folder_.File("b"), "old");
  {
    const test::ScopedFileLimit limit(70'000);
    EXPECT_EQ(75, Copy("C:\\a", "C:\\b", true));
  }
  EXPECT_EQ("old", ReadFile(folder_.File("b")));
  EXPECT_EQ(2, folder_.FileCount());
}

TEST_F(PosixFileSystem, LinesHaveNothingBetweenThem) {
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
    WriteFile(native_, content);
    EXPECT_EQ(joined, Read("C:\\file"));
  }
}

TEST_F(PosixFileSystem, AFileIsReadInBlocksWhateverBecomesOfIt) {
  WriteFile(native_, "one\ntwo");
  const auto reader = files_.OpenForReading("C:\\file");
  fs::remove(native_);
  std::array<char, 5> block{};
  EXPECT_EQ(5U, reader->Read(block));
  EXPECT_EQ("one\nt", std::string_view(block.data(), block.size()));
  EXPECT_EQ(2U, reader->Read(block));
  EXPECT_EQ(0U, reader->Read(block));
  ASSERT_EQ(0, ::mkfifo(folder_.File("reader-pipe").c_str(), 0600));
  for (const auto& [path, error] : {std::pair{"C:\\file", 53}, {"C:\\", 75}, {"C:\\reader-pipe", 75}}) {
    EXPECT_EQ(error, ErrorNumberOf([&, name = path] { return files_.OpenForReading(name); })) << path;
  }
}

TEST_F(PosixFileSystem, LinesOfAFileThatCannotBeReadAreAnError) {
  WriteFile(native_, std::string(100'000, 'x'));
  EXPECT_EQ(100'000U, Read("C:\\file", 100'000).size());
  ASSERT_EQ(0, ::mkfifo(folder_.File("pipe").c_str(), 0600));
  fs::create_symlink("/dev/zero", folder_.File("device"));
  const std::tuple<const char*, std::size_t, std::int32_t> rows[] = {
      {"C:\\file", 99'999, 7},        {"C:\\file", 0, 7}, {"C:\\missing", 100, 53},
      {"C:\\missing\\file", 100, 53}, {"C:\\", 100, 75},  {"C:\\pipe", 100, 75},
      {"C:\\device", 100, 75}};
  for (const auto& [path, most_bytes, error] : rows) {
    EXPECT_EQ(error, ErrorNumberOf([&, path = path, most = most_bytes] { return Read(path, most); })) << path;
  }
}

class PosixGrowingFile : public PosixFileSystem {
 protected:
  const std::string path_ = "C:\\file";
  adapters::PosixGrowingFile file_{map_};
};

TEST_F(PosixGrowingFile, IsTheUsersAlone) {
  const test::ScopedUmask open(0);
  EXPECT_EQ(0U, file_.Open(path_));
  file_.Append("new\n");
  EXPECT_EQ(0600, Permissions(native_));
  ASSERT_EQ(0, ::chmod(native_.c_str(), 0644));
  EXPECT_EQ(4U, file_.Open(path_));
  EXPECT_EQ(0600, Permissions(native_));
  file_.Append("tightened\n");
  EXPECT_EQ("new\ntightened\n", ReadFile(native_));
  file_.MakeFolder("C:\\a\\b");
  file_.MakeFolder("C:\\a\\b");
  EXPECT_EQ(0700, Permissions(folder_.File("a")));
  EXPECT_EQ(0700, Permissions(folder_.File("a/b")));
}

TEST_F(PosixGrowingFile, ATrapInItsPlaceIsRefused) {
  const auto victim = folder_.File("victim");
  WriteFile(victim, "precious");
  const std::pair<const char*, std::function<void()>> rows[] = {
      {"symbolic link", [&] { fs::create_symlink(victim, native_); }},
      {"dangling link", [&] { fs::create_symlink(folder_.File("made"), native_); }},
      {"second name", [&] { fs::create_hard_link(victim, native_); }},
      {"pipe", [&] { ::mkfifo(native_.c_str(), 0600); }},
      {"folder", [&] { fs::create_directory(native_); }}};
  for (const auto& [name, set_trap] : rows) {
    fs::remove_all(native_);
    set_trap();
    EXPECT_EQ(75, ErrorNumberOf([&] { file_.Open(path_); })) << name;
  }
  EXPECT_FALSE(fs::exists(folder_.File("made")));
  EXPECT_EQ(76, ErrorNumberOf([&] { file_.Open("C:\\missing\\file"); }));
}

TEST_F(PosixGrowingFile, TakesAnotherName) {
  WriteFile(folder_.File("file.1"), "old");
  file_.Open(path_);
  file_.Append("one\n");
  file_.Close();
  file_.Rename(path_, "C:\\file.1");
  file_.Rename("C:\\missing", "C:\\file.1");
  EXPECT_EQ("one\n", ReadFile(folder_.File("file.1")));
  EXPECT_FALSE(fs::exists(native_));
  fs::create_directories(folder_.File("taken/x"));
  EXPECT_EQ(75, ErrorNumberOf([&] { file_.Rename("C:\\file.1", "C:\\taken"); }));
}

TEST_F(PosixGrowingFile, AFullDiskLeavesWholeLines) {
  file_.Open(path_);
  file_.Append("line\n");
  {
    const test::ScopedFileLimit limit(8);
    EXPECT_EQ(75, ErrorNumberOf([&] { file_.Append("more\n"); }));
  }
  EXPECT_EQ("line\n", ReadFile(native_));
  file_.Append("more\n");
  EXPECT_EQ("line\nmore\n", ReadFile(native_));
}

TEST(UserFolders, FollowTheEnvironmentUnlessItIsRelative) {
  const test::ScopedEnvironment home("HOME", "/home/u/");
  const test::ScopedEnvironment configuration("XDG_CONFIG_HOME", "/etc/u/");
  const test::ScopedEnvironment data("XDG_DATA_HOME", nullptr);
  const test::ScopedEnvironment state("XDG_STATE_HOME", "relative");
  EXPECT_EQ("/etc/u/kestro-cti/settings.conf", adapters::SettingsFilePath());
  EXPECT_EQ("/home/u/.local/share", adapters::UserDataHome());
  EXPECT_EQ("/home/u/.local/state", adapters::UserStateHome());
  const test::ScopedEnvironment no_configuration("XDG_CONFIG_HOME", nullptr);
  const test::ScopedEnvironment own_data("XDG_DATA_HOME", "/data");
  EXPECT_EQ("/home/u/.config/kestro-cti/settings.conf", adapters::SettingsFilePath());
  EXPECT_EQ("/data", adapters::UserDataHome());
}

TEST(PathMap, TranslatesBothWays) {
  const PathMap map({{"C:\\", "/mnt/c"}, {"C:\\Data", "/tmp/x/data/"}, {"D:", "/"}});
  const std::pair<const char*, const char*> rows[] = {
      {"\\", "/"},
      {R"(\home\u\CTIDB.mdb)", "/home/u/CTIDB.mdb"},
      {"picture.jpg", "picture.jpg"},
      {"Icons\\idle.ico", "Icons/idle.ico"},
      {"", ""},
      {"C:", "/mnt/c"},
      {"C:\\Program\\Icons", "/mnt/c/Program/Icons"},
      {"C:\\Data", "/tmp/x/data"},
      {"C:\\Data\\CTIDB.mdb", "/tmp/x/data/CTIDB.mdb"},
      {"C:\\Database", "/mnt/c/Database"},
      {"C:\\data\\a", "/mnt/c/data/a"},
      {"C:\\Data\\P\xC5\x99\xC3\xADklad", "/tmp/x/data/P\xC5\x99\xC3\xADklad"}};
  for (const auto& [system, native] : rows) EXPECT_EQ(native, map.ToNative(system)) << system;
  for (const auto& [system, native] : rows) {
    if (*native == '/' && *system == '\\') continue;  // the native root is D: here
    EXPECT_EQ(system, map.ToSystem(native)) << native;
  }
  EXPECT_EQ("D:\\etc", map.ToSystem("/etc"));
  EXPECT_EQ("\\etc", PathMap().ToSystem("/etc"));
  EXPECT_EQ("/mnt/c/a/b", map.ToNative("C:/a\\b")) << "a native separator counts as one";
}

TEST(PathMap, RefusesWhatHasNoCounterpart) {
  const PathMap map({adapters::PathMount{"C:\\Data", "/tmp/x/data"}});
  const std::string zero("C:\\Data\\a\0b", 11);
  for (const std::string_view path :
       {std::string_view(R"(C:\Data\..)"), std::string_view(R"(C:\Data\a\..\..\b)"),
        std::string_view(R"(C:\Data\../b)"), std::string_view(R"(C:\Data\..\Data\a)"),
        std::string_view("D:\\x"), std::string_view("C:\\Database"), std::string_view(zero)}) {
    EXPECT_EQ(76, ErrorNumberOf([&] { return map.ToNative(path); })) << path;
  }
  EXPECT_EQ("/tmp/x/data/a/../b", map.ToNative("C:\\Data\\a\\..\\b"));
  EXPECT_EQ("/a/../../b", map.ToNative("\\a\\..\\..\\b"));
  EXPECT_EQ(76, ErrorNumberOf([&] { return map.ToSystem("/home/a\\b"); }));
}

}  // namespace
}  // namespace kestro
