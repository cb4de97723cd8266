// The shipped program against the interfaces of the system: what they see of it, what it does about them.

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <shellapi.h>

#include <gtest/gtest.h>

#include "windows/support/running_program.h"
#include "windows/support/test_user.h"

namespace kestro::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const wchar_t* kMainWindow = L"Kestro CTI";
constexpr const wchar_t* kUnknownCaller = L"Unknown caller";
constexpr LPARAM kLeftButtonUp = 514;

std::string ReadFile(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

class ShippedProgram : public testing::Test {
 protected:
  ShippedProgram() { ResetUser("EXT 101"); }

  static void ClickIcon(const RunningProgram& program) {
    ::PostMessageW(program.Listener(), kIconMessage, 1, kLeftButtonUp);
  }
};

/// Asks the task bar for the program's icon, which has the number 1; the reply tells whether it is there.
bool TellTaskBar(DWORD request, const RunningProgram& program) {
  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof(icon);
  icon.hWnd = program.Listener();
  icon.uID = 1;
  return ::Shell_NotifyIconW(request, &icon) != FALSE;
}

bool BalloonShows(const std::wstring& text) {
  for (HWND window = nullptr;
       (window = ::FindWindowExW(nullptr, window, L"tooltips_class32", nullptr)) != nullptr;) {
    if (::IsWindowVisible(window) != FALSE && TextOf(window).find(text) != std::wstring::npos) return true;
  }
  return false;
}

TEST_F(ShippedProgram, ACallComesThroughTheTelephonyLibrary) {
  const RunningProgram program;
  ASSERT_TRUE(program.Monitors());
  EXPECT_EQ(StoredSetting("DatabasePath"), DatabaseFile().string());
  EXPECT_TRUE(fs::exists(DatabaseFile()));
  EXPECT_THAT(program.Journal(), HasSubstr("lineOpen 0x00000000 0x00000006 0x00000004\nlineGetDevCaps"));

  EXPECT_EQ(program.Ask("ring 602111222"), "ok\n0x101\n");
  const HWND card = program.AwaitWindow(kUnknownCaller);
  ASSERT_NE(card, nullptr);
  EXPECT_NE(ChildOf(card, L"Edit", L"602111222"), nullptr);
  EXPECT_TRUE(Eventually([] { return BalloonShows(L"602111222"); }));

  program.Ask("answer");
  EXPECT_TRUE(Eventually([&] { return ::IsWindowEnabled(ChildOf(card, L"ComboBox")) != FALSE; }));
  program.Ask("hang-up");
  EXPECT_TRUE(Eventually([&] { return program.FindVisible(kUnknownCaller) == nullptr; }));
  EXPECT_THAT(program.Journal(), HasSubstr("lineDeallocateCall 0x00000101"));
}

TEST_F(ShippedProgram, AClickOnTheIconReachesItAlsoInANewTaskBar) {
  const RunningProgram program;
  ASSERT_TRUE(program.Monitors());
  // What a new task bar does: it knows no icons, and tells everybody that it is there.
  ASSERT_TRUE(TellTaskBar(NIM_DELETE, program));
  ASSERT_FALSE(TellTaskBar(NIM_MODIFY, program));
  ::PostMessageW(HWND_BROADCAST, ::RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
  ASSERT_TRUE(Eventually([&] { return TellTaskBar(NIM_MODIFY, program); }));
  // The only icon is the last thing in the bar.
  constexpr int kHalfIcon = 12;
  RECT bar{};
  ::GetWindowRect(::FindWindowW(L"Shell_TrayWnd", nullptr), &bar);
  ::SetCursorPos(bar.right - kHalfIcon, (bar.top + bar.bottom) / 2);
  ::mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
  ::mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
  EXPECT_NE(program.AwaitWindow(kMainWindow), nullptr);
}

TEST_F(ShippedProgram, AMessageBoxTellsOfAReadOnlyDatabaseAndIsAnswered) {
  MakeContacts("contact Name=\"Jan\" Phone1=\"1\"\n");
  ::SetFileAttributesW(DatabaseFile().c_str(), FILE_ATTRIBUTE_READONLY);
  const RunningProgram program;
  EXPECT_THAT(program.AwaitBox(), HasSubstr(L"CTIDB.mdb is read only."));
  program.AnswerBox();
  EXPECT_EQ(program.Ask("status"), "ok\ninitialised line-closed\n");
  EXPECT_TRUE(program.Runs());
}

TEST_F(ShippedProgram, ASecondStartSaysSoAndBringsTheFirstToTheFront) {
  const RunningProgram first;
  ASSERT_TRUE(first.Monitors());
  const RunningProgram second;
  EXPECT_THAT(second.AwaitBox(), HasSubstr(L"Another instance of KESTRO CTI is already running"));
  second.AnswerBox();
  EXPECT_EQ(second.ExitStatus(), 0U);
  EXPECT_NE(first.AwaitWindow(kMainWindow), nullptr);
  EXPECT_TRUE(first.Monitors());
}

/// The dialling object of the tests; registered while this lives.
class DiallingObject {
 public:
  DiallingObject() {
    WriteRegistry(HKEY_CLASSES_ROOT, std::wstring(kProgramId) + L"\\CLSID", L"", kClass);
    WriteRegistry(HKEY_CLASSES_ROOT, ClassKey() + L"\\InprocServer32", L"",
                  (ProgramFolder() / "dial_com.dll").wstring());
    WriteRegistry(HKEY_CLASSES_ROOT, ClassKey() + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  }
  ~DiallingObject() {
    RemoveRegistryKey(HKEY_CLASSES_ROOT, kProgramId);
    RemoveRegistryKey(HKEY_CLASSES_ROOT, ClassKey());
  }
  DiallingObject(const DiallingObject&) = delete;
  DiallingObject& operator=(const DiallingObject&) = delete;

 private:
  static constexpr const wchar_t* kProgramId = L"CTI.DialCom";
  static constexpr const wchar_t* kClass = L"{6C3D0F64-2F0B-4E0C-9B52-3E6A0F0D7B11}";
  static std::wstring ClassKey() { return std::wstring(L"CLSID\\") + kClass; }
};

/// The empty file in which programs started from now on note what was dialled.
fs::path DialledNumbers() {
  fs::path file = fs::temp_directory_path() / "dialled.txt";
  fs::remove(file);
  ::SetEnvironmentVariableW(L"KESTRO_DIALLED_FILE", file.c_str());
  return file;
}

TEST_F(ShippedProgram, TheDiallingObjectIsCalled) {
  const fs::path dialled = DialledNumbers();
  MakeContacts("contact Name=\"Jan Novák\" Phone1=\"602 111 222\"\ncontact Name=\"Zero\" Phone1=\"0\"\n");

  const RunningProgram program;
  ASSERT_TRUE(program.Monitors());
  ClickIcon(program);
  const HWND window = program.AwaitWindow(kMainWindow);
  ASSERT_NE(window, nullptr);
  const HWND list = ChildOf(window, L"SysListView32");
  const HWND tools = ChildOf(window, L"ToolbarWindow32");
  const auto dial = [&](WPARAM row_key) {
    constexpr WPARAM kDialTool = 5;
    ::PostMessageW(list, WM_KEYDOWN, row_key, 0);
    ::PostMessageW(::GetParent(tools), WM_COMMAND, kDialTool, reinterpret_cast<LPARAM>(tools));
  };

  // Not registered, then registered; the object refuses the second contact's number.
  dial(VK_HOME);
  EXPECT_EQ(program.AwaitBox(), L"The dialing process failed.");
  program.AnswerBox();
  const DiallingObject object;
  dial(VK_HOME);
  EXPECT_TRUE(Eventually([&] { return ReadFile(dialled) == "602 111 222\r\n"; })) << ReadFile(dialled);
  dial(VK_END);
  EXPECT_EQ(program.AwaitBox(), L"The dialing process failed.");
  program.AnswerBox();
}

TEST_F(ShippedProgram, ALinkIsHandedToTheRunningProgramWhichAsks) {
  const fs::path dialled = DialledNumbers();
  const DiallingObject object;
  const RunningProgram program;
  ASSERT_TRUE(program.Monitors());
  // One that waits for an answer before it ends takes no links.
  const RunningProgram second;
  EXPECT_THAT(second.AwaitBox(), HasSubstr(L"already running"));
  const struct {
    std::wstring address;
    std::wstring box;
    int answer;
    std::string dialled;  // so far
  } cases[] = {
      {L"tel:%2B420-602.111222;ext=1",
       L"A link asks to dial +420602111222.\r\nDo you want to dial this number?", IDYES, "+420602111222\r\n"},
      {L"callto:603", L"A link asks to dial 603.\r\nDo you want to dial this number?", IDNO,
       "+420602111222\r\n"},
      {L"tel:*21*604%23", L"The link holds no telephone number that can be dialled.", 0, "+420602111222\r\n"},
  };
  for (const auto& one : cases) {
    const RunningProgram link({}, L"/dial " + one.address);
    EXPECT_EQ(link.ExitStatus(), 0U);
    EXPECT_EQ(program.AwaitBox(), one.box);
    program.AnswerBox(one.answer);
    EXPECT_TRUE(program.SaysNothing());
    EXPECT_EQ(ReadFile(dialled), one.dialled);
  }
}

TEST_F(ShippedProgram, ALinkWaitsForTheEndOfTheStart) {
  ResetUser("");
  const RunningProgram program;
  EXPECT_THAT(program.AwaitBox(), HasSubstr(L"Telephone line is not configured."));
  program.AnswerBox();
  const HWND settings = program.AwaitWindow(L"KESTRO CTI settings");
  const RunningProgram link({}, L"/dial tel:602111222");
  EXPECT_EQ(link.ExitStatus(), 0U);
  EXPECT_TRUE(program.SaysNothing());
  ::PostMessageW(ChildOf(settings, L"Button", L"Cancel"), BM_CLICK, 0, 0);
  EXPECT_THAT(program.AwaitBox(), HasSubstr(L"A link asks to dial 602111222."));
  EXPECT_EQ(program.FindVisible(L"KESTRO CTI settings"), nullptr);
}

TEST_F(ShippedProgram, ItEndsInOrderWithTheSession) {
  const RunningProgram program;
  ASSERT_TRUE(program.Monitors());
  const HWND listener = program.Listener();
  EXPECT_EQ(::SendMessageW(listener, WM_QUERYENDSESSION, 0, 0), TRUE);
  ::SendMessageW(listener, WM_ENDSESSION, FALSE, 0);  // the user thought better of it
  EXPECT_TRUE(program.Monitors());
  ::PostMessageW(listener, WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(program.ExitStatus(), 0U);
}

TEST_F(ShippedProgram, ItComesUpAndEndsOnRequest) {
  const RunningProgram program({}, L"/end-after-start");
  EXPECT_EQ(program.ExitStatus(), 0U);
}

}  // namespace
}  // namespace kestro::test
