#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kestro::base {

/// Numbers of the field's run-time errors that the system raises itself.
enum ErrorNumber : std::int32_t {
  kInvalidProcedureCall = 5,
  kOverflow = 6,
  kOutOfMemory = 7,
  kSubscriptOutOfRange = 9,
  kTypeMismatch = 13,
  kInternalError = 51,
  kFileNotFound = 53,
  kFileAlreadyExists = 58,
  kPathAccessError = 75,
  kPathNotFound = 76,
  kResourceNotFound = 326,
  kCannotCreateObject = 429,
  kAutomationError = 440,
  kActionNotSupported = 445,
  kInvalidPicture = 481,
  kDialogCancelled = 32755,
  kDatabaseError = -2147467259,  // 0x80004005, the database interface's "unspecified error"
};

/// The one error type of the system: what a procedure raises and what its
/// handler logs. `source` grows on the way up ("outer::inner::origin").
class RuntimeError : public std::runtime_error {
 public:
  explicit RuntimeError(std::int32_t number, const std::string& description, std::string source = {})
      : std::runtime_error(description), number_(number), source_(std::move(source)) {}

  [[nodiscard]] std::int32_t number() const { return number_; }
  [[nodiscard]] const std::string& source() const { return source_; }
  [[nodiscard]] std::string description() const { return what(); }

  /// Puts the name of the procedure that the error passes through in front of the chain.
  void ExtendSource(const std::string& procedure) { source_ = procedure + "::" + source_; }

 private:
  std::int32_t number_;
  std::string source_;
};

/// Leaves the whole call stack when the process ends from inside a procedure.
/// Not an error: no handler logs it; the front end's event boundary catches it
/// and leaves its event loop.
struct ProcessEnded {};

[[noreturn]] void RaiseSubscriptOutOfRange();
[[noreturn]] void RaiseOverflow();
[[noreturn]] void RaiseTypeMismatch();
/// Raises an error about a file or a folder (53, 58, 75, 76) with its usual text and, behind ": ", more about
/// it.
[[noreturn]] void RaiseFileError(std::int32_t number, std::string_view more = {});

/// Runs a step whose failure must not stop the ones behind it; ProcessEnded passes through.
template <class Step>
void IgnoringErrors(Step step) {
  try {
    step();
  } catch (const RuntimeError&) {
  }
}

/// Turns the exception being handled into a RuntimeError. Call inside a catch
/// block only; ProcessEnded passes through.
[[nodiscard]] RuntimeError CurrentErrorAsRuntimeError();

}  // namespace kestro::base
