#include "windows/support/running_program.h"

#include <array>
#include <chrono>
#include <stdexcept>
#include <thread>

#include "adapters/win32/control_client.h"
#include "adapters/win32/instance_mutex.h"
#include "adapters/win32/wide_text.h"
#include "base/runtime_error.h"
#include "windows/support/test_user.h"

namespace kestro::test {
namespace {

using std::chrono::milliseconds;

constexpr DWORD kPatienceMs = 10'000;
constexpr DWORD kEndPatienceMs = 3000;
constexpr std::uint16_t kFirstPort = 48'200;
constexpr UINT kTextTimeoutMs = 2000;

/// A port of its own for every program: a late answer can only be the right one's.
std::uint16_t NextPort() {
  static std::uint16_t port = kFirstPort;
  return port++;
}

struct Search {
  const std::function<bool(HWND)>& suits;
  HWND found = nullptr;
};

BOOL CALLBACK Look(HWND window, LPARAM search) {
  auto& wanted = *reinterpret_cast<Search*>(search);
  if (!wanted.suits(window)) return TRUE;
  wanted.found = window;
  return FALSE;
}

std::wstring ClassOf(HWND window) {
  std::array<wchar_t, 256> name{};
  ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return name.data();
}

}  // namespace

bool Eventually(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + milliseconds(kPatienceMs);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(milliseconds(20));
  }
  return true;
}

std::wstring TextOf(HWND window) {
  std::array<wchar_t, 1024> text{};
  DWORD_PTR size = 0;
  // A window of another process that hangs must not hang the tests.
  ::SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                        SMTO_ABORTIFHUNG, kTextTimeoutMs, &size);
  return text.data();
}

HWND ChildOf(HWND parent, const std::wstring& window_class, const std::wstring& text) {
  const std::function<bool(HWND)> suits = [&](HWND window) {
    return ClassOf(window) == window_class && (text.empty() || TextOf(window) == text);
  };
  Search search{suits};
  ::EnumChildWindows(parent, &Look, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

RunningProgram::RunningProgram(const std::string& script, const std::wstring& arguments) : port_(NextPort()) {
  ::SetEnvironmentVariableA("KESTRO_TAPI_PORT", std::to_string(port_).c_str());
  ::SetEnvironmentVariableA("KESTRO_TAPI_SCRIPT", script.c_str());
  std::wstring command = L"\"" + (ProgramFolder() / "CTI.exe").wstring() + L"\" " + arguments;
  STARTUPINFOW start{};
  start.cb = sizeof(start);
  PROCESS_INFORMATION process{};
  if (::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                       &process) == FALSE) {
    throw std::runtime_error("the program cannot be started");
  }
  ::CloseHandle(process.hThread);
  process_ = adapters::OwnHandle(process.hProcess);
  id_ = process.dwProcessId;
}

RunningProgram::~RunningProgram() {
  if (!Runs()) return;
  // In order, so that its icon goes: the next test looks for its own.
  ::PostMessageW(Listener(), WM_ENDSESSION, TRUE, 0);
  if (::WaitForSingleObject(process_.get(), kEndPatienceMs) == WAIT_OBJECT_0) return;
  ::TerminateProcess(process_.get(), 1);
  ::WaitForSingleObject(process_.get(), kPatienceMs);
}

std::string RunningProgram::Ask(const std::string& request) const {
  try {
    return adapters::AskControlServer(port_, request).value_or("");
  } catch (const base::RuntimeError&) {
    return {};
  }
}

bool RunningProgram::Monitors() const {
  return Eventually([this] { return Ask("status") == "ok\ninitialised line-open\n"; });
}

bool RunningProgram::Runs() const { return ::WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT; }

std::optional<DWORD> RunningProgram::ExitStatus() const {
  DWORD status = 0;
  if (::WaitForSingleObject(process_.get(), kPatienceMs) != WAIT_OBJECT_0) return std::nullopt;
  ::GetExitCodeProcess(process_.get(), &status);
  return status;
}

HWND RunningProgram::FindWindowWhere(const std::function<bool(HWND)>& suits) const {
  const std::function<bool(HWND)> own = [&](HWND window) {
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    return process == id_ && suits(window);
  };
  Search search{own};
  ::EnumWindows(&Look, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND RunningProgram::FindVisible(const std::wstring& caption) const {
  return FindWindowWhere(
      [&](HWND window) { return ::IsWindowVisible(window) != FALSE && TextOf(window) == caption; });
}

HWND RunningProgram::AwaitWindow(const std::wstring& caption) const {
  HWND found = nullptr;
  Eventually([&] { return (found = FindVisible(caption)) != nullptr; });
  return found;
}

HWND RunningProgram::Listener() const {
  return FindWindowWhere(
      [](HWND window) { return ClassOf(window) == adapters::InstanceMutex::kWindowClass; });
}

HWND RunningProgram::FindVisibleOfClass(const std::wstring& window_class) const {
  return FindWindowWhere(
      [&](HWND window) { return ::IsWindowVisible(window) != FALSE && ClassOf(window) == window_class; });
}

std::wstring RunningProgram::AwaitBox() const {
  constexpr int kTextId = 0xFFFF;
  std::wstring text;
  Eventually([&] {
    const HWND box = FindBox();
    if (box != nullptr) text = TextOf(::GetDlgItem(box, kTextId));
    return !text.empty();
  });
  return text;
}

void RunningProgram::AnswerBox(int button) const {
  const HWND box = FindBox();
  ::PostMessageW(button == 0 ? ChildOf(box, L"Button") : ::GetDlgItem(box, button), BM_CLICK, 0, 0);
  Eventually([box] { return ::IsWindow(box) == FALSE; });
}

bool RunningProgram::SaysNothing() const {
  // The reply comes from the event loop, behind what waited there.
  return !Ask("status").empty() && FindBox() == nullptr;
}

void RunningProgram::ChooseFromIcon(wchar_t access_key) const {
  ::PostMessageW(Listener(), kIconMessage, 1, WM_RBUTTONUP);
  HWND menu = nullptr;
  Eventually([&] { return (menu = FindVisibleOfClass(L"#32768")) != nullptr; });
  ::PostMessageW(menu, WM_CHAR, access_key, 0);
  Eventually([menu] { return ::IsWindow(menu) == FALSE; });
}

}  // namespace kestro::test
