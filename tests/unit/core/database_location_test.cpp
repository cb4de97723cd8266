#include "core/database_location.h"

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "ports/memory_settings_store.h"
#include "support/log_capture.h"
#include "support/no_files.h"

namespace kestro::core::Functions {
namespace {

/// Files that are only names; copies can fail, with or without half a copy left.
class NamedFiles final : public test::NoFiles {
 public:
  std::set<std::string, std::less<>> files;
  std::string data_folder;  // empty = there is none
  bool takes_copies = true;
  bool leaves_half_a_copy = false;

  bool FileExists(std::string_view path) const override { return files.contains(path); }
  bool FolderExists(std::string_view path) const override {
    return path == "C:\\Program\\" || path == "C:\\" || path == "X";
  }
  void CopyFileTo(std::string_view source, std::string_view target, bool overwrite) override {
    if (!takes_copies && !leaves_half_a_copy) Refuse();
    if (!overwrite && files.contains(target)) Refuse();
    if (files.contains(source)) files.emplace(target);
    if (!takes_copies) Refuse();
  }
  std::string UserDataFolder() const override { return data_folder.empty() ? (Refuse(), "") : data_folder; }
};

class DatabaseLocationTest : public testing::Test,
                             private ports::MessageBoxes,
                             private ports::ProcessControl {
 protected:
  std::ptrdiff_t Logged(const std::string& procedure, const std::string& message) const {
    return std::ranges::count(capture_.lines, "KESTROCTI.Functions." + procedure + " | " + message);
  }

  NamedFiles files_;
  test::LogCapture capture_;
  std::vector<std::string> boxes_;

 private:
  ports::BoxAnswer Show(std::string_view text, int style) override {
    boxes_.push_back(std::to_string(style) + " " + std::string(text));
    return ports::BoxAnswer::kOk;
  }
  void EndProcess() override { throw base::ProcessEnded{}; }

  LogModule log_{capture_};
  Localization texts_{log_};
  Messages messages_{texts_, *this};
  SharedFunctions shared_{log_, files_};
  ports::MemorySettingsStore store_;
  RegistrySettingsModule settings_{log_, store_};

 protected:
  DatabaseLocation location_{log_, messages_, shared_, settings_, files_, *this};
};

TEST_F(DatabaseLocationTest, WithoutADataFolderTheProgramsIsTaken) {
  for (const auto& [data_folder, folder] : {std::pair{"", R"(C:\Program\KESTRO\KESTROCTI)"},
                                            {R"(C:\not there)", R"(C:\Program\)"},
                                            {" C: ", R"(C:\KESTRO\KESTROCTI)"},
                                            {"X", R"(XKESTRO\KESTROCTI)"}}) {
    files_.data_folder = data_folder;
    EXPECT_EQ(location_.GetDatabaseDirectory(), folder) << data_folder;
  }
}

TEST_F(DatabaseLocationTest, OnlyHalfACopyEndsTheProgram) {
  files_.files = {"C:\\Program\\DBTemplate.tpl"};
  files_.takes_copies = false;
  EXPECT_EQ(location_.CopyDatabaseTemplate("C:\\Data"), "C:\\Data\\CTIDB.mdb");
  EXPECT_EQ(Logged("CopyDatabaseTemplate", "File not found"), 1);
  EXPECT_TRUE(boxes_.empty());
  files_.leaves_half_a_copy = true;
  EXPECT_THROW(location_.CopyDatabaseTemplate("C:\\Data"), base::ProcessEnded);
  EXPECT_EQ(Logged("CopyDatabaseTemplate",
                   "Unable to copy template database to destination DB. Application is shutting down."),
            1);
  EXPECT_EQ(boxes_,
            std::vector<std::string>{"16 The 'C:\\Program\\DBTemplate.tpl' file can not be copied to the "
                                     "'C:\\Data\\CTIDB.mdb' folder.\r\n"
                                     "The application will be terminated.\""});
}

TEST_F(DatabaseLocationTest, AConfigurationThatCannotBeReadIsLeftOut) {
  files_.files = {"C:\\Program\\CTI.exe.config"};
  EXPECT_EQ(location_.ConfiguredDatabaseFolder(), "C:\\Program\\");
  EXPECT_EQ(Logged("ConfiguredDatabaseFolder", "Configuration file is left out: File not found"), 1);
}

TEST(ConfiguredFolderInTest, CutsBehindTheMarks) {
  for (const auto& [text, folder] : {std::pair{R"(<add key="MDBDatabasePath" value="C:\Ž"/>)", "C:\\Ž"},
                                     {R"(žMDBDatabasePath"value="a" value="b")", "a"},
                                     {R"(MDBDatabasePath value="no end)", "no end"},
                                     {"MDBDatabasePath", ""},
                                     {R"(no mark: fifteen value="y")", "y"},
                                     {"no mark: fifteeno mark seven\"", "k seven"},
                                     {"", ""}}) {
    EXPECT_EQ(ConfiguredFolderIn(text), folder) << text;
  }
}

TEST_F(DatabaseLocationTest, PicturesNeverMeet) {
  const auto copy = [this] {
    return location_.CopyPictureToDestinationFolder("C:\\Photos\\p.gif", "C:\\Data\\CTIDB.mdb");
  };
  files_.files = {"C:\\Photos\\p.gif"};
  for (int number = 0; number <= 2000; ++number)
    files_.files.insert("C:\\Data\\" + std::to_string(number) + "p.gif");
  for (const auto* const free : {"C:\\Data\\0p.gif", "C:\\Data\\2000p.gif", "C:\\Data\\77p.gif"}) {
    files_.files.erase(free);
    EXPECT_EQ(copy(), free);
  }
  EXPECT_EQ(copy(), "");
  EXPECT_EQ(capture_.lines.back(),
            "ERROR 58 KESTROCTI.Functions.CopyPictureToDestinationFolder:: | File already exists");
}

}  // namespace
}  // namespace kestro::core::Functions
