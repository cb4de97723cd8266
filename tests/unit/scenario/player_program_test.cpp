// The scenario program as its callers see it: exit status, messages, transcript.

#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include "unit/support/temporary_folder.h"

namespace kestro::scenario {
namespace {

namespace fs = std::filesystem;

struct Outcome {
  int status = -1;
  std::string transcript;
  std::string errors;
};

using test_support::ReadFile;

class PlayerProgramTest : public ::testing::Test {
 protected:
  fs::path Write(const std::string& name, const std::string& script) {
    test_support::WriteFile(folder_.File(name), script);
    return folder_.File(name);
  }
  Outcome Run(const std::string& arguments) {
    const std::string command = "\"" KESTRO_PROGRAM_DIR "/cti-scenario\" " + arguments + " >\"" +
                                folder_.File("out").string() + "\" 2>\"" + folder_.File("err").string() +
                                "\"";
    const int result = std::system(command.c_str());
    return {WIFEXITED(result) ? WEXITSTATUS(result) : -1, ReadFile(folder_.File("out")),
            ReadFile(folder_.File("err"))};
  }
  Outcome Play(const std::string& script) { return Run(Write("a.scenario", script).string()); }

  test_support::TemporaryFolder folder_;
};

TEST_F(PlayerProgramTest, EveryKindOfFailureHasItsStatus) {
  // A script, the exit status, and the message behind "FILE:".
  const std::tuple<std::string, int, std::string> cases[] = {
      {"start\nexpect icon version 3\n", 0, ""},
      {"start\nexpect icon version 4\n", 1, "2: no such line: icon version 4"},
      {"start\nexpect icon version\n", 1, "2: no such line: icon version"},
      {"start\nrefuse icon ver\n", 1, "2: there is such a line: icon ver"},
      {"start\ndump call\nexpect icon version 3\n", 1, "3: no such line: icon version 3"},
      {"answer no\nstart\n", 1, "2: 1 answer(s) nobody asked for"},
      {"setting DatabasePath \"\"\nanswer no\nduring\nclick Settings.CancelButton\nend\nstart\n", 1,
       "4: the message box does not offer the answer no"},
      {"during\nend\nstart\n", 1, "1: no modal window opened for this"},
      {"start\nanswer cancel\ncall 1 offering from \"1\"\nreply 1 0\n", 1, "4: 1 answer(s) nobody asked for"},
      {"start\nclick Nothing.cmdOK\n", 2, "2: unknown window \"Nothing\""},
      {"start\nclick ContactDetail.cmdNothing\n", 2, "2: unknown control ContactDetail.cmdNothing"},
      {"start\nclick SystemTrayForm.mnuRedirectList(1)\n", 2,
       "2: unknown control SystemTrayForm.mnuRedirectList(1)"},
      {"start\nclick ContactDetail.cmdClose(0)\n", 2, "2: unknown control ContactDetail.cmdClose(0)"},
      {"start\nclick ContactDetail\n", 2, "2: a control is written WINDOW.CONTROL"},
      {"start\nclick ContactDetail.lblName\n", 2,
       "2: ContactDetail.lblName is no button, check box or menu entry"},
      {"start\nrow ContactDetail.lblName 1\n", 2, "2: ContactDetail.lblName is no grid"},
      {"start\ndevice \"A\"\n", 2, "2: the application has been started already"},
      {"click A.b\n", 2, "1: the application has not been started"},
      {"start\nclick SystemTrayForm.mPopExit\nexpect ended\ncall 1 idle\n", 2,
       "4: the application has ended"},
      {"start\ndump sql \"DELETE FROM Contact\"\n", 2, "2: only SELECT statements can be dumped"},
      {"contact Height=\"7\"\n", 2, "1: a contact has no property \"Height\""},
      {"contact SearchPhone1=\"7\"\n", 2, "1: SearchPhone1 follows from the phone number"},
      {"contact PhoneType2=\"Boat\"\nstart\n", 2, "1: unknown phone type \"Boat\""},
      {"no-database\ncontact Name=\"a\"\nstart\n", 2, "2: there is no database for this"},
      {"program-file \"..\\\\x\" \"\"\n", 2, "1: \"..\\\\x\" is no name inside the folder"},
      {"windows 5\n", 2, "1: a version is written as in 5.1"},
      {"windows 5.256\n", 2, "1: 256 is out of range"},
      {"line-function lineFly fails 1\n", 2, "1: unknown line function \"lineFly\""},
      {"start\ncall-info 1 raw \"0g\"\n", 2, "2: no hexadecimal bytes"},
      {"start\ncall-info 1 raw \"000\"\n", 2, "2: half a byte at the end"},
      {"start\nfoo\n", 2, "2: unknown action \"foo\""},
  };
  for (const auto& [script, status, message] : cases) {
    const Outcome outcome = Play(script);
    EXPECT_EQ(outcome.status, status) << script;
    const std::string said = outcome.errors.substr(0, outcome.errors.find('\n'));
    EXPECT_TRUE(said.ends_with(message.empty() ? "" : "a.scenario:" + message))
        << script << "said: " << outcome.errors;
    EXPECT_EQ(outcome.errors.empty(), status == 0) << outcome.errors;
  }
}

TEST_F(PlayerProgramTest, AFailureShowsTheEndOfTheTranscript) {
  const Outcome outcome = Play("start\nexpect ended\n");
  EXPECT_TRUE(outcome.errors.ends_with("\n    icon balloon removed\n    > expect ended\n")) << outcome.errors;
  EXPECT_TRUE(outcome.transcript.starts_with("> start\nfile copied \"C:\\Program\\DBTemplate.tpl\" -> "));
  EXPECT_TRUE(outcome.transcript.ends_with("icon balloon removed\n> expect ended\n"));
}

TEST_F(PlayerProgramTest, PlaysEachFileInItsOwnWorldAndAnswersTheWorst) {
  const std::string good = Write("good.scenario", "contact Name=\"a\"\nstart\n").string();
  const std::string count =
      Write("count.scenario", "start\ndump sql \"SELECT COUNT(*) FROM Contact\"\nexpect \"0\"\n").string();
  const std::string failing = Write("failing.scenario", "expect x\n").string();
  EXPECT_EQ(Run(good + " " + count).status, 0);
  EXPECT_EQ(Run(failing + " " + good).status, 1);
  EXPECT_EQ(Run(failing + " " + folder_.File("missing").string() + " " + good).status, 2);
  EXPECT_EQ(Run("").status, 2);
  EXPECT_EQ(Run("--front-end none " + good).status, 2);
  EXPECT_EQ(Run("--keep").status, 2);
  EXPECT_EQ(Run("--screenshots " + folder_.File("shots").string() + " " + good).status,
            2);  // nothing is drawn
}

TEST_F(PlayerProgramTest, KeepsTheFilesWhenAsked) {
  const std::string script = Write("a.scenario", "data-file \"Sub\\\\f.txt\" \"text\"\nstart\n").string();
  const fs::path keep = folder_.File("keep");
  EXPECT_EQ(Run("--keep " + keep.string() + " " + script + " " + script).status, 0);
  for (const char* name : {"a", "a-2"}) {
    EXPECT_EQ(ReadFile(keep / name / "Data" / "Sub" / "f.txt"), "text");
    EXPECT_TRUE(fs::exists(keep / name / "Program" / "DBTemplate.tpl"));
    EXPECT_TRUE(fs::exists(keep / name / "Data" / "KESTRO" / "KESTROCTI" / "CTIDB.mdb"));
  }
}

}  // namespace
}  // namespace kestro::scenario
