#include <gtest/gtest.h>

#include "support/error_number.h"
#include "support/telephony_bench.h"

// Structures from the line functions whose sizes and offsets cannot be trusted.

namespace kestro::telephony {
namespace {

namespace info = ports::line_call_info;
namespace caps = ports::line_dev_caps;
namespace translate = ports::line_translate_output;

constexpr ports::LineMessage kOffering{0x101, 2, 0, 2, 0, 0};
constexpr ports::LineMessage kConnected{0x101, 2, 0, 0x100, 0, 0};

std::vector<std::uint8_t> CallInfo(std::uint32_t offset, std::uint32_t size, std::string_view area = "") {
  std::vector<std::uint8_t> bytes(info::kBufferSize);
  ports::WriteDword(bytes, info::kOrigin, info::kOriginExternal);
  for (const auto base : {info::kCallerIdFlags, info::kConnectedIdFlags}) {
    ports::WriteDword(bytes, base, info::kPartyAddress);
    ports::WriteDword(bytes, base + 4, size);
    ports::WriteDword(bytes, base + 8, offset);
  }
  std::copy(area.begin(), area.end(), bytes.begin() + info::kFixedSize);
  return bytes;
}

TEST(HostileStructuresTest, CallerIdIsBoundedByTheVariableArea) {
  const std::string full(info::kVariableAreaSize, '7');
  // Offset and size of the id, the area it lies in, and the id read; nothing: subscript out of range, the id
  // stays what it was.
  const std::tuple<std::uint32_t, std::uint32_t, std::string, std::optional<std::string>> rows[] = {
      {324, 3, "101", "101"},
      {324, 9, "101", "101"},   // stops at the zero
      {324, 2, "1234", "123"},  // one byte more than the size
      {324, 0, "1", "1"},
      {326, 2, "001021", "102"},
      {324, 2000, full, full},          // index 2000 is the last
      {324, 2001, full, std::nullopt},  // index 2001 is not there
      {324, 0xFFFFFFFFU, full, std::nullopt},
      {324, 0xFFFFFFFFU, "42", "42"},
      {2324, 1, "", ""},
      {2325, 1, "", std::nullopt},
      {323, 5, "101", std::nullopt},
      {0, 0, "101", std::nullopt},
      {0xFFFFFFFFU, 1, "", std::nullopt},
      {0x80000000U, 0x80000000U, "", std::nullopt}};
  for (const auto& [offset, size, area, id] : rows) {
    for (const auto& message : {kOffering, kConnected}) {
      test::TelephonyBench bench;
      bench.functions.call_info = CallInfo(324, 3, "555");
      bench.line.LineCallBack(kOffering);
      bench.functions.call_info = CallInfo(offset, size, area);
      bench.capture.lines.clear();
      bench.line.LineCallBack(message);
      EXPECT_EQ(bench.line.call().CurrentCallerId, id.value_or("555")) << offset << " " << size;
      const std::string error =
          "ERROR 9 KESTROCTI.TAPIFunctionsModule.GetCallerInfo:: | Subscript out of range";
      EXPECT_EQ(std::count(bench.capture.lines.begin(), bench.capture.lines.end(), error), id ? 0 : 1);
      EXPECT_EQ(bench.events.back(), message == kOffering ? "incoming" : "accept");
    }
  }
}

TEST(HostileStructuresTest, AConnectedPartyWithoutANumberIsUnknown) {
  test::TelephonyBench bench;
  bench.functions.call_info = CallInfo(324, 3, "555");
  ports::WriteDword(bench.functions.call_info, info::kConnectedIdFlags, info::kPartyBlocked);
  bench.line.LineCallBack(kConnected);
  EXPECT_EQ(bench.line.call().CurrentCallerId, "UNKNOWN");
}

std::vector<std::uint8_t> DevCaps(std::size_t size_at, std::uint32_t size, std::size_t offset_at,
                                  std::uint32_t offset, std::string_view area) {
  std::vector<std::uint8_t> bytes(caps::kBufferSize);
  ports::WriteDword(bytes, size_at, size);
  ports::WriteDword(bytes, offset_at, offset);
  std::copy(area.begin(), area.end(), bytes.begin() + caps::kFixedSize);
  return bytes;
}

TEST(HostileStructuresTest, LineNamesAreReadUpToTheirZeroInsideTheBuffer) {
  const std::tuple<std::uint32_t, std::uint32_t, std::optional<std::string>> rows[] = {
      {4, 252, "EXT"},   {0xFFFFFFFFU, 252, "EXT"}, {0, 252, "Unknown"},
      {4, 0, "Unknown"}, {4, 2253, std::nullopt},   {4, 0xFFFFFFFFU, std::nullopt}};
  for (const auto& [size, offset, name] : rows) {
    test::TelephonyBench bench;
    bench.functions.dev_caps = DevCaps(caps::kLineNameSize, size, caps::kLineNameOffset, offset, "EXT");
    EXPECT_EQ(test::ErrorNumberOf([&bench] { bench.line.InitializeLine(); }), name ? 0 : 9) << offset;
    EXPECT_EQ(bench.line_names, name ? std::vector{*name} : std::vector<std::string>()) << offset;
  }
}

TEST(HostileStructuresTest, TheRedirectRuleComparesTheProviderTextWithItsZero) {
  const std::tuple<std::string, std::uint32_t, bool> rows[] = {
      {std::string("Panasonic KX-TDA\0", 17), 17, false},
      {std::string("  panasonic kx-tda\0", 19), 19, false},
      {"PANASONIC KX-TDA", 16, true},
      {std::string("PANASONIC KX-TDA\0\0", 18), 18, true},
      {std::string("PANASONIC KX-TDE\0", 17), 17, true},
      {"", 0, true},
      {"", 0xFFFFFFFFU, true}};
  for (const auto& [provider, size, allowed] : rows) {
    test::TelephonyBench bench;
    bench.functions.dev_caps =
        DevCaps(caps::kProviderInfoSize, size, caps::kProviderInfoOffset, 252, provider);
    bench.line.InitializeLine();
    EXPECT_EQ(bench.flags.RedirectAllowed, allowed) << provider;
  }
}

TEST(HostileStructuresTest, ATranslatedAddressOutsideTheBufferIsNotDialled) {
  test::TelephonyBench bench;
  bench.functions.translate_output.resize(translate::kBufferSize);
  ports::WriteDword(bench.functions.translate_output, translate::kDialableStringSize, 10);
  ports::WriteDword(bench.functions.translate_output, translate::kDialableStringOffset,
                    translate::kBufferSize - 9);
  EXPECT_THROW(bench.line.TransferCall("21"), base::RuntimeError);
  EXPECT_FALSE(bench.line.call().SwitchPending);
  ports::WriteDword(bench.functions.translate_output, translate::kDialableStringSize, 9);
  bench.functions.translate_output.back() = 'x';  // no terminating zero
  EXPECT_EQ(bench.line.TransferCall("21"), 2);
  EXPECT_TRUE(bench.line.call().SwitchPending);
}

TEST(HostileStructuresTest, LowWordsWithoutAMask) {
  const std::pair<std::uint32_t, std::string> rows[] = {{0x33, "LINE_MONITORDIGITS -> 51"},
                                                        {0x7FFF, "LINE_MONITORDIGITS -> 32767"},
                                                        {0x8000, "LINE_MONITORDIGITS -> -32768"},
                                                        {0x1234FFFF, "LINE_MONITORDIGITS -> -1"}};
  for (const auto& [value, logged] : rows) {
    test::TelephonyBench bench;
    bench.line.LineCallBack({0, 9, 0, static_cast<std::int32_t>(value), 0, 0});
    const std::string line = "KESTROCTI.TAPIFunctionsModule.LineCallBack | LineCallBack MESSAGE = " + logged;
    EXPECT_EQ(std::count(bench.capture.lines.begin(), bench.capture.lines.end(), line), 1) << value;
  }
  for (const std::uint32_t value : {0x10000U, 0x00010033U, 0xFFFF0001U}) {
    test::TelephonyBench bench;
    bench.line.LineCallBack({0, 9, 0, static_cast<std::int32_t>(value), 0, 0});
    EXPECT_EQ(bench.events, std::vector<std::string>{"shut down 6"}) << value;
  }
}

}  // namespace
}  // namespace kestro::telephony
