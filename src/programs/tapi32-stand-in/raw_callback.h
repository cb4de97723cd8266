#pragma once

#include <windows.h>

#include "ports/line_functions.h"

namespace kestro::programs {

/// The callback as the telephony library's users register it.
using RawCallback = void(CALLBACK*)(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR parameter1,
                                    DWORD_PTR parameter2, DWORD_PTR parameter3);

/// Calls it as the library does: numbers below zero come in the width of a pointer.
inline void CallRaw(RawCallback callback, const ports::LineMessage& message) {
  const auto wide = [](std::int32_t value) { return static_cast<DWORD_PTR>(static_cast<LONG_PTR>(value)); };
  if (callback == nullptr) return;
  callback(static_cast<DWORD>(message.device), static_cast<DWORD>(message.message), wide(message.instance),
           wide(message.parameter1), wide(message.parameter2), wide(message.parameter3));
}

}  // namespace kestro::programs
