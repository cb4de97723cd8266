#pragma once

#include <utility>

#include <sqlite3.h>

#include "jet/error.h"

namespace kestro::adapters {

/// What a failure of the file means to a reader: "The file is in use by another program.".
[[nodiscard]] std::string Describe(const jet::Error& error);

/// SQLite's code for the exception being handled; its text goes to `message`, which SQLite frees.
[[nodiscard]] int ResultOfException(char*& message);

/// Runs `work`; no exception may pass through SQLite.
template <class Work>
int Guarded(char*& message, Work work) {
  try {
    std::move(work)();
    return SQLITE_OK;
  } catch (...) {
    return ResultOfException(message);
  }
}

}  // namespace kestro::adapters
