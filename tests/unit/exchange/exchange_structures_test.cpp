#include <gtest/gtest.h>

#include "unit/exchange/exchange_bench.h"

namespace kestro {
namespace {

using ports::ReadBytes;
using ports::ReadDword;
using namespace std::string_view_literals;
using test::Buffer;

class ExchangeStructures : public testing::Test {
 protected:
  ExchangeStructures() { bench_.OpenLine(); }

  test::ExchangeBench bench_;
  exchange::Exchange& exchange_ = bench_.exchange;
};

// The offsets are spelled out here on purpose: they are the binary interface.
TEST_F(ExchangeStructures, CallInformationHasThePublishedLayout) {
  exchange::Call call;
  call.handle = 0x123;
  call.caller_id = "602111222";
  call.caller_name = "Novak";
  call.origin = exchange::kOriginInternal;
  call.reason = exchange::kReasonTransfer;
  exchange_.Offer(call);
  exchange_.Connect(0x123, "21");
  auto info = Buffer(2325, 2325);
  ASSERT_EQ(0, exchange_.GetCallInfo(0x123, info));
  EXPECT_EQ(2325U, ReadDword(info, 0));
  EXPECT_EQ(324U + 10 + 6 + 3, ReadDword(info, 4));
  EXPECT_EQ(324U + 10 + 6 + 3, ReadDword(info, 8));
  EXPECT_EQ(bench_.line, ReadDword(info, 12));
  EXPECT_EQ(1U, ReadDword(info, 16));
  EXPECT_EQ(4U, ReadDword(info, 32));
  EXPECT_EQ(2U, ReadDword(info, 80));
  EXPECT_EQ(0x100U, ReadDword(info, 84));
  EXPECT_EQ(0xCU, ReadDword(info, 108));
  EXPECT_EQ("602111222\0"sv, ReadBytes(info, ReadDword(info, 116), ReadDword(info, 112)));
  EXPECT_EQ("Novak\0"sv, ReadBytes(info, ReadDword(info, 124), ReadDword(info, 120)));
  EXPECT_EQ(8U, ReadDword(info, 148));
  EXPECT_EQ("21\0"sv, ReadBytes(info, ReadDword(info, 156), ReadDword(info, 152)));
  EXPECT_EQ(0xEE, info[343]) << "a byte behind the used ones was written";
}

TEST_F(ExchangeStructures, DeviceCapabilitiesHaveThePublishedLayout) {
  auto caps = Buffer(2253, 2253);
  ASSERT_EQ(0, exchange_.GetDevCaps(bench_.application, 1, 0x00010004, 0, caps));
  EXPECT_EQ(252U + 17 + 8, ReadDword(caps, 8));
  EXPECT_EQ("PANASONIC KX-TDA\0"sv, ReadBytes(caps, ReadDword(caps, 16), ReadDword(caps, 12)));
  EXPECT_EQ("EXT 101\0"sv, ReadBytes(caps, ReadDword(caps, 36), ReadDword(caps, 32)));
  EXPECT_EQ(1U, ReadDword(caps, 40));
  EXPECT_EQ(4U, ReadDword(caps, 60));
  EXPECT_EQ(0x01FFFFFFU, ReadDword(caps, 128));
}

struct SmallBuffer {
  std::size_t size;
  std::uint32_t told;
  std::int32_t result;
  std::uint32_t number_size;  // 0 = the number did not fit
  std::uint32_t name_size;
};

TEST_F(ExchangeStructures, WhatDoesNotFitIsLeftOutAndNeverWrittenBehindTheBuffer) {
  exchange::Call call;
  call.handle = 0x123;
  call.caller_id = "602111222";  // 10 bytes with its zero
  call.caller_name = "Eva";      // 4 bytes with its zero
  exchange_.Offer(call);
  constexpr auto kTooSmall = static_cast<std::int32_t>(0x8000004D);
  const SmallBuffer rows[] = {
      {0, 0, kTooSmall, 0, 0},      {3, 0, kTooSmall, 0, 0},      {4, 2325, kTooSmall, 0, 0},
      {323, 2325, kTooSmall, 0, 0}, {2325, 323, kTooSmall, 0, 0}, {2325, 0, kTooSmall, 0, 0},
      {324, 0xFFFFFFFF, 0, 0, 0},   {333, 333, 0, 0, 4},          {334, 334, 0, 10, 0},
      {338, 338, 0, 10, 4},         {338, 0xFFFFFFFF, 0, 10, 4},  {2325, 337, 0, 10, 0}};
  for (const SmallBuffer& row : rows) {
    SCOPED_TRACE(testing::Message() << row.size << " bytes, told " << row.told);
    std::vector<std::uint8_t> info(row.size, 0xEE);
    if (row.size >= 4) ports::WriteDword(info, 0, row.told);
    const auto before = info;
    EXPECT_EQ(row.result, exchange_.GetCallInfo(0x123, info));
    if (row.result != 0) {
      EXPECT_EQ(before, info);
      continue;
    }
    EXPECT_EQ(338U, ReadDword(info, 4));
    EXPECT_EQ(324 + row.number_size + row.name_size, ReadDword(info, 8));
    EXPECT_EQ(row.number_size, ReadDword(info, 112));
    EXPECT_EQ(row.number_size != 0, ReadDword(info, 116) != 0);
    EXPECT_EQ(row.name_size, ReadDword(info, 120));
  }
}

TEST_F(ExchangeStructures, RawCallInformationReplacesTheStartOfTheBuffer) {
  exchange_.SetRawCallInfo(0x123, {1, 2, 3});
  auto info = Buffer(6, 6);
  EXPECT_EQ(0, exchange_.GetCallInfo(0x123, info));
  EXPECT_EQ((std::vector<std::uint8_t>{1, 2, 3, 0, 0xEE, 0xEE}), info);
  std::vector<std::uint8_t> shorter(2, 0xEE);
  EXPECT_EQ(0, exchange_.GetCallInfo(0x123, shorter));
  EXPECT_EQ((std::vector<std::uint8_t>{1, 2}), shorter);
  bench_.Ring("1");  // another call has its own information
  auto other = Buffer(2325, 2325);
  EXPECT_EQ(0, exchange_.GetCallInfo(0x101, other));
  EXPECT_EQ(2325U, ReadDword(other, 0));
}

TEST(ByteBuffer, ReadsAndWritesNothingOutside) {
  std::vector<std::uint8_t> bytes = {1, 2, 3, 4, 5};
  EXPECT_EQ(0x04030201U, ReadDword(bytes, 0));
  EXPECT_EQ(0x05040302U, ReadDword(bytes, 1));
  EXPECT_EQ("\4\5"sv, ReadBytes(bytes, 3, 2));
  EXPECT_EQ(""sv, ReadBytes(bytes, 5, 0));
  const auto huge = static_cast<std::size_t>(-1);
  for (const std::size_t offset : {std::size_t{2}, std::size_t{5}, huge, huge - 3}) {
    EXPECT_THROW(static_cast<void>(ReadDword(bytes, offset)), base::RuntimeError) << offset;
    EXPECT_THROW(ports::WriteDword(bytes, offset, 9), base::RuntimeError) << offset;
  }
  EXPECT_THROW(static_cast<void>(ReadDword(std::span(bytes).first(3), 0)), base::RuntimeError);
  EXPECT_THROW(static_cast<void>(ReadBytes(bytes, 3, huge)), base::RuntimeError);
  EXPECT_THROW(static_cast<void>(ReadBytes(bytes, 6, 0)), base::RuntimeError);
  EXPECT_EQ((std::vector<std::uint8_t>{1, 2, 3, 4, 5}), bytes);
}

}  // namespace
}  // namespace kestro
