#pragma once

#include <windows.h>

#include <string>

namespace kestro::adapters::win32 {

/// Writes a picture (PNG) of a shown window with its frame; false when it cannot be written.
[[nodiscard]] bool SaveScreenshot(HWND window, const std::wstring& file);

}  // namespace kestro::adapters::win32
