#pragma once

#include <cstddef>
#include <optional>

#include "jet/bytes.h"

namespace kestro::jet {

/// The bitmap of an index page: bit i is set when an entry ends at byte i of the entry area.
inline constexpr std::size_t kEntryBitsAt = 27;
inline constexpr std::size_t kEntryAreaAt = 480;
inline constexpr std::size_t kEntryAreaSize = 3616;

/// The first end behind `position`; nothing when there is none.
std::optional<std::size_t> NextEntryEnd(ByteSpan page, std::size_t position);

/// The last end at or before `position`; 0 when there is none, which is where the first entry starts.
std::size_t EntryStartAt(ByteSpan page, std::size_t position);

bool IsEntryEnd(ByteSpan page, std::size_t position);

/// An entry of `size` bytes comes at `start`: the ends behind it move up.
void InsertEntryBits(MutableBytes page, std::size_t start, std::size_t size);

/// The entry [start, end) goes: the ends behind it move down.
void RemoveEntryBits(MutableBytes page, std::size_t start, std::size_t end);

}  // namespace kestro::jet
