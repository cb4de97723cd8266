#include <memory>

#include <gtest/gtest.h>

#include "unit/exchange/exchange_bench.h"

namespace kestro {
namespace {

using ports::LineMessage;
using test::Buffer;

constexpr std::int32_t Error(std::uint32_t value) { return static_cast<std::int32_t>(value); }

TEST(Exchange, ResultsNameTheWrongHandleDeviceOrVersion) {
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

TEST(Exchange, AReleasedCallIsNotTheApplicationsAnyMoreButEndsAudibly) {
  test::ExchangeBench bench;
  bench.OpenLine();
  const auto call = bench.Ring("1");
  EXPECT_EQ(0, bench.exchange.DeallocateCall(call));
  EXPECT_EQ(Error(0x80000018), bench.exchange.Drop(call, "", 0));
  bench.TakeMessages();
  bench.exchange.Idle(call);
  EXPECT_EQ((std::vector<LineMessage>{{0x101, 2, 77, 1, 0, 0}}), bench.messages);
  EXPECT_TRUE(bench.exchange.calls().empty());
  EXPECT_EQ(0x102U, bench.exchange.NewHandle()) << "a handle is not used again";
}

TEST(Exchange, AnswersByItself) {
  struct Row {
    const char* destination;  // null = drop
    std::vector<LineMessage> answers;
  };
  const LineMessage done{0, 12, 77, 1, 0, 0};
  const LineMessage refused{0, 12, 77, 1, Error(0x80000010), 0};
  const LineMessage idle{0x101, 2, 77, 1, 0, 0};
  const Row rows[] = {{nullptr, {done, idle}}, {"21", {done, idle}},     {"+420 602-111-222", {done, idle}},
                      {"*61#", {done, idle}},  {"reception", {refused}}, {" - ", {refused}},
                      {"21\x1b", {refused}}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.destination == nullptr ? "drop" : row.destination);
    test::ExchangeBench bench;
    bench.exchange.AnswerByItself(true);
    bench.OpenLine();
    const auto call = bench.Ring("1");
    bench.TakeMessages();
    const auto request = row.destination == nullptr ? bench.exchange.Drop(call, "", 0)
                                                    : bench.exchange.BlindTransfer(call, row.destination, 0);
    EXPECT_EQ(1, request);
    EXPECT_TRUE(bench.messages.empty()) << "the answer came from inside the request";
    bench.RunPosted();
    EXPECT_EQ(row.answers, bench.messages);
  }
}

TEST(Exchange, ACallThatHasGoneIdleDoesNotEndTwice) {
  test::ExchangeBench bench;
  bench.exchange.AnswerByItself(true);
  bench.OpenLine();
  const auto call = bench.Ring("1");
  bench.exchange.Drop(call, "", 0);
  bench.exchange.Idle(call);
  bench.TakeMessages();
  bench.RunPosted();
  EXPECT_EQ((std::vector<LineMessage>{{0, 12, 77, 1, 0, 0}}), bench.messages);
}

TEST(Exchange, NothingArrivesAfterTheEndOfTheSession) {
  test::ExchangeBench bench;
  bench.exchange.AnswerByItself(true);
  bench.OpenLine();
  const auto call = bench.Ring("1");
  bench.exchange.Drop(call, "", 0);
  EXPECT_EQ(0, bench.exchange.Shutdown(bench.application));
  bench.TakeMessages();
  bench.exchange.Deliver({1, 2, 3, 4, 5, 6});
  bench.exchange.Idle(call);
  bench.OpenLine();
  bench.RunPosted();  // the answers to the former session's request
  EXPECT_TRUE(bench.messages.empty());
}

TEST(Exchange, CallsAreReportedOnlyWhileALineIsOpen) {
  test::ExchangeBench bench;
  bench.OpenLine();
  bench.exchange.Close(bench.line);
  bench.Ring("1");
  EXPECT_TRUE(bench.messages.empty());
  bench.exchange.Deliver({0, 8, 0, 0x40000, 0, 0});
  EXPECT_EQ(1U, bench.messages.size()) << "other messages come while the functions are initialised";
}

TEST(Exchange, TheApplicationMayShutDownFromInsideAMessage) {
  test::ExchangeBench bench;
  bench.OpenLine();
  const auto call = bench.Ring("1");
  // The callback is used behind Shutdown, which has let go of it.
  const auto seen = std::make_shared<std::vector<std::int32_t>>();
  std::uint32_t devices = 0;
  const auto callback = [&bench, call, seen](const LineMessage& message) {
    bench.exchange.DeallocateCall(call);
    bench.exchange.Shutdown(bench.application);
    seen->push_back(message.parameter1);
  };
  bench.exchange.Initialize(bench.application, callback, "", devices);
  bench.exchange.Idle(call);
  EXPECT_EQ((std::vector<std::int32_t>{1}), *seen);
  EXPECT_FALSE(bench.exchange.initialized());
  EXPECT_TRUE(bench.exchange.calls().empty());
}

TEST(Exchange, APostedTaskSurvivesTheExchange) {
  std::function<void()> task;
  int messages = 0;
  {
    auto exchange = std::make_unique<exchange::Exchange>(
        [&task](std::function<void()> posted) { task = std::move(posted); });
    exchange->AddDevice({});
    exchange->AnswerByItself(true);
    ports::LineHandle application = 0;
    ports::LineHandle line = 0;
    std::uint32_t devices = 0;
    exchange->Initialize(
        application, [&messages](const LineMessage&) { ++messages; }, "", devices);
    exchange->Open(application, 0, line, ports::kLineApiVersion, 0, 0, 6, 4);
    exchange->Connect(0x101, {});
    exchange->Drop(0x101, "", 0);
  }
  messages = 0;
  task();
  EXPECT_EQ(0, messages);
}

}  // namespace
}  // namespace kestro
