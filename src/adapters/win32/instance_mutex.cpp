#include "adapters/win32/instance_mutex.h"

#include "core/dial_link.h"

namespace kestro::adapters {
namespace {

constexpr const wchar_t* kMutexName = L"Local\\KESTRO CTI is running";
constexpr ULONG_PTR kDialRequest = 0x4C414944;
constexpr UINT kAnswerWithinMs = 5000;

/// Number of the window message that asks the running program to come to the front.
UINT ActivationMessage() { return ::RegisterWindowMessageW(L"KESTRO CTI, come to the front"); }

/// Windows that running programs listen at. This process may have such a window, too; it is none of them.
template <class Action>
void ForRunningPrograms(const Action& action) {
  for (HWND window = nullptr;
       (window = ::FindWindowExW(nullptr, window, InstanceMutex::kWindowClass, nullptr)) != nullptr;) {
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process == ::GetCurrentProcessId()) continue;
    ::AllowSetForegroundWindow(process);
    action(window);
  }
}

/// The number of a request; nothing for one that is none.
std::optional<std::string> LinkNumberOf(const COPYDATASTRUCT* data) {
  if (data == nullptr || data->dwData != kDialRequest || data->cbData > core::kMostLinkDigits + 1) return {};
  if (data->lpData == nullptr && data->cbData > 0) return {};
  const std::string number(static_cast<const char*>(data->lpData), data->cbData);
  if (!number.empty() && !core::IsLinkNumber(number)) return {};
  return number;
}

}  // namespace

bool InstanceMutex::AnotherInstanceRuns() {
  if (mutex_) return false;
  Handle mutex = OwnHandle(::CreateMutexW(nullptr, FALSE, kMutexName));
  // A mutex that exists but may not be opened was made by the same user with more rights.
  if (!mutex || ::GetLastError() == ERROR_ALREADY_EXISTS) return true;
  mutex_ = std::move(mutex);
  return false;
}

void InstanceMutex::BringOtherToFront() {
  ForRunningPrograms([](HWND window) { ::PostMessageW(window, ActivationMessage(), 0, 0); });
}

bool AskRunningProgramToDial(std::string_view link_number) {
  std::string number(link_number);
  COPYDATASTRUCT data{kDialRequest, static_cast<DWORD>(number.size()), number.data()};
  bool taken = false;
  ForRunningPrograms([&](HWND window) {
    DWORD_PTR answer = 0;
    if (!taken && ::SendMessageTimeoutW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data),
                                        SMTO_ABORTIFHUNG, kAnswerWithinMs, &answer) != 0) {
      taken = answer != 0;
    }
  });
  return taken;
}

void ListenToSecondStarts(HiddenWindow& window, std::function<void()> on_activate,
                          std::function<void(std::string link_number)> on_dial) {
  window.On(ActivationMessage(), [on_activate = std::move(on_activate)](WPARAM, LPARAM) -> LRESULT {
    on_activate();
    return 0;
  });
  window.On(WM_COPYDATA, [on_dial = std::move(on_dial)](WPARAM, LPARAM data) -> LRESULT {
    auto number = LinkNumberOf(reinterpret_cast<const COPYDATASTRUCT*>(data));
    if (!number) return FALSE;
    on_dial(std::move(*number));
    return TRUE;
  });
}

}  // namespace kestro::adapters
