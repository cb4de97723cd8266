#include "base/runtime_error.h"

#include <new>

namespace kestro::base {

void RaiseSubscriptOutOfRange() { throw RuntimeError(kSubscriptOutOfRange, "Subscript out of range"); }

void RaiseOverflow() { throw RuntimeError(kOverflow, "Overflow"); }

void RaiseTypeMismatch() { throw RuntimeError(kTypeMismatch, "Type mismatch"); }

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
