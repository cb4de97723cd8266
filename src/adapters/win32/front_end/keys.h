#pragma once

#include <windows.h>

#include <optional>

#include "forms/key.h"

namespace kestro::adapters::win32 {

/// The virtual key of a key's name.
[[nodiscard]] WORD VirtualKey(const forms::Key& key);
/// The key of a WM_KEYDOWN or WM_SYSKEYDOWN with the modifiers that are down now;
/// nothing for one that forms::Key has no name for.
[[nodiscard]] std::optional<forms::Key> KeyOf(WPARAM virtual_key);

}  // namespace kestro::adapters::win32
