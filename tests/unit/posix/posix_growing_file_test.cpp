#include "adapters/posix/posix_growing_file.h"

#include <csignal>
#include <functional>
#include <sys/resource.h>

#include <gtest/gtest.h>

#include "unit/posix/posix_support.h"
#include "unit/support/temporary_folder.h"

namespace kestro {
namespace {

namespace fs = std::filesystem;
using test::ErrorNumberOf;
using test::Permissions;
using test_support::ReadFile;
using test_support::WriteFile;

class PosixGrowingFile : public testing::Test {
 protected:
  test_support::TemporaryFolder folder_;
  const std::string path_ = "C:\\file";
  const fs::path native_ = folder_.File("file");
  adapters::PosixGrowingFile file_{adapters::PathMap({adapters::PathMount{"C:", folder_.path()}})};
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
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ASSERT_EQ(0, ::getrlimit(RLIMIT_FSIZE, &before));
  file_.Open(path_);
  file_.Append("line\n");
  const rlimit small{8, before.rlim_max};
  ASSERT_EQ(0, ::setrlimit(RLIMIT_FSIZE, &small));
  const auto error = ErrorNumberOf([&] { file_.Append("more\n"); });
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, SIG_DFL);
  EXPECT_EQ(75, error);
  EXPECT_EQ("line\n", ReadFile(native_));
  file_.Append("more\n");
  EXPECT_EQ("line\nmore\n", ReadFile(native_));
}

}  // namespace
}  // namespace kestro
