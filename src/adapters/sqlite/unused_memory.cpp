#include "adapters/sqlite/unused_memory.h"

#include <cstdlib>  // any header of the C library tells which one it is

#include <sqlite3.h>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace kestro::adapters {
namespace {

constexpr sqlite3_int64 kWorthReturning = sqlite3_int64{16} * 1024 * 1024;  // bytes

}  // namespace

void ReturnUnusedMemory() {
  if (sqlite3_memory_highwater(0) - sqlite3_memory_used() < kWorthReturning) return;
  sqlite3_memory_highwater(1);  // counts from here on
#if defined(__GLIBC__)
  malloc_trim(0);
#endif
}

}  // namespace kestro::adapters
