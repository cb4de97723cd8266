#pragma once

#include <windows.h>

#include <string>

#include "forms/key.h"

namespace kestro::adapters::win32 {

// Messages as the user's hands make them, for one native control.

/// The left button down and up again. The window may be gone afterwards.
void PressMouse(HWND window, POINT where);
/// The left button twice on the same place, where it has just been pressed once.
void DoubleClickMouse(HWND window, POINT where);
/// Selects everything in a field and types over it.
void TypeOver(HWND field, const std::wstring& text);
/// Takes an item of a closed drop-down list.
void ChooseItem(HWND list, int index);

/// Holds the modifiers of a key down for as long as it lives.
class HeldModifiers {
 public:
  explicit HeldModifiers(const forms::Key& key);
  ~HeldModifiers();
  HeldModifiers(const HeldModifiers&) = delete;
  HeldModifiers& operator=(const HeldModifiers&) = delete;

 private:
  BYTE before_[256]{};
};

/// Puts the press and the release of a key into the queue of messages.
void PostKey(HWND window, const forms::Key& key);

}  // namespace kestro::adapters::win32
