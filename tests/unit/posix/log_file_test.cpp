#include "adapters/posix/log_file.h"

#include <csignal>
#include <ctime>
#include <regex>
#include <sys/resource.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "adapters/posix/log_line.h"
#include "unit/posix/posix_support.h"
#include "unit/support/temporary_folder.h"

namespace kestro {
namespace {

namespace fs = std::filesystem;
using test::Permissions;
using test_support::ReadFile;
using test_support::WriteFile;

constexpr base::LogSource kSource{"KESTROCTI.Functions", "OnCallAccept"};

class FakeClock final : public ports::Clock {
 public:
  [[nodiscard]] std::chrono::system_clock::time_point Now() const override { return now; }
  std::chrono::system_clock::time_point now{std::chrono::milliseconds(1'795'280'585'007)};
};

std::vector<std::string> LinesOf(const fs::path& path) {
  std::vector<std::string> lines;
  std::istringstream text(ReadFile(path));
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

class LogFile : public testing::Test {
 protected:
  LogFile() {
    fs::create_directory(folder_.File("log"));
    log_.SetLogDirectory("C:\\log");
    log_.SetFileLogging(true);
  }
  void Write(std::string_view message) { log_.LineEntry(kSource, message); }

  test_support::TemporaryFolder folder_;
  fs::path file_ = folder_.File("log/KESTROCTI.log");
  fs::path fallback_ = folder_.File("state/kestro-cti/KESTROCTI.log");
  FakeClock clock_;
  std::vector<std::string> reports_;
  adapters::LogFile log_{clock_,
                         adapters::PathMap({adapters::PathMount{"C:", folder_.path()}}),
                         {folder_.File("state/kestro-cti"),
                          [this](const std::string& text) { reports_.push_back(text); }, 1000}};
};

TEST_F(LogFile, AnEntryIsOneLineWhateverItHolds) {
  Write("Method started.");
  Write("a\r\nb\tc\x1b[2J \x7f \xC2\x85 \xE2\x80\xA8 \xFF \\ Š");
  log_.ErrorEntry(-2147467259, "KESTROCTI.A.b::\n", "Sub\nscript");
  const std::string time = R"(\d{4}-\d{2}-\d{2} \d{2}:\d{2}:\d{2}\.007 )";
  const std::string expected[] = {R"(KESTROCTI\.Functions\.OnCallAccept \| Method started\.)",
                                  "KESTROCTI\\.Functions\\.OnCallAccept \\| a\\\\r\\\\nb\\\\tc\\\\x1b\\[2J "
                                  "\\\\x7f \\\\x85 \\\\u2028 \\\\xff \\\\ Š",
                                  R"(ERROR -2147467259 KESTROCTI\.A\.b::\\n \| Sub\\nscript)"};
  const auto lines = LinesOf(file_);
  ASSERT_EQ(3U, lines.size());
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_TRUE(std::regex_match(lines[i], std::regex(time + expected[i]))) << lines[i];
  }
}

TEST(LogTime, IsLocalTimeWithMilliseconds) {
  const test::ScopedEnvironment zone("TZ", "CET-1");
  ::tzset();
  EXPECT_EQ("2026-11-21 18:03:05.007", adapters::LogTime(FakeClock().now));
  EXPECT_EQ("1970-01-01 00:59:59.999",
            adapters::LogTime(std::chrono::system_clock::time_point(std::chrono::milliseconds(-1))));
}

TEST_F(LogFile, NothingIsStoredWhileItIsOff) {
  log_.SetFileLogging(false);
  Write("unseen");
  log_.ErrorEntry(9, "s", "d");
  EXPECT_FALSE(fs::exists(file_));
  log_.SetFileLogging(true);
  Write("seen");
  log_.SetFileLogging(false);
  Write("unseen");
  EXPECT_EQ(1U, LinesOf(file_).size());
  fs::create_directory(folder_.File("other"));
  log_.SetFileLogging(true);
  log_.SetLogDirectory("C:\\other");
  Write("elsewhere");
  EXPECT_EQ(1U, LinesOf(file_).size());
  EXPECT_EQ(1U, LinesOf(folder_.File("other/KESTROCTI.log")).size());
}

TEST_F(LogFile, TheFileIsTheUsersAlone) {
  const test::ScopedUmask open(0);
  Write("new");
  EXPECT_EQ(0600, Permissions(file_));
  log_.SetFileLogging(false);
  ASSERT_EQ(0, ::chmod(file_.c_str(), 0644));
  log_.SetFileLogging(true);
  Write("tightened");
  EXPECT_EQ(0600, Permissions(file_));
  EXPECT_EQ(2U, LinesOf(file_).size());
}

TEST_F(LogFile, ATrapInItsPlaceIsNotWritten) {
  const auto victim = folder_.File("victim");
  WriteFile(victim, "precious");
  const std::pair<const char*, std::function<void()>> rows[] = {
      {"symbolic link", [&] { fs::create_symlink(victim, file_); }},
      {"dangling link", [&] { fs::create_symlink(folder_.File("made"), file_); }},
      {"second name", [&] { fs::create_hard_link(victim, file_); }},
      {"pipe", [&] { ::mkfifo(file_.c_str(), 0600); }},
      {"folder", [&] { fs::create_directory(file_); }}};
  std::size_t entries = 0;
  for (const auto& [name, set_trap] : rows) {
    SCOPED_TRACE(name);
    fs::remove_all(file_);
    set_trap();
    log_.SetLogDirectory("C:\\log");
    Write("text");
    EXPECT_EQ("precious", ReadFile(victim));
    EXPECT_FALSE(fs::exists(folder_.File("made")));
    EXPECT_EQ(++entries, LinesOf(fallback_).size());
  }
  EXPECT_EQ(0700, Permissions(folder_.File("state")));
  EXPECT_EQ(0700, Permissions(folder_.File("state/kestro-cti")));
  EXPECT_TRUE(reports_.empty());
}

TEST_F(LogFile, IsPutAsideWhenItHasGrown) {
  const std::string text(900 - 60, 'x');
  for (char digit = '1'; digit <= '6'; ++digit) Write(digit + text);
  const std::pair<const char*, char> rows[] = {{"", '6'}, {".1", '5'}, {".2", '4'}, {".3", '3'}};
  for (const auto& [suffix, digit] : rows) {
    const auto lines = LinesOf(file_.string() + suffix);
    ASSERT_EQ(1U, lines.size()) << suffix;
    EXPECT_NE(std::string::npos, lines[0].find(std::string("| ") + digit)) << suffix;
    EXPECT_EQ(0600, Permissions(file_.string() + suffix));
  }
  EXPECT_FALSE(fs::exists(file_.string() + ".4"));
  Write(std::string(5000, 'y'));
  EXPECT_GT(fs::file_size(file_), 5000U) << "a long entry is stored whole";
}

TEST_F(LogFile, WithoutAnyPlaceItReportsOnceAndGoesOn) {
  WriteFile(folder_.File("state"), "a file, no folder");
  log_.SetLogDirectory("C:\\missing");
  for (int i = 0; i < 3; ++i) EXPECT_NO_THROW(Write("lost"));
  clock_.now += std::chrono::minutes(2);
  EXPECT_NO_THROW(Write("lost"));
  EXPECT_EQ(1U, reports_.size());
  log_.SetLogDirectory("C:\\log");
  Write("back");
  const auto lines = LinesOf(file_);
  ASSERT_EQ(2U, lines.size());
  EXPECT_NE(std::string::npos, lines[0].find("4 entries are missing"));
}

TEST_F(LogFile, AFullDiskCostsEntriesButNoWholeLineAndNoError) {
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ASSERT_EQ(0, ::getrlimit(RLIMIT_FSIZE, &before));
  const rlimit small{250, before.rlim_max};
  ASSERT_EQ(0, ::setrlimit(RLIMIT_FSIZE, &small));
  for (int i = 0; i < 10; ++i) EXPECT_NO_THROW(Write("Method started."));
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, SIG_DFL);
  EXPECT_EQ(3U, LinesOf(file_).size());
  EXPECT_EQ(3U, LinesOf(fallback_).size());
  EXPECT_EQ('\n', ReadFile(file_).back());
  EXPECT_EQ(1U, reports_.size());
  Write("too early");
  EXPECT_EQ(3U, LinesOf(file_).size());
  clock_.now += std::chrono::minutes(1);
  Write("again");
  const auto lines = LinesOf(file_);
  ASSERT_EQ(5U, lines.size());
  EXPECT_NE(std::string::npos, lines[3].find("5 entries are missing"));
  EXPECT_TRUE(lines[4].ends_with("| again"));
}

}  // namespace
}  // namespace kestro
