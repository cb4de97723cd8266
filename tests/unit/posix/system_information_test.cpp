#include "adapters/posix/system_information.h"

#include <array>

#include <gtest/gtest.h>

#include "adapters/posix/posix_shell_information.h"
#include "unit/posix/posix_support.h"

namespace kestro {
namespace {

using test::ScopedEnvironment;

TEST(PosixSystemInformation, NamesTheSystemAndTheDesktop) {
  const ScopedEnvironment desktop("XDG_CURRENT_DESKTOP", "GNOME");
  const ScopedEnvironment session("XDG_SESSION_TYPE", "wayland");
  const test_support::TemporaryFolder folder;
  const std::pair<const char*, std::vector<std::string_view>> cases[] = {
      {"Debian GNU/Linux 12 (bookworm), Linux ",
       {"NAME=x\nPRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n"}},
      {"Plain, Linux ", {"PRETTY_NAME=Plain"}},
      {"Single, Linux ", {"PRETTY_NAME='Single'\nPRETTY_NAME=Second\n"}},
      {"\", Linux ", {"PRETTY_NAME=\"\n"}},
      {"Linux ", {"PRETTY_NAME=\"a\x1b[31m\"\n", "PRETTY_NAME=\xff\xfe\n", "PRETTY_NAME=", ""}}};
  for (const auto& [name, files] : cases) {
    for (const auto file : files) {
      test_support::WriteFile(folder.File("os-release"), file);
      const auto information =
          adapters::PosixSystemInformation("Qt 1", "SQLite 2", folder.File("os-release").string()).Read();
      EXPECT_EQ("Qt 1", information.toolkit);
      EXPECT_EQ("SQLite 2", information.database_engine);
      EXPECT_TRUE(information.system.starts_with(name)) << information.system;
      EXPECT_EQ("GNOME, wayland", information.desktop);
    }
  }
}

TEST(PosixSystemInformation, LeavesOutWhatIsNotKnown) {
  const ScopedEnvironment desktop("XDG_CURRENT_DESKTOP", nullptr);
  const ScopedEnvironment session("XDG_SESSION_TYPE", nullptr);
  const auto information = adapters::PosixSystemInformation("", "", "/no/such/file").Read();
  EXPECT_TRUE(information.system.starts_with("Linux "));
  EXPECT_EQ("", information.desktop);
}

TEST(PosixShellInformation, AnswersTheVersionQueriesAsTheCallersAskThem) {
  adapters::PosixShellInformation shell(true);
  const std::int32_t size = shell.FileVersionInfoSize("shell32.dll");
  ASSERT_GT(size, 0);
  std::vector<std::uint8_t> block(static_cast<std::size_t>(size));
  EXPECT_EQ(std::nullopt, shell.QueryRootBlock(block)) << "the block is still empty";
  ASSERT_TRUE(shell.FileVersionInfo("shell32.dll", block));
  EXPECT_EQ(6U, *shell.QueryRootBlock(block) >> 16U);
  EXPECT_EQ(0x0105U, shell.GetVersionWord());
  EXPECT_EQ(0x0004U, adapters::PosixShellInformation(false).GetVersionWord());
  std::array<std::uint8_t, 7> small{};
  EXPECT_EQ(0, shell.FileVersionInfoSize("user32.dll"));
  EXPECT_FALSE(shell.FileVersionInfo("shell32.dll", small));
  EXPECT_EQ(std::nullopt, shell.QueryRootBlock(small));
}

}  // namespace
}  // namespace kestro
