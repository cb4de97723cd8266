#include "fuzz/property.h"

// Where the engines enter every fuzz program.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kestro::fuzz::Check({reinterpret_cast<const char*>(data), size});
  return 0;
}
