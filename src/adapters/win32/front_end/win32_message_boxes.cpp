#include "adapters/win32/front_end/win32_message_boxes.h"

#include "adapters/win32/wide_text.h"

namespace kestro::adapters {
namespace {

using ports::BoxAnswer;

constexpr UINT kPressMessage = WM_APP + 1;
constexpr UINT_PTR kRetryTimer = 1;
constexpr UINT kRetryMs = 10;

BoxAnswer AnswerOf(int button) {
  switch (button) {
    case IDYES:
      return BoxAnswer::kYes;
    case IDNO:
      return BoxAnswer::kNo;
    case IDCANCEL:
      return BoxAnswer::kCancel;
    default:
      return BoxAnswer::kOk;
  }
}

int ButtonOf(BoxAnswer answer) {
  switch (answer) {
    case BoxAnswer::kYes:
      return IDYES;
    case BoxAnswer::kNo:
      return IDNO;
    case BoxAnswer::kCancel:
      return IDCANCEL;
    case BoxAnswer::kOk:
      break;
  }
  return IDOK;
}

/// Notes a message box that can be answered now in the window that `found` points to.
BOOL CALLBACK NoteOpenBox(HWND window, LPARAM found) noexcept {
  wchar_t name[16]{};
  GetClassNameW(window, name, 16);
  const bool dialog = lstrcmpW(name, L"#32770") == 0;
  if (!dialog || IsWindowVisible(window) == 0 || IsWindowEnabled(window) == 0) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

/// The message box of this thread that can be answered now, nullptr when there is none.
HWND OpenBox() {
  HWND found = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), &NoteOpenBox, reinterpret_cast<LPARAM>(&found));
  return found;
}

}  // namespace

int Win32MessageBoxes::Open(std::string_view text, UINT style) {
  // All windows of the program wait, whichever of them it belongs to.
  constexpr UINT kInFront = MB_TASKMODAL | MB_TOPMOST;
  const Win32EventBoundary::ForeignLoop loop(boundary_);
  return MessageBoxW(GetActiveWindow(), ToWide(text).c_str(), ToWide(title_).c_str(), style | kInFront);
}

BoxAnswer Win32MessageBoxes::Show(std::string_view text, int style) {
  boundary_.ThrowIfEnded();
  BoxOpens(text, style);
  const int button = Open(text, static_cast<UINT>(style));
  boundary_.ThrowIfEnded();
  return AnswerOf(button);
}

Win32AnsweringMessageBoxes::Win32AnsweringMessageBoxes(Win32EventBoundary& boundary, std::string_view title,
                                                       Answerer answerer)
    : Win32MessageBoxes(boundary, title), answerer_(std::move(answerer)), waiter_(L"KestroBoxAnswers") {
  const auto press = [this](WPARAM /*wparam*/, LPARAM /*lparam*/) -> LRESULT {
    KillTimer(waiter_.handle(), kRetryTimer);
    Press();
    return 0;
  };
  waiter_.On(kPressMessage, press);
  waiter_.On(WM_TIMER, press);
}

void Win32AnsweringMessageBoxes::BoxOpens(std::string_view text, int style) {
  due_.emplace_back([this, text = std::string(text), style] { return answerer_(text, style); });
  PostMessageW(waiter_.handle(), kPressMessage, 0, 0);
}

void Win32AnsweringMessageBoxes::Press() {
  if (due_.empty()) return;
  const HWND box = OpenBox();
  if (box == nullptr) {
    SetTimer(waiter_.handle(), kRetryTimer, kRetryMs, nullptr);
    return;
  }
  const auto answer = std::move(due_.back());
  due_.pop_back();
  boundary().Run(Win32EventBoundary::Cause::kUser, [&] {
    HWND button = GetDlgItem(box, ButtonOf(answer()));
    if (button == nullptr) button = FindWindowExW(box, nullptr, L"Button", nullptr);
    SendMessageW(button, BM_CLICK, 0, 0);
  });
}

}  // namespace kestro::adapters
