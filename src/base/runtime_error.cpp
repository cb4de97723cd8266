#include "base/runtime_error.h"

#include <new>

namespace kestro::base {
namespace {

std::string TextOf(std::int32_t number) {
  switch (number) {
    case kFileNotFound:
      return "File not found";
    case kFileAlreadyExists:
      return "File already exists";
    case kPathNotFound:
      return "Path not found";
    default:
      return "Path/File access error";
  }
}

}  // namespace

void RaiseSubscriptOutOfRange() { throw RuntimeError(kSubscriptOutOfRange, "Subscript out of range"); }

void RaiseOverflow() { throw RuntimeError(kOverflow, "Overflow"); }

void RaiseTypeMismatch() { throw RuntimeError(kTypeMismatch, "Type mismatch"); }

void RaiseFileError(std::int32_t number, std::string_view more) {
  std::string text = TextOf(number);
  if (!more.empty()) text.append(": ").append(more);
  throw RuntimeError(number, text);
}

RuntimeError CurrentErrorAsRuntimeError() {
  try {
    throw;
  } catch (const RuntimeError& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return RuntimeError(kOutOfMemory, "Out of memory");
  } catch (const std::out_of_range&) {
    return RuntimeError(kSubscriptOutOfRange, "Subscript out of range");
  } catch (const std::overflow_error&) {
    return RuntimeError(kOverflow, "Overflow");
  } catch (const std::exception& error) {
    return RuntimeError(kInternalError, error.what());
  }
}

}  // namespace kestro::base
