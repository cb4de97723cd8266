#pragma once

namespace kestro::adapters {

/// Gives memory that the engine does not use any more back to the system. Sorting a long list takes tens of
/// megabytes in small pieces, and the C library keeps such pieces when they are freed. Does nothing, at next
/// to no cost, unless the engine has freed much since the last time.
void ReturnUnusedMemory();

}  // namespace kestro::adapters
