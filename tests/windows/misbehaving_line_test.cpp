// The shipped program against a telephony library that fails or misbehaves: it stays alive and says the right
// thing.

#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "windows/support/running_program.h"
#include "windows/support/test_user.h"

namespace kestro::test {
namespace {

using testing::HasSubstr;

constexpr const wchar_t* kSettings = L"KESTRO CTI settings";
constexpr const wchar_t* kUnknownCaller = L"Unknown caller";
constexpr const wchar_t* kNoLineFunctions =
    L"TAPI subsystem can't be initialized. Please contact your network administrator.";
constexpr const char* kOpen = "ok\ninitialised line-open\n";
constexpr const char* kClosed = "ok\nshut-down line-closed\n";
constexpr const char* kFailure = "0x80000048";
constexpr wchar_t kStartStopKey = L'r';

class MisbehavingLine : public testing::Test {
 protected:
  MisbehavingLine() { ResetUser("EXT 101"); }
};

/// The program answers: its windows' messages are handled.
bool Responds(const RunningProgram& program) {
  DWORD_PTR result = 0;
  return program.Runs() &&
         ::SendMessageTimeoutW(program.Listener(), WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 5000, &result) != 0;
}

TEST_F(MisbehavingLine, EveryFunctionOfStoppingAndStartingMayFail) {
  const struct {
    std::string function;
    std::wstring box;  // empty = none
    bool monitors;     // all the same
  } cases[] = {
      {"lineClose", L"", true},
      {"lineShutdown", L"", true},
      {"lineInitialize", L"TAPI subsystem can not be initialized. Please contact Your network administrator.",
       false},
      {"lineNegotiateAPIVersion",
       L"TAPI version can not be detected for selected line. Please choose another line or contact your "
       L"network administrator.",
       false},
      {"lineOpen", L"", false},
      {"lineGetDevCaps", L"", true},
      {"lineSetStatusMessages", L"", false},
  };
  const RunningProgram program;
  ASSERT_TRUE(program.Monitors());
  for (const auto& one : cases) {
    SCOPED_TRACE(one.function);
    ASSERT_EQ(program.Ask("fail " + one.function + " 0x80000048"), "ok\n");
    program.Journal();
    program.ChooseFromIcon(kStartStopKey);
    EXPECT_THAT(program.Journal(), HasSubstr("lineClose\nlineShutdown\n"));
    program.ChooseFromIcon(kStartStopKey);
    if (!one.box.empty()) {
      EXPECT_EQ(program.AwaitBox(), one.box);
      program.AnswerBox();
    }
    EXPECT_TRUE(program.SaysNothing());
    ASSERT_EQ(program.Ask("work " + one.function), "ok\n");
    EXPECT_EQ(program.Ask("status"), one.monitors ? kOpen : kClosed);
    if (!one.monitors) program.ChooseFromIcon(kStartStopKey);
    ASSERT_TRUE(program.Monitors());
  }
  // At the end, too.
  program.Ask("fail lineClose 0x80000048");
  program.Ask("fail lineShutdown 0x80000048");
  ::PostMessageW(program.Listener(), WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(program.ExitStatus(), 0U);
}

TEST_F(MisbehavingLine, EveryFunctionOfACallMayFail) {
  MakeContacts("phone-line \"21\" \"Reception\"\n");
  const struct {
    std::string function;  // fails, and comes to be called
    std::string result;
    std::string reply;  // to the transfer, from the exchange
    bool transfers;
    bool says_so;
  } cases[] = {
      {"lineGetCallInfo", kFailure, "", false, false},
      {"lineDrop", kFailure, "", false, false},
      {"lineDeallocateCall", kFailure, "", false, false},
      {"lineTranslateAddress", kFailure, "", true, true},
      {"lineBlindTransfer", kFailure, "", true, true},
      // Under way, refused later on.
      {"lineBlindTransfer", "77", "deliver 0 12 77 0x80000048 0", true, true},
      {"lineDeallocateCall", kFailure, "deliver 0 12 77 0 0", true, false},
  };
  const RunningProgram program;
  ASSERT_TRUE(program.Monitors());
  for (const auto& one : cases) {
    SCOPED_TRACE(one.function + " " + one.reply);
    program.Journal();
    ASSERT_EQ(program.Ask("fail " + one.function + " " + one.result), "ok\n");
    program.Ask("ring 602111222");
    program.Ask("answer");
    if (one.transfers) {
      // The first of the internal lines behind the prompt.
      const HWND combo = ChildOf(program.AwaitWindow(kUnknownCaller), L"ComboBox");
      ASSERT_TRUE(Eventually([&] { return ::IsWindowEnabled(combo) != FALSE; }));
      ::SendMessageW(combo, CB_SETCURSEL, 1, 0);
      ::PostMessageW(::GetParent(combo), WM_COMMAND, MAKEWPARAM(0, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(combo));
      if (!one.reply.empty()) program.Ask(one.reply);
    }
    if (one.says_so) {
      EXPECT_EQ(program.AwaitBox(), L"Call-switching failed. Customer is probably still on the line.");
      program.AnswerBox();
    }
    program.Ask("hang-up");
    EXPECT_TRUE(program.SaysNothing());
    EXPECT_THAT(program.Journal(), HasSubstr(one.function));
    program.Ask("work " + one.function);
    EXPECT_TRUE(Responds(program));
  }
  EXPECT_TRUE(program.Monitors());
}

TEST_F(MisbehavingLine, MessagesComeAtTheWrongTimeAndFromTheWrongPlace) {
  // 2 = LINE_CALLSTATE, 12 = LINE_REPLY, 3 = LINE_CLOSE; states 2 offering, 0x100 connected, 0x4000
  // disconnected.
  const std::string requests[] = {
      "deliver 0x999 2 0x100 0 0",                 // connected, but never offered
      "deliver 0x999 2 0x4000 0 0",                // the end of a call that never was
      "deliver 0 12 77 0x80000048 0",              // the answer to no request
      "deliver 0 3 0 0 0",                         // the line is closed by the provider
      "deliver -1 -1 -1 -1 -1",                    // no message at all
      "inside lineGetCallInfo 0x101 2 0x100 0 0",  // connected, from inside the question who calls
      "thread 0x101 2 0x100 0 0",                  // from another thread
      "late 100 0x101 2 0x4000 0 0",
      "twice on",
  };
  for (const std::string& request : requests) {
    SCOPED_TRACE(request);
    ResetUser("EXT 101");
    const RunningProgram program;
    ASSERT_TRUE(program.Monitors());
    ASSERT_EQ(program.Ask(request), "ok\n");
    EXPECT_EQ(program.Ask("ring 602111222"), "ok\n0x101\n");
    EXPECT_TRUE(Eventually(
        [&] { return program.Journal().find("lineGetCallInfo 0x00000101") != std::string::npos; }));
    program.Ask("hang-up");
    EXPECT_TRUE(Responds(program));
    EXPECT_TRUE(program.Monitors());
  }
}

TEST_F(MisbehavingLine, MessagesAfterTheEndOfTheLineHaveNoEffect) {
  const RunningProgram program("fail lineOpen 0x80000048");
  ASSERT_TRUE(Eventually([&] { return program.Ask("status") == kClosed; }));
  program.Journal();
  EXPECT_EQ(program.Ask("deliver 0x101 2 2 0 0"), "ok\n");
  EXPECT_EQ(program.Ask("thread 0x101 2 2 0 0"), "ok\n");
  EXPECT_TRUE(Responds(program));
  EXPECT_EQ(program.Journal(), "ok\n");
  EXPECT_EQ(program.FindVisible(kUnknownCaller), nullptr);
}

TEST_F(MisbehavingLine, WithoutTheLibraryTheContactsRemain) {
  constexpr const wchar_t* kOverrides = L"Software\\Wine\\AppDefaults\\CTI.exe\\DllOverrides";
  WriteRegistry(HKEY_CURRENT_USER, kOverrides, L"tapi32", L"");
  {
    const RunningProgram program;
    EXPECT_EQ(program.AwaitBox(), kNoLineFunctions);
    program.AnswerBox();
    EXPECT_NE(program.AwaitWindow(kSettings), nullptr);
    EXPECT_TRUE(Responds(program));
  }
  WriteRegistry(HKEY_CURRENT_USER, kOverrides, L"tapi32", L"native,builtin");
}

}  // namespace
}  // namespace kestro::test
