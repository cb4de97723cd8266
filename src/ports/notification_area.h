#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace kestro::ports {

using WindowHandle = std::uint32_t;
using IconHandle = std::uint32_t;

/// The notification record in its ANSI form with 32-bit handles: byte for byte
/// what the shell of the system's home takes at a size of 504 (its first 488 or
/// 88 bytes for older shells). Texts are bytes of the ANSI code page; one that
/// fills its field has no terminating zero.
struct NotificationRecord {
  std::uint32_t cbSize = 0;
  WindowHandle hWnd = 0;
  std::uint32_t uID = 0;
  std::uint32_t uFlags = 0;
  std::uint32_t uCallbackMessage = 0;
  IconHandle hIcon = 0;
  std::array<char, 128> szTip{};
  std::uint32_t dwState = 0;
  std::uint32_t dwStateMask = 0;
  std::array<char, 256> szInfo{};
  std::uint32_t uTimeoutOrVersion = 0;  // one union: milliseconds or NOTIFYICON_VERSION
  std::array<char, 64> szInfoTitle{};
  std::uint32_t dwInfoFlags = 0;
  std::array<std::uint8_t, 16> guidItem{};
};
static_assert(sizeof(NotificationRecord) == 504);
static_assert(offsetof(NotificationRecord, szTip) == 24);
static_assert(offsetof(NotificationRecord, szInfo) == 160);
static_assert(offsetof(NotificationRecord, szInfoTitle) == 420);

enum NotificationMessage : std::uint32_t { kNimAdd = 0, kNimModify = 1, kNimDelete = 2, kNimSetVersion = 4 };
enum NotificationFlag : std::uint32_t { kNifMessage = 1, kNifIcon = 2, kNifTip = 4, kNifInfo = 16 };
inline constexpr std::uint32_t kNiifInfo = 1;
inline constexpr std::uint32_t kNotifyIconVersion = 3;

/// Codes that the icon sends back.
enum IconEvent : std::uint32_t {
  kLeftButtonUp = 514,
  kLeftDoubleClick = 515,
  kRightButtonUp = 517,
  kBalloonUserClick = 1029,
};

/// Receives the icon's events on the user-interface thread. Must not throw.
using IconCallback = std::function<void(std::uint32_t code)>;

/// The shell's notification area.
class NotificationArea {
 public:
  virtual ~NotificationArea() = default;
  /// The desktop has a notification area; where it has none the requests below do nothing.
  [[nodiscard]] virtual bool Available() = 0;
  /// Loads an icon file (system path) and returns its handle, never 0; the
  /// adapter owns the image. Raises 53 for a missing and 481 for a broken file.
  virtual IconHandle LoadIconFile(std::string_view path) = 0;
  /// Hands a request over; false when the shell refused it.
  virtual bool NotifyIcon(NotificationMessage message, const NotificationRecord& record) = 0;
  /// Where the events of the icon go. One receiver; an empty one stops delivery.
  virtual void SetCallback(IconCallback callback) = 0;
};

}  // namespace kestro::ports
