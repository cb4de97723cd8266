#include "adapters/posix/posix_file_system.h"

#include <csignal>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "adapters/posix/user_folders.h"
#include "unit/posix/posix_support.h"
#include "unit/support/temporary_folder.h"

namespace kestro {
namespace {

namespace fs = std::filesystem;
using test::ErrorNumberOf;
using test::Permissions;
using test_support::ReadFile;
using test_support::WriteFile;

class PosixFileSystem : public testing::Test {
 protected:
  std::ptrdiff_t FileCount() const {
    return std::distance(fs::directory_iterator(folder_.path()), fs::directory_iterator());
  }
  std::int32_t Copy(const char* from, const char* to, bool overwrite = false) {
    return ErrorNumberOf([&] { files_.CopyFileTo(from, to, overwrite); });
  }

  test_support::TemporaryFolder folder_;
  adapters::PosixFileSystem files_{adapters::PathMap({adapters::PathMount{"C:", folder_.path()}}),
                                   folder_.path() / "Program/", folder_.path() / "Data"};
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
  EXPECT_EQ(76, ErrorNumberOf([&] { static_cast<void>(homeless.UserDataFolder()); }));
}

TEST_F(PosixFileSystem, ReadOnlyIsWhatTheOwnerMayNotWrite) {
  WriteFile(folder_.File("a"), "1");
  EXPECT_EQ(0, files_.FileAttributes("C:\\a"));
  fs::permissions(folder_.File("a"), fs::perms(0466));
  EXPECT_EQ(1, files_.FileAttributes("C:\\a"));
  EXPECT_EQ(16, files_.FileAttributes("C:\\"));
  EXPECT_EQ(53, ErrorNumberOf([&] { static_cast<void>(files_.FileAttributes("C:\\missing")); }));
}

TEST_F(PosixFileSystem, CopiesForTheUserAlone) {
  const std::string content(200'000, 'x');
  WriteFile(folder_.File("template"), content);
  fs::permissions(folder_.File("template"), fs::perms(0444));
  const test::ScopedUmask open(0);
  EXPECT_EQ(0, Copy("C:\\template", "C:\\copy"));
  EXPECT_EQ(content, ReadFile(folder_.File("copy")));
  EXPECT_EQ(0600, Permissions(folder_.File("copy")));
  EXPECT_EQ(2, FileCount());
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
  EXPECT_EQ(5, FileCount());
  EXPECT_EQ(0, Copy("C:\\a", "C:\\b", true));
  EXPECT_EQ("new", ReadFile(folder_.File("b")));
}

TEST_F(PosixFileSystem, ACopyThatRunsOutOfSpaceLeavesTheOldFile) {
  WriteFile(folder_.File("a"), std::string(100'000, 'x'));
  WriteFile(folder_.File("b"), "old");
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ASSERT_EQ(0, ::getrlimit(RLIMIT_FSIZE, &before));
  const rlimit small{70'000, before.rlim_max};
  ASSERT_EQ(0, ::setrlimit(RLIMIT_FSIZE, &small));
  const std::int32_t result = Copy("C:\\a", "C:\\b", true);
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, SIG_DFL);
  EXPECT_EQ(75, result);
  EXPECT_EQ("old", ReadFile(folder_.File("b")));
  EXPECT_EQ(2, FileCount());
}

TEST(UserFolders, FollowTheEnvironmentUnlessItIsRelative) {
  const test::ScopedEnvironment home("HOME", "/home/u/");
  const test::ScopedEnvironment data("XDG_DATA_HOME", "/data");
  const test::ScopedEnvironment state("XDG_STATE_HOME", "relative");
  EXPECT_EQ("/data", adapters::UserDataHome());
  EXPECT_EQ("/home/u/.local/state", adapters::UserStateHome());
  const test::ScopedEnvironment no_data("XDG_DATA_HOME", nullptr);
  EXPECT_EQ("/home/u/.local/share", adapters::UserDataHome());
}

}  // namespace
}  // namespace kestro
