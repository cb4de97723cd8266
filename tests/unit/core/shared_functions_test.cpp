#include "core/shared_functions.h"

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/no_files.h"

namespace kestro::core {
namespace {

class OneFolder final : public test::NoFiles {
 public:
  std::string folder;
  std::string ProgramFolder() const override { return folder; }
};

TEST(SharedFunctionsTest, TheProgramsFolderEndsWithItsSeparator) {
  test::LogCapture capture;
  LogModule log(capture);
  OneFolder files;
  const SharedFunctions shared(log, files);
  for (const auto& [folder, path] :
       {std::pair{"", ""}, {"  ", ""}, {R"(C:\)", R"(C:\)"}, {" C:/Program/CTI ", R"(C:\Program\CTI\)"}}) {
    files.folder = folder;
    EXPECT_EQ(shared.GetCurrentApplicationPath(), path);
  }
}

}  // namespace
}  // namespace kestro::core
