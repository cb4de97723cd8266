#include "adapters/win32/clipboard.h"

#include <algorithm>

#include "adapters/win32/wide_text.h"

namespace kestro::adapters {
namespace {

constexpr int kTries = 10;
constexpr DWORD kPauseMs = 20;

/// The clipboard while it is open.
class OpenClipboard {
 public:
  explicit OpenClipboard(HWND owner) {
    for (int count = 0; count < kTries && !open_; ++count) {
      if (count > 0) ::Sleep(kPauseMs);
      open_ = ::OpenClipboard(owner) != FALSE;
    }
  }
  ~OpenClipboard() {
    if (open_) ::CloseClipboard();
  }
  OpenClipboard(const OpenClipboard&) = delete;
  OpenClipboard& operator=(const OpenClipboard&) = delete;
  explicit operator bool() const { return open_; }

 private:
  bool open_ = false;
};

}  // namespace

void Win32Clipboard::SetText(std::string_view text) {
  const std::wstring wide = ToWide(text);
  const OpenClipboard clipboard(window_.handle());
  if (!clipboard) return;
  const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, (wide.size() + 1) * sizeof(wchar_t));
  if (memory == nullptr) return;
  std::copy_n(wide.c_str(), wide.size() + 1, static_cast<wchar_t*>(::GlobalLock(memory)));
  ::GlobalUnlock(memory);
  ::EmptyClipboard();
  // From here on the memory is the clipboard's, unless it does not take it.
  if (::SetClipboardData(CF_UNICODETEXT, memory) == nullptr) ::GlobalFree(memory);
}

}  // namespace kestro::adapters
