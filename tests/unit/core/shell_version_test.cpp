#include "core/shell_version.h"

#include <gtest/gtest.h>

#include "scenario/scripted_shell_information.h"
#include "support/log_capture.h"

namespace kestro::core {
namespace {

TEST(ShellVersion, TheShellsVersionDecidesOnBalloonsAndTheRecordsSize) {
  test::LogCapture capture;
  LogModule log(capture);
  scenario::ScriptedShellInformation shell;
  Functions::ShellVersion version(log, shell);
  const struct {
    std::uint8_t major;
    std::uint8_t minor;
    bool nt;
    bool balloons;
  } systems[] = {{4, 89, false, false}, {4, 90, false, true}, {5, 90, false, false},
                 {4, 90, true, false},  {5, 0, true, true},   {6, 1, true, true}};
  for (const auto& row : systems) {
    shell.SetWindows(row.major, row.minor, row.nt);
    EXPECT_EQ(version.DoSupportTrayBaloon(), row.balloons) << int{row.major} << "." << int{row.minor};
  }
  for (const auto& [major, size] : {std::pair{0, 88}, {4, 88}, {5, 488}, {6, 504}, {7, 504}}) {
    shell.SetShellMajor(static_cast<std::uint16_t>(major));
    EXPECT_EQ(version.NFStructureSize(true), size) << major;
  }
}

}  // namespace
}  // namespace kestro::core
