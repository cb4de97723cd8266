#include "fuzz/property.h"
#include "support/telephony_bench.h"

// Decoding of what the line functions deliver: the first byte chooses the
// structure, the rest are its bytes.

void kestro::fuzz::Check(std::string_view input) {
  const std::uint8_t choice = TakeByte(input);
  const std::vector<std::uint8_t> bytes(input.begin(), input.end());
  test::TelephonyBench bench;
  try {
    switch (choice % 4) {
      case 0:
      case 1:
        bench.functions.call_info = bytes;
        return bench.line.LineCallBack({0x101, 2, 0, choice % 2 == 0 ? 0x2 : 0x100, 0, 0});
      case 2:
        bench.functions.dev_caps = bytes;
        bench.line.InitializeLine();
        return bench.line.StartLineListening(0);
      default:
        bench.functions.translate_output = bytes;
        static_cast<void>(bench.line.TransferCall("21"));
    }
  } catch (const base::RuntimeError&) {
    Require(choice % 4 > 1, "an error of a message comes out");  // of the others: a refused structure
  }
}
