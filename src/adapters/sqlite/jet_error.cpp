#include "adapters/sqlite/jet_error.h"

#include <exception>
#include <new>
#include <string>

namespace kestro::adapters {
namespace {

using jet::ErrorKind;

/// SQLITE_IOERR, SQLITE_FULL and SQLITE_NOMEM make SQLite roll back by itself; after a constraint it undoes
/// the statement.
int ResultOf(ErrorKind kind) {
  switch (kind) {
    case ErrorKind::kBusy:
      return SQLITE_BUSY;
    case ErrorKind::kFileSystem:
      return SQLITE_IOERR;
    case ErrorKind::kNotADatabase:
      return SQLITE_NOTADB;
    case ErrorKind::kDamaged:
      return SQLITE_CORRUPT;
    case ErrorKind::kReadOnly:
      return SQLITE_READONLY;
    case ErrorKind::kDuplicate:
    case ErrorKind::kRequired:
      return SQLITE_CONSTRAINT;
    case ErrorKind::kValue:
      return SQLITE_MISMATCH;
    case ErrorKind::kFull:
      return SQLITE_FULL;
    case ErrorKind::kNotFound:
    case ErrorKind::kMisuse:
      break;
  }
  return SQLITE_ERROR;
}

void SetMessage(char*& message, const std::string& text) {
  sqlite3_free(message);
  message = sqlite3_mprintf("%s", text.c_str());
}

}  // namespace

std::string Describe(const jet::Error& error) {
  if (error.kind() == ErrorKind::kBusy) return "The file is in use by another program.";
  return error.what();
}

int ResultOfException(char*& message) {
  try {
    throw;
  } catch (const jet::Error& error) {
    SetMessage(message, Describe(error));
    return ResultOf(error.kind());
  } catch (const std::bad_alloc&) {
    return SQLITE_NOMEM;
  } catch (const std::exception& error) {
    SetMessage(message, error.what());
    return SQLITE_ERROR;
  }
}

}  // namespace kestro::adapters
