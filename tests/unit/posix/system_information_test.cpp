#include "adapters/posix/system_information.h"

#include <gtest/gtest.h>

#include "unit/posix/posix_support.h"
#include "unit/support/temporary_folder.h"

namespace kestro {
namespace {

using test::ScopedEnvironment;

TEST(PosixSystemInformation, NamesTheSystemAndTheDesktop) {
  const ScopedEnvironment desktop("XDG_CURRENT_DESKTOP", "GNOME");
  const ScopedEnvironment session("XDG_SESSION_TYPE", "wayland");
  const test_support::TemporaryFolder folder;
  const struct {
    const char* file;
    const char* name;
  } cases[] = {
      {"NAME=x\nPRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n", "Debian GNU/Linux 12 (bookworm), Linux "},
      {"PRETTY_NAME=Plain", "Plain, Linux "},
      {"PRETTY_NAME='Single'\nPRETTY_NAME=Second\n", "Single, Linux "},
      {"PRETTY_NAME=\"\n", "\", Linux "},
      {"PRETTY_NAME=\"a\x1b[31m\"\n", "Linux "},
      {"PRETTY_NAME=\xff\xfe\n", "Linux "},
      {"PRETTY_NAME=", "Linux "},
      {"", "Linux "},
  };
  for (const auto& entry : cases) {
    test_support::WriteFile(folder.File("os-release"), entry.file);
    const auto information =
        adapters::PosixSystemInformation("Qt 1", "SQLite 2", folder.File("os-release").string()).Read();
    EXPECT_EQ("Qt 1", information.toolkit);
    EXPECT_EQ("SQLite 2", information.database_engine);
    EXPECT_TRUE(information.system.starts_with(entry.name)) << information.system;
    EXPECT_EQ("GNOME, wayland", information.desktop);
  }
}

TEST(PosixSystemInformation, LeavesOutWhatIsNotKnown) {
  const ScopedEnvironment desktop("XDG_CURRENT_DESKTOP", nullptr);
  const ScopedEnvironment session("XDG_SESSION_TYPE", nullptr);
  const auto information = adapters::PosixSystemInformation("", "", "/no/such/file").Read();
  EXPECT_TRUE(information.system.starts_with("Linux "));
  EXPECT_EQ("", information.desktop);
}

}  // namespace
}  // namespace kestro
