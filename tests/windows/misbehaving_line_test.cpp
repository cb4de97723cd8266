// The shipped program against a telephony library that fails or misbehaves: it stays alive and says the right
// thing.

#include <gmock/gmock.h>

#include <gtest/gtest.h>

#include "windows/support/running_program.h"
#include "windows/support/test_user.h"

namespace kestro::test {
namespace {

using testing::HasSubstr;

constexpr const wchar_t* kSettings = L"KESTRO CTI settings";
constexpr const wchar_t* kUnknownCaller = L"Unknown caller";

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

TEST_F(MisbehavingLine, EveryFunctionOfTheStartMayFail) {
  const struct {
    std::string function;
    std::wstring message;  // part of the box; empty = no box
    bool settings;         // the settings window opens, there is no line to choose
  } cases[] = {
      {"lineInitialize", L"TAPI subsystem can't be initialized.", true},
      {"lineNegotiateAPIVersion", L"No TAPI 1.4 or higher compliant device detected.", true},
      {"lineGetDevCaps", L"", true},
      {"lineOpen", L"", false},
      {"lineSetStatusMessages", L"", false},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.function);
    ResetUser("EXT 101");
    const RunningProgram program("fail " + one.function + " 0x80000048");
    if (!one.message.empty()) {
      EXPECT_THAT(program.AwaitBox(), HasSubstr(one.message));
      program.AnswerBox();
    }
    if (one.settings) {
      EXPECT_NE(program.AwaitWindow(kSettings), nullptr);
    } else {
      // What had been opened is closed again.
      EXPECT_TRUE(Eventually([&] { return program.Ask("status") == "ok\nshut-down line-closed\n"; }));
    }
    EXPECT_TRUE(Responds(program));
  }
}

TEST_F(MisbehavingLine, EveryFunctionOfACallMayFail) {
  MakeContacts("phone-line \"21\" \"Reception\"\n");
  const struct {
    std::string function;
    std::string called;  // proves that the program came to call it
  } cases[] = {
      {"lineGetCallInfo", "lineGetCallInfo"},       {"lineDrop", "lineDrop"},
      {"lineDeallocateCall", "lineDeallocateCall"}, {"lineTranslateAddress", "lineTranslateAddress"},
      {"lineBlindTransfer", "lineBlindTransfer"},
  };
  const RunningProgram program;
  ASSERT_TRUE(program.Monitors());
  for (const auto& one : cases) {
    SCOPED_TRACE(one.function);
    program.Journal();
    ASSERT_EQ(program.Ask("fail " + one.function + " 0x80000048"), "ok\n");
    program.Ask("ring 602111222");
    program.Ask("answer");
    const bool transfers = one.function == "lineTranslateAddress" || one.function == "lineBlindTransfer";
    const HWND card = one.function == "lineGetCallInfo" ? nullptr : program.AwaitWindow(kUnknownCaller);
    if (transfers) {
      // The first of the internal lines behind the prompt.
      const HWND combo = ChildOf(card, L"ComboBox");
      ASSERT_TRUE(Eventually([&] { return ::IsWindowEnabled(combo) != FALSE; }));
      ::SendMessageW(combo, CB_SETCURSEL, 1, 0);
      ::PostMessageW(::GetParent(combo), WM_COMMAND, MAKEWPARAM(0, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(combo));
      EXPECT_THAT(program.AwaitBox(), HasSubstr(L"witch"));
      program.AnswerBox();
    }
    program.Ask("hang-up");
    std::string journal;
    EXPECT_TRUE(Eventually([&] {
      journal += program.Journal();
      return journal.find(one.called) != std::string::npos;
    })) << journal;
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
  ASSERT_TRUE(Eventually([&] { return program.Ask("status") == "ok\nshut-down line-closed\n"; }));
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
    EXPECT_THAT(program.AwaitBox(), HasSubstr(L"TAPI subsystem can't be initialized."));
    program.AnswerBox();
    EXPECT_NE(program.AwaitWindow(kSettings), nullptr);
    EXPECT_TRUE(Responds(program));
  }
  WriteRegistry(HKEY_CURRENT_USER, kOverrides, L"tapi32", L"native,builtin");
}

}  // namespace
}  // namespace kestro::test
