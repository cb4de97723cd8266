// The shipped program against the interfaces of the system: what they see of it, what it does about them.

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

#include <gtest/gtest.h>

#include "windows/support/running_program.h"
#include "windows/support/test_user.h"

namespace kestro::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

constexpr const wchar_t* kMainWindow = L"Kestro CTI";
constexpr const wchar_t* kUnknownCaller = L"Unknown caller";
constexpr UINT kIconMessage = 512;
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

HWND TaskBar() { return ::FindWindowW(L"Shell_TrayWnd", nullptr); }

/// The task bar's process keeps a tip window for every icon in the notification area (and one for balloons).
int TipWindows() {
  DWORD shell = 0;
  ::GetWindowThreadProcessId(TaskBar(), &shell);
  int count = 0;
  for (HWND window = nullptr;
       (window = ::FindWindowExW(nullptr, window, L"tooltips_class32", nullptr)) != nullptr;) {
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    count += process == shell ? 1 : 0;
  }
  return count;
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

TEST_F(ShippedProgram, AClickOnTheIconReachesIt) {
  const int without_icon = TipWindows();
  const RunningProgram program;
  ASSERT_TRUE(program.Monitors());
  ASSERT_TRUE(Eventually([&] { return TipWindows() > without_icon; }));
  // The only icon is the last thing in the bar.
  constexpr int kHalfIcon = 12;
  RECT bar{};
  ::GetWindowRect(TaskBar(), &bar);
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

TEST_F(ShippedProgram, TheDiallingObjectIsCalled) {
  constexpr const wchar_t* kProgramId = L"CTI.DialCom";
  constexpr const wchar_t* kClass = L"{6C3D0F64-2F0B-4E0C-9B52-3E6A0F0D7B11}";
  const std::wstring class_key = std::wstring(L"CLSID\\") + kClass;
  const fs::path dialled = fs::temp_directory_path() / "dialled.txt";
  fs::remove(dialled);
  ::SetEnvironmentVariableW(L"KESTRO_DIALLED_FILE", dialled.c_str());
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
  WriteRegistry(HKEY_CLASSES_ROOT, std::wstring(kProgramId) + L"\\CLSID", L"", kClass);
  WriteRegistry(HKEY_CLASSES_ROOT, class_key + L"\\InprocServer32", L"",
                (ProgramFolder() / "dial_com.dll").wstring());
  WriteRegistry(HKEY_CLASSES_ROOT, class_key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  dial(VK_HOME);
  EXPECT_TRUE(Eventually([&] { return ReadFile(dialled) == "602 111 222\r\n"; })) << ReadFile(dialled);
  dial(VK_END);
  EXPECT_EQ(program.AwaitBox(), L"The dialing process failed.");
  program.AnswerBox();
  RemoveRegistryKey(HKEY_CLASSES_ROOT, kProgramId);
  RemoveRegistryKey(HKEY_CLASSES_ROOT, class_key);
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
