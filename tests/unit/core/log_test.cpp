#include <map>
#include <set>

#include <gtest/gtest.h>

#include "core/log_file.h"
#include "core/masking_log.h"
#include "ports/memory_settings_store.h"
#include "support/log_capture.h"
#include "unit/support/stepping_clock.h"

namespace kestro {
namespace {

constexpr base::LogSource kSource{"KESTROCTI.Functions", "OnCallAccept"};

/// Files in memory, and a disk that may refuse folders or be full.
class FakeDisk final : public ports::GrowingFile {
 public:
  std::uint64_t Open(const std::string& path) override {
    Close();
    Take(path.substr(0, path.find_last_of('\\')), refused_folders);
    open_ = path;
    return files[path].size();
  }
  void Append(std::string_view lines) override {
    if (files.at(open_).size() + lines.size() > room) throw base::RuntimeError(75, "full");
    files[open_].append(lines);
  }
  void Close() override { open_.clear(); }
  void Rename(const std::string& from, const std::string& to) override {
    EXPECT_NE(open_, from);
    Take(from, refused_renames);
    if (files.contains(from)) files[to] = std::exchange(files[from], {});
    files.erase(from);
  }
  void MakeFolder(const std::string& folder) override { Take(folder, refused_folders); }

  std::map<std::string, std::string> files;
  std::set<std::string> refused_folders;
  std::set<std::string> refused_renames;
  std::size_t room = 100'000;  // bytes a file

 private:
  static void Take(const std::string& name, const std::set<std::string>& refused) {
    if (refused.contains(name)) throw base::RuntimeError(75, "refused: " + name);
  }
  std::string open_;
};

class LogFile : public testing::Test {
 protected:
  LogFile() {
    log_.SetLogDirectory("C:\\log");
    log_.SetFileLogging(true);
  }
  void Write(std::string_view message) { log_.LineEntry(kSource, message); }
  static std::string Line(std::string_view message) {
    return std::string("2026-11-21 18:03:05.007 KESTROCTI.Functions.OnCallAccept | ").append(message) +
           "\r\n";
  }
  std::string Content(const std::string& path) const {
    const auto found = disk_.files.find(path);
    return found == disk_.files.end() ? "no file" : found->second;
  }

