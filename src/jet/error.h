#pragma once

#include <stdexcept>
#include <string>

namespace kestro::jet {

enum class ErrorKind {
  kNotFound,      // no such file, table, index or row
  kBusy,          // somebody else has the file open
  kFileSystem,    // the operating system refused or failed
  kNotADatabase,  // not a file of this format, or a variant of it that is not supported
  kDamaged,       // the file contradicts itself
  kReadOnly,      // a change of a file or a table that may only be read; the text says why
  kDuplicate,     // a unique index has the key already
  kRequired,      // a value is missing
  kValue,         // a value does not fit its column (type, range, length, characters)
  kFull,          // the file cannot grow any more
  kMisuse,        // a mistake of the calling program
};

/// Everything that fails in this library fails with this. what() is an English sentence for a log.
class Error : public std::runtime_error {
 public:
  Error(ErrorKind kind, const std::string& text) : std::runtime_error(text), kind_(kind) {}

  [[nodiscard]] ErrorKind kind() const { return kind_; }

 private:
  ErrorKind kind_;
};

}  // namespace kestro::jet
