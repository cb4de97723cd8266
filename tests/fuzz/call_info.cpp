#include <cstddef>
#include <cstdint>

#include "support/telephony_bench.h"

// Decoding of what the line functions deliver: the first byte chooses the
// structure, the rest are its bytes.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using kestro::base::RuntimeError;
  if (size == 0) return 0;
  const std::vector<std::uint8_t> bytes(data + 1, data + size);
  kestro::test::TelephonyBench bench;
  switch (data[0] % 4) {
    case 0:
    case 1:
      bench.functions.call_info = bytes;
      bench.line.LineCallBack({0x101, 2, 0, data[0] % 2 == 0 ? 0x2 : 0x100, 0, 0});
      break;
    case 2:
      bench.functions.dev_caps = bytes;
      try {
        bench.line.InitializeLine();
        bench.line.StartLineListening(0);
      } catch (const RuntimeError&) {
        // A refused structure; anything else is a finding.
      }
      break;
    default:
      bench.functions.translate_output = bytes;
      try {
        (void)bench.line.TransferCall("21");
      } catch (const RuntimeError&) {
      }
  }
  return 0;
}
