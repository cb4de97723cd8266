#include "adapters/posix/runtime_folder.h"

#include <unistd.h>

#include <gtest/gtest.h>

#include "unit/posix/posix_support.h"
#include "unit/support/temporary_folder.h"

namespace kestro {
namespace {

namespace fs = std::filesystem;
using adapters::RuntimeFolder;
using test::ErrorNumberOf;
using test::ScopedEnvironment;

TEST(RuntimeFolder, LiesInTheSessionOrElseInTheTemporaryDirectory) {
  const test_support::TemporaryFolder folder;
  const std::string root = folder.path();
  const std::string in_temporary = root + "/kestro-cti-" + std::to_string(::geteuid());
  const ScopedEnvironment temporary("TMPDIR", root.c_str());
  {
    const ScopedEnvironment session("XDG_RUNTIME_DIR", root.c_str());
    EXPECT_EQ(root + "/kestro-cti", RuntimeFolder().path());
  }
  for (const char* const value : {static_cast<const char*>(nullptr), "relative", "/no/such/folder"}) {
    const ScopedEnvironment session("XDG_RUNTIME_DIR", value);
    EXPECT_EQ(in_temporary, RuntimeFolder().path());
  }
}

TEST(RuntimeFolder, IsTheUsersAloneOrRefused) {
  const test_support::TemporaryFolder folder;
  const RuntimeFolder runtime(folder.File("run"));
  EXPECT_FALSE(runtime.Exists());
  const test::ScopedUmask open(0);
  runtime.Prepare();
  EXPECT_EQ(0700, test::Permissions(runtime.path()));
  EXPECT_NO_THROW(runtime.Prepare());
  EXPECT_TRUE(runtime.Exists());

  fs::permissions(runtime.path(), fs::perms(0750));
  EXPECT_EQ(75, ErrorNumberOf([&] { runtime.Prepare(); }));
  fs::permissions(runtime.path(), fs::perms(0700));
  fs::create_directory_symlink(runtime.path(), folder.File("link"));
  EXPECT_EQ(75, ErrorNumberOf([&] { RuntimeFolder(folder.File("link")).Prepare(); }));
  test_support::WriteFile(folder.File("file"), "");
  EXPECT_EQ(75, ErrorNumberOf([&] { RuntimeFolder(folder.File("file")).Prepare(); }));
  if (::geteuid() != 0) return;  // only root can give a folder away
  ASSERT_EQ(0, ::chown(runtime.path().c_str(), 12345, 12345));
  EXPECT_EQ(75, ErrorNumberOf([&] { runtime.Prepare(); }));
}

}  // namespace
}  // namespace kestro
