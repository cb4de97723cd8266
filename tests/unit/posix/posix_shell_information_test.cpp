#include "adapters/posix/posix_shell_information.h"

#include <array>

#include <gtest/gtest.h>

namespace kestro {
namespace {

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
}

TEST(PosixShellInformation, RefusesOtherFilesAndSmallBuffers) {
  adapters::PosixShellInformation shell(true);
  std::array<std::uint8_t, 7> small{};
  EXPECT_EQ(0, shell.FileVersionInfoSize("user32.dll"));
  EXPECT_FALSE(shell.FileVersionInfo("shell32.dll", small));
  EXPECT_EQ(std::nullopt, shell.QueryRootBlock(small));
}

}  // namespace
}  // namespace kestro