  const std::string path_ = "C:\\log\\KESTROCTI.log";
  const std::string fallback_ = "\\state\\KESTROCTI.log";
  FakeDisk disk_;
  test_support::SteppingClock clock_;
  std::vector<std::string> reports_;
  core::LogFile log_{
      clock_,
      disk_,
      {"\\state", [this](const std::string& text) { reports_.push_back(text); }, "\r\n", 1000}};
};

TEST_F(LogFile, AnEntryIsOneLineWhateverItHolds) {
  Write("Method started.");
  Write("a\r\nb\tc\x1b[2J \x7f \xC2\x85 \xE2\x80\xA8 \xFF \\ Š");
  clock_.now = std::chrono::system_clock::time_point(std::chrono::milliseconds(-1));
  log_.ErrorEntry(-2147467259, "KESTROCTI.A.b::\n", "Sub\nscript");
  EXPECT_EQ(Line("Method started.") + Line("a\\r\\nb\\tc\\x1b[2J \\x7f \\x85 \\u2028 \\xff \\ Š") +
                "1970-01-01 00:59:59.999 ERROR -2147467259 KESTROCTI.A.b::\\n | Sub\\nscript\r\n",
            Content(path_));
}

TEST_F(LogFile, NothingIsStoredWhileItIsOff) {
  log_.SetFileLogging(false);
  Write("unseen");
  log_.ErrorEntry(9, "s", "d");
  EXPECT_TRUE(disk_.files.empty());
  log_.SetFileLogging(true);
  Write("seen");
  log_.SetLogDirectory("C:\\other\\");
  Write("elsewhere");
  EXPECT_EQ(Line("seen"), Content(path_));
  EXPECT_EQ(Line("elsewhere"), Content("C:\\other\\KESTROCTI.log"));
}

TEST_F(LogFile, IsPutAsideWhenItHasGrown) {
  const auto text = [](char digit) { return digit + std::string(900 - 60, 'x'); };
  for (char digit = '1'; digit <= '6'; ++digit) {
    Write(text(digit));
    if (digit == '4') log_.SetFileLogging(true);  // opened anew, it knows how large it is
  }
  const std::pair<const char*, char> rows[] = {{"", '6'}, {".1", '5'}, {".2", '4'}, {".3", '3'}};
  for (const auto& [suffix, digit] : rows) EXPECT_EQ(Line(text(digit)), Content(path_ + suffix));
  EXPECT_EQ(4U, disk_.files.size());
  const std::string long_text(5000, 'y');
  Write(long_text);
  EXPECT_EQ(Line(long_text), Content(path_)) << "a long entry is stored whole";
  log_.SetLogDirectory("C:\\empty");
  Write(long_text);
  EXPECT_EQ("no file", Content("C:\\empty\\KESTROCTI.log.1")) << "nothing was there to put aside";
  log_.SetLogDirectory("C:\\log");
  disk_.refused_renames = {path_};
  Write("behind it");
  EXPECT_EQ(Line("behind it"), Content(fallback_)) << "the limit is kept where no file can be put aside, too";
}

TEST_F(LogFile, WithoutAnyPlaceItReportsOnceAndGoesOn) {
  disk_.refused_folders = {"C:\\log", "\\state"};
  for (int i = 0; i < 3; ++i) EXPECT_NO_THROW(Write("lost"));
  clock_.now += std::chrono::minutes(2);
  EXPECT_NO_THROW(Write("lost"));
  EXPECT_EQ(1U, reports_.size());
  clock_.now -= std::chrono::minutes(2);  // set back: no reason to wait longer
  disk_.refused_folders.erase("C:\\log");
  Write("back");
  EXPECT_EQ(
      "2026-11-21 18:03:05.007 KESTROCTI.LogFile | The log could not be written: 4 entries are missing.\r\n" +
          Line("back"),
      Content(path_));
}

TEST_F(LogFile, AFullDiskCostsEntriesAndNoError) {
  disk_.room = 3 * Line("Method started.").size() + 10;
  for (int i = 0; i < 10; ++i) EXPECT_NO_THROW(Write("Method started."));
  const std::string three = Line("Method started.") + Line("Method started.") + Line("Method started.");
  EXPECT_EQ(three, Content(path_));
  EXPECT_EQ(three, Content(fallback_));
  ASSERT_EQ(1U, reports_.size());
  EXPECT_EQ("The log cannot be written: full", reports_[0]);
  disk_.room = 100'000;
  Write("too early");
  EXPECT_EQ(three, Content(path_));
  clock_.now += core::LogFile::kPause;
  Write("again");
  EXPECT_NE(std::string::npos, Content(path_).find("5 entries are missing.\r\n"));
  EXPECT_TRUE(Content(path_).ends_with("| again\r\n"));
}

TEST(LogFileWithoutFallback, ReportsWhatIsWrong) {
  FakeDisk disk;
  const test_support::SteppingClock clock;
  std::vector<std::string> reports;
  core::LogFile log(clock, disk, {{}, [&](const std::string& text) { reports.push_back(text); }});
  log.SetFileLogging(true);
  log.LineEntry(kSource, "lost");
  disk.refused_folders = {"C:\\log"};
  log.SetLogDirectory("C:\\log");
  log.LineEntry(kSource, "lost");
  EXPECT_EQ((std::vector<std::string>{"The log cannot be written: Path not found: no log directory",
                                      "The log cannot be written: refused: C:\\log"}),
            reports);
}

TEST(MaskNumbers, LeavesNoTelephoneNumberReadable) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},
      {"Method started.", "Method started."},
      {"error 5, 1234", "error 5, 1234"},
      {"12345", "***45"},
      {"+420 602 111 222", "+*** *** *** *22"},
      {"call from (0602) 111-222.", "call from (****) ***-*22."},
      {"602/111222 and 603.222.333", "***/****22 and ***.***.*33"},
      {"x602111222y", "x*******22y"},
      {"1234|5678", "1234|5678"},
      {"12\n345", "12\n345"},
      {"602\xC2\xA0"
       "111\xE2\x80\x91"
       "222",
       "***\xC2\xA0"
       "***\xE2\x80\x91"
       "*22"},
      {"Novák 602111222 Š", "Novák *******22 Š"},
      {"\xFF"
       "602111222\xFF",
       "\xFF*******22\xFF"},
      {"602111222, 603222333", "*******22, *******33"},
  };
  for (const auto& [text, masked] : cases) EXPECT_EQ(masked, core::MaskNumbers(text)) << text;
}

TEST(MaskingLog, MasksOnlyWhenTheSettingsSaySo) {
  constexpr base::LogSource kWithNumber{"KESTROCTI.Module", "P602111222"};
  for (const auto& [setting, number] : {std::pair{"", "602111222"}, {"0", "602111222"}, {"1", "*******22"}}) {
    ports::MemorySettingsStore settings;
    settings.CreateKey(core::kLogKey);
    if (*setting != '\0') settings.SetValue(core::kLogKey, core::kMaskNumbers, setting);
    test::LogCapture capture;
    core::MaskingLog log(capture, settings);
    log.SetLogDirectory("C:\\602111222");
    log.SetFileLogging(true);
    EXPECT_EQ((std::vector<std::string>{"directory C:\\602111222", "file on"}), capture.calls);
    log.LineEntry(kWithNumber, "to 602111222");
    EXPECT_EQ(std::string("KESTROCTI.Module.P602111222 | to ") + number, capture.lines.back());
    log.ErrorEntry(602111222, "A602111222::", "no 602111222");
    EXPECT_EQ(std::string("ERROR 602111222 A") + number + ":: | no " + number, capture.lines.back());
  }
}

}  // namespace
}  // namespace kestro
