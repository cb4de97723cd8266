// Adapters whose mistakes no scenario would show: records, encodings, files.

#include <windows.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <thread>

#include <gtest/gtest.h>

#include "adapters/win32/clipboard.h"
#include "adapters/win32/code_page.h"
#include "adapters/win32/event_poster.h"
#include "adapters/win32/file_dialogs.h"
#include "adapters/win32/instance_mutex.h"
#include "adapters/win32/notification_record.h"
#include "adapters/win32/registry_settings.h"
#include "adapters/win32/wide_text.h"
#include "adapters/win32/win32_file_system.h"
#include "adapters/win32/win32_growing_file.h"
#include "base/runtime_error.h"
#include "support/error_number.h"
#include "windows/support/running_program.h"
#include "windows/support/test_user.h"

namespace kestro::adapters {
namespace {

namespace fs = std::filesystem;

TEST(NotificationRecord, HasTheSizeOfItsGenerationAndKeepsItsFields) {
  const bool wide = sizeof(void*) == 8;
  const struct {
    std::uint32_t size;
    DWORD wide_size;
    DWORD narrow_size;
  } cases[] = {{504, 520, 504}, {488, 504, 488}, {88, 104, 88}, {87, 0, 0}, {0, 0, 0}};
  for (const auto& one : cases) {
    ports::NotificationRecord record;
    record.cbSize = one.size;
    EXPECT_EQ(NativeRecord(record, nullptr, nullptr).cbSize, wide ? one.wide_size : one.narrow_size)
        << one.size;
  }
  ports::NotificationRecord record;
  record.cbSize = 88;
  record.uID = 9;
  record.uTimeoutOrVersion = 5000;
  record.dwInfoFlags = 1;
  record.szTip.fill('t');
  record.szInfo.fill('i');
  record.szInfoTitle.fill('c');
  const NOTIFYICONDATAA oldest = NativeRecord(record, nullptr, nullptr);
  EXPECT_EQ(std::strlen(oldest.szTip), 63U);
  record.cbSize = 504;
  const NOTIFYICONDATAA native = NativeRecord(record, nullptr, nullptr);
  EXPECT_EQ(native.uID, 9U);
  EXPECT_EQ(native.uTimeout, 5000U);
  EXPECT_EQ(native.dwInfoFlags, 1U);
  EXPECT_EQ(native.szTip[127], 't');
  EXPECT_EQ(native.szInfo[255], 'i');
  EXPECT_EQ(native.szInfoTitle[63], 'c');
}

TEST(SystemCodePage, GivesEveryByteBackAndReplacesWhatItLacks) {
  const SystemCodePage code_page(SystemCodePage::kCentralEuropean);
  for (int value = 0; value < 256; ++value) {
    const std::string byte(1, static_cast<char>(value));
    EXPECT_EQ(code_page.FromText(code_page.ToText(byte)), byte) << value;
  }
  EXPECT_EQ(code_page.ToText("\xF8"), "ř");
  EXPECT_EQ(code_page.FromText("řΩ\xFF"
                               "a"),
            "\xF8??a");
}

TEST(RegistrySettings, KeepTextsAndReadNumbers) {
  constexpr const char* kKey = R"(Software\Kestro\Test)";
  const SystemCodePage code_page;
  RegistrySettings settings(code_page);
  test::RemoveRegistryKey(HKEY_CURRENT_USER, L"Software\\Kestro\\Test");
  EXPECT_EQ(settings.SetValue(kKey, "a", "1"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(settings.QueryValue(kKey, "a"), std::nullopt);
  EXPECT_EQ(settings.CreateKey(kKey), 0);
  for (const std::string text : {"", " ", "C:\\Data\\a b.mdb", "\xC3\xA9"}) {
    EXPECT_EQ(settings.SetValue(kKey, "a", text), 0);
    EXPECT_EQ(settings.QueryValue(kKey, "a"), text);
  }
  const DWORD number = 0xFFFFFFFF;
  const BYTE binary[] = {1, 2};
  ::RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Kestro\\Test", L"n", REG_DWORD, &number, sizeof(number));
  ::RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Kestro\\Test", L"b", REG_BINARY, binary, sizeof(binary));
  EXPECT_EQ(settings.QueryValue(kKey, "n"), "-1");
  EXPECT_EQ(settings.QueryValue(kKey, "b"), std::nullopt);
  test::RemoveRegistryKey(HKEY_CURRENT_USER, L"Software\\Kestro\\Test");
}

TEST(SecondStarts, OnlyNumbersOfLinksAreTaken) {
  HiddenWindow window(L"KESTRO CTI second starts test");
  std::vector<std::string> asked;
  ListenToSecondStarts(
      window, [] {}, [&](std::string number) { asked.push_back(std::move(number)); });
  const auto send = [&](ULONG_PTR kind, std::string text) {
    COPYDATASTRUCT data{kind, static_cast<DWORD>(text.size()), text.data()};
    return ::SendMessageW(window.handle(), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data)) != 0;
  };
  constexpr ULONG_PTR kDial = 0x4C414944;
  EXPECT_TRUE(send(kDial, "+420602111222"));
  EXPECT_TRUE(send(kDial, ""));
  for (const std::string text : {"*21", "602 111", "tel:1", "+", "1\n"})
    EXPECT_FALSE(send(kDial, text)) << text;
  for (const std::size_t size : {33U, 5000U}) EXPECT_FALSE(send(kDial, std::string(size, '1'))) << size;
  EXPECT_FALSE(send(kDial + 1, "602111222"));
  COPYDATASTRUCT without_data{kDial, 5, nullptr};
  EXPECT_EQ(0, ::SendMessageW(window.handle(), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&without_data)));
  EXPECT_EQ(0, ::SendMessageW(window.handle(), WM_COPYDATA, 0, 0));
  EXPECT_EQ(asked, (std::vector<std::string>{"+420602111222", ""}));
}

/// What other programs would paste.
std::wstring ClipboardText() {
  if (::OpenClipboard(nullptr) == FALSE) return L"(closed)";
  const HANDLE memory = ::GetClipboardData(CF_UNICODETEXT);
  std::wstring text = memory == nullptr ? L"(none)" : static_cast<const wchar_t*>(::GlobalLock(memory));
  if (memory != nullptr) ::GlobalUnlock(memory);
  ::CloseClipboard();
  return text;
}

TEST(Clipboard, TakesTextsUnlessAnotherProgramHoldsIt) {
  HiddenWindow window(L"KESTRO CTI clipboard test");
  HiddenWindow other(L"KESTRO CTI clipboard holder");
  Win32Clipboard clipboard(window);
  for (const std::string text : {"Jan Novák, \xF0\x9F\x98\x80\r\nsecond line", "", "last"}) {
    clipboard.SetText(text);
    EXPECT_EQ(ClipboardText(), ToWide(text));
  }
  ASSERT_TRUE(::OpenClipboard(other.handle()));
  clipboard.SetText("refused");
  ::CloseClipboard();
  EXPECT_EQ(ClipboardText(), L"last");
}

/// Types the name into the open file dialog of that title and presses the button, as soon as it is there.
void AnswerFileDialog(const wchar_t* title, const std::wstring& name, int button) {
  constexpr int kNameField = 1148;
  HWND dialog = nullptr;
  test::Eventually([&] {
    dialog = ::FindWindowW(L"#32770", title);
    return ::IsWindowVisible(dialog) != FALSE && ::GetDlgItem(dialog, kNameField) != nullptr;
  });
  ::SendMessageW(::GetDlgItem(dialog, kNameField), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
  ::PostMessageW(::GetDlgItem(dialog, button), BM_CLICK, 0, 0);
}

TEST(FileDialogs, DeliverWhatTheUserChooses) {
  const fs::path folder = fs::temp_directory_path() / L"kestro-dialog Ř";
  fs::create_directories(folder);
  std::ofstream(folder / "contacts.cvs") << "one";
  const std::string file = ToUtf8((folder / "contacts.cvs").wstring());
  Win32EventBoundary boundary;
  Win32FileDialogs dialogs(boundary);
  const struct {
    std::wstring name;
    int button;
    std::optional<std::string> chosen;
  } cases[] = {
      {L"contacts.cvs", IDOK, file},
      {(folder / "contacts.cvs").wstring(), IDOK, file},
      {L"contacts.cvs", IDCANCEL, std::nullopt},
  };
  for (const auto& one : cases) {
    std::thread user([&] { AnswerFileDialog(L"Pick one", one.name, one.button); });
    EXPECT_EQ(dialogs.OpenFile({"Pick one", "Lists|*.cvs|", ".cvs", ToUtf8(folder.wstring()), "x.cvs"}),
              one.chosen);
    user.join();
  }
  // The end of the process closes it.
  HiddenWindow window(L"KESTRO CTI file dialog test");
  EventPoster post(window, [&](const std::function<void()>& task) {
    boundary.Run(Win32EventBoundary::Cause::kSystem, task);
  });
  post([] { throw base::ProcessEnded{}; });
  EXPECT_THROW(static_cast<void>(dialogs.OpenFile({"Pick one", "", "", "", ""})), base::ProcessEnded);
  fs::remove_all(folder);
}

TEST(Win32FileSystem, CopiesWholeFilesAndSaysWhyNot) {
  const fs::path folder = fs::temp_directory_path() / "kestro-files";
  fs::remove_all(folder);
  fs::create_directories(folder);
  const auto path = [&](const char* name) { return (folder / fs::path(name)).string(); };
  std::ofstream(folder / "a") << "one";
  std::ofstream(folder / "b") << "two";
  Win32FileSystem files(folder.string(), "");
  ::SetFileAttributesW((folder / "a").c_str(), FILE_ATTRIBUTE_READONLY);

  EXPECT_EQ(test::ErrorNumberOf([&] { files.CopyFileTo(path("a"), path("b"), false); }),
            base::kFileAlreadyExists);
  EXPECT_EQ(test::ErrorNumberOf([&] { files.CopyFileTo(path("none"), path("c"), true); }),
            base::kFileNotFound);
  EXPECT_EQ(test::ErrorNumberOf([&] { files.CopyFileTo(path("b"), path("no\\c"), true); }),
            base::kPathNotFound);
  EXPECT_EQ(test::ErrorNumberOf([&] { files.CopyFileTo(path("b"), path("a"), true); }),
            base::kPathAccessError);
  EXPECT_EQ(test::ErrorNumberOf([&] { files.CopyFileTo(path("."), path("c"), true); }),
            base::kPathAccessError);
  EXPECT_EQ(test::ErrorNumberOf([&] { files.CreateFolder(folder.string()); }), base::kFileAlreadyExists);
  EXPECT_EQ(test::ErrorNumberOf([&] { static_cast<void>(files.UserDataFolder()); }), base::kPathNotFound);
  EXPECT_FALSE(files.FileExists(path("c")));

  files.CopyFileTo(path("a"), path("b"), true);
  EXPECT_EQ(files.ReadStart(path("b"), 9), "one");
  EXPECT_EQ(files.FileAttributes(path("a")) & 1, 1);
  EXPECT_EQ(files.FileAttributes(path("b")) & 1, 0) << "the copy is write-protected, too";
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 2) << "an unfinished copy is left";
  ::SetFileAttributesW((folder / "a").c_str(), FILE_ATTRIBUTE_NORMAL);
  fs::remove_all(folder);
}

TEST(Win32GrowingFile, GrowsIsRenamedAndRefusesWhatIsNoFile) {
  const fs::path folder = fs::temp_directory_path() / "kestro-growing-file";
  fs::remove_all(folder);
  const std::string place = folder.string() + "\\\xC5\xBDlu\xC5\xA5";
  const std::string path = place + "\\file";
  const Win32FileSystem files("", "");
  Win32GrowingFile file;
  file.MakeFolder(folder.string());
  file.MakeFolder(place);
  file.MakeFolder(place);
  EXPECT_EQ(file.Open(path), 0U);
  file.Append("one\r\n");
  EXPECT_EQ(files.ReadStart(path, 9), "one\r\n") << "others may read it";
  EXPECT_EQ(file.Open(path), 5U);
  file.Append("two\r\n");
  EXPECT_EQ(test::ErrorNumberOf([&] { file.Rename(path, path + ".1"); }), base::kPathAccessError)
      << "it is open";
  for (int i = 0; i < 2; ++i) {
    file.Close();
    file.Rename(path, path + ".1");
    file.Rename(path, path + ".1");  // there is none
    EXPECT_EQ(files.ReadStart(path + ".1", 99), i == 0 ? "one\r\ntwo\r\n" : "new");
    EXPECT_EQ(file.Open(path), 0U);
    file.Append("new");
  }
  EXPECT_EQ(test::ErrorNumberOf([&] { file.Open(place); }), base::kPathAccessError);
  EXPECT_EQ(test::ErrorNumberOf([&] { file.Open(path + "\\none\\file"); }), base::kPathNotFound);
  fs::remove_all(folder);
}

}  // namespace
}  // namespace kestro::adapters
