#include <memory>

#include <gtest/gtest.h>

#include "unit/exchange/exchange_bench.h"

namespace kestro {
namespace {

using namespace std::string_view_literals;
using ports::LineMessage;
using ports::ReadBytes;
using ports::ReadDword;
using test::Buffer;

class ExchangeTest : public testing::Test {
 protected:
  ExchangeTest() { bench_.OpenLine(); }

  test::ExchangeBench bench_;
  exchange::Exchange& exchange_ = bench_.exchange;
};

// The offsets are spelled out here on purpose: they are the binary interface.
TEST_F(ExchangeTest, CallInformationHasThePublishedLayout) {
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

TEST_F(ExchangeTest, DeviceCapabilitiesHaveThePublishedLayout) {
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

TEST_F(ExchangeTest, WhatDoesNotFitIsLeftOutAndNeverWrittenBehindTheBuffer) {
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

TEST_F(ExchangeTest, RawCallInformationReplacesTheStartOfTheBuffer) {
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

constexpr std::int32_t Error(std::uint32_t value) { return static_cast<std::int32_t>(value); }

TEST(ExchangeResults, NameTheWrongHandleDeviceOrVersion) {
  test::ExchangeBench bench;
  std::uint32_t version = 0;
  ports::LineHandle line = 0;
  auto caps = Buffer(2253, 2253);
  EXPECT_EQ(Error(0x80000014), bench.exchange.NegotiateApiVersion(0, 0, 0x10004, 0x10004, version));
  bench.OpenLine();
  auto& exchange = bench.exchange;
  const auto app = bench.application;
  EXPECT_EQ(Error(0x80000014), exchange.NegotiateApiVersion(app + 1, 0, 0x10004, 0x10004, version));
  EXPECT_EQ(Error(0x80000002), exchange.NegotiateApiVersion(app, 2, 0x10004, 0x10004, version));
  EXPECT_EQ(Error(0x8000000C), exchange.NegotiateApiVersion(app, 0, 0x10005, 0x20000, version));
  EXPECT_EQ(Error(0x8000000C), exchange.NegotiateApiVersion(app, 0, 0x10003, 0x10003, version));
  EXPECT_EQ(0U, version);
  EXPECT_EQ(0, exchange.NegotiateApiVersion(app, 0, 0x10003, 0x20000, version));
  EXPECT_EQ(0x10004U, version);
  EXPECT_EQ(Error(0x80000002), exchange.GetDevCaps(app, 0xFFFFFFFF, 0x10004, 0, caps));
  EXPECT_EQ(Error(0x8000000C), exchange.Open(app, 0, line, 0, 0, 0, 6, 4));
  EXPECT_EQ(Error(0x8000002B), exchange.SetStatusMessages(bench.line + 1, 0, 0));
  EXPECT_EQ(Error(0x80000018), exchange.Drop(0x101, "", 0));
  EXPECT_EQ(Error(0x80000018), exchange.DeallocateCall(0x101));
  EXPECT_EQ(Error(0x80000018), exchange.BlindTransfer(0x101, "21", 0));
  EXPECT_EQ(Error(0x80000018), exchange.GetCallInfo(0x101, caps));
  bench.Ring("1");
  EXPECT_EQ(Error(0x80000010), exchange.BlindTransfer(0x101, "", 0));
  EXPECT_EQ(Error(0x8000002B), exchange.Close(bench.line + 1));
  EXPECT_EQ(0, exchange.Close(bench.line));
  EXPECT_EQ(Error(0x8000002B), exchange.Close(bench.line));
  EXPECT_EQ(0, exchange.Shutdown(app));
  EXPECT_EQ(Error(0x80000014), exchange.Shutdown(app));
}

TEST(ExchangeAnswers, ByItself) {
  const LineMessage done{0, 12, 77, 1, 0, 0};
  const LineMessage refused{0, 12, 77, 1, Error(0x80000010), 0};
  const LineMessage idle{0x101, 2, 77, 1, 0, 0};
  // Where the call is to go (null: it is dropped), and what is answered.
  const std::pair<const char*, std::vector<LineMessage>> rows[] = {
      {nullptr, {done, idle}}, {"21", {done, idle}},     {"+420 602-111-222", {done, idle}},
      {"*61#", {done, idle}},  {"reception", {refused}}, {" - ", {refused}},
      {"21\x1b", {refused}}};
  for (const auto& [destination, answers] : rows) {
    SCOPED_TRACE(destination == nullptr ? "drop" : destination);
    test::ExchangeBench bench;
    bench.exchange.AnswerByItself(true);
    bench.OpenLine();
    const auto call = bench.Ring("1");
    bench.TakeMessages();
    const auto request = destination == nullptr ? bench.exchange.Drop(call, "", 0)
                                                : bench.exchange.BlindTransfer(call, destination, 0);
    EXPECT_EQ(1, request);
    EXPECT_TRUE(bench.messages.empty()) << "the answer came from inside the request";
    bench.RunPosted();
    EXPECT_EQ(answers, bench.messages);
  }
}

TEST_F(ExchangeTest, NothingArrivesAfterTheEndOfTheSession) {
  exchange_.AnswerByItself(true);
  const auto call = bench_.Ring("1");
  exchange_.Drop(call, "", 0);
  EXPECT_EQ(0, exchange_.Shutdown(bench_.application));
  bench_.TakeMessages();
  exchange_.Deliver({1, 2, 3, 4, 5, 6});
  exchange_.Idle(call);
  bench_.OpenLine();
  bench_.RunPosted();  // the answers to the former session's request
  EXPECT_TRUE(bench_.messages.empty());
}

TEST_F(ExchangeTest, TheApplicationMayShutDownFromInsideAMessage) {
  const auto call = bench_.Ring("1");
  // The callback is used behind Shutdown, which has let go of it.
  const auto seen = std::make_shared<std::vector<std::int32_t>>();
  std::uint32_t devices = 0;
  const auto callback = [this, call, seen](const LineMessage& message) {
    exchange_.DeallocateCall(call);
    exchange_.Shutdown(bench_.application);
    seen->push_back(message.parameter1);
  };
  exchange_.Initialize(bench_.application, callback, "", devices);
  exchange_.Idle(call);
  EXPECT_EQ((std::vector<std::int32_t>{1}), *seen);
  EXPECT_FALSE(exchange_.initialized());
  EXPECT_TRUE(exchange_.calls().empty());
}

}  // namespace
}  // namespace kestro
