#include "adapters/win32/notification_record.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace kestro::adapters {
namespace {

// Sizes of the record by the shell's version.
constexpr std::uint32_t kShell6Size = 504;
constexpr std::uint32_t kShell5Size = 488;
constexpr std::uint32_t kOldestSize = 88;
constexpr std::size_t kOldestTipWidth = 64;

DWORD NativeSize(std::uint32_t size) {
  switch (size) {
    case kShell6Size:
      return NOTIFYICONDATAA_V3_SIZE;
    case kShell5Size:
      return NOTIFYICONDATAA_V2_SIZE;
    case kOldestSize:
      return NOTIFYICONDATAA_V1_SIZE;
    default:
      return 0;
  }
}

template <std::size_t kWidth>
void CopyField(CHAR (&field)[kWidth], const std::array<char, kWidth>& text) {
  std::copy(text.begin(), text.end(), field);
}

}  // namespace

NOTIFYICONDATAA NativeRecord(const ports::NotificationRecord& record, HWND window, HICON icon) {
  NOTIFYICONDATAA native{};
  native.cbSize = NativeSize(record.cbSize);
  native.hWnd = window;
  native.uID = record.uID;
  native.uFlags = record.uFlags;
  native.uCallbackMessage = record.uCallbackMessage;
  native.hIcon = icon;
  CopyField(native.szTip, record.szTip);
  if (record.cbSize == kOldestSize) native.szTip[kOldestTipWidth - 1] = '\0';
  native.dwState = record.dwState;
  native.dwStateMask = record.dwStateMask;
  CopyField(native.szInfo, record.szInfo);
  native.uTimeout = record.uTimeoutOrVersion;
  CopyField(native.szInfoTitle, record.szInfoTitle);
  native.dwInfoFlags = record.dwInfoFlags;
  std::memcpy(&native.guidItem, record.guidItem.data(), record.guidItem.size());
  return native;
}

}  // namespace kestro::adapters
