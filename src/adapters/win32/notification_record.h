#pragma once

#include <windows.h>

#include <shellapi.h>

#include "ports/notification_area.h"

namespace kestro::adapters {

/// What a record of the port stands for on this machine, where handles may be
/// wider and the structure therefore larger: every field at its own place, and
/// in cbSize the size that the same generation of the structure has here (of the
/// record's first 488 bytes, for instance, 504). A record of an unknown
/// size gives cbSize 0. Texts of the oldest generation are cut to its field.
[[nodiscard]] NOTIFYICONDATAA NativeRecord(const ports::NotificationRecord& record, HWND window, HICON icon);

}  // namespace kestro::adapters
