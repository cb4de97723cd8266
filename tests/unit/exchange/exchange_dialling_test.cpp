#include "exchange/exchange_dialling.h"

#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "exchange/exchange_commands.h"
#include "support/telephony_bench.h"
#include "unit/exchange/exchange_bench.h"

namespace kestro {
namespace {

class ExchangeDialling : public testing::Test {
 protected:
  std::int32_t Dial(std::string_view number) { return objects_.CreateDialCom()->Dial(number); }
  std::string Execute(std::string_view request) { return commands_.Execute(request); }

  test::ExchangeBench bench_;
  test::Latin1CodePage code_page_;
  exchange::ExchangeDialling objects_{bench_.exchange, code_page_};
  exchange::ExchangeCommands commands_{bench_.exchange, code_page_};
};

TEST_F(ExchangeDialling, AnOutgoingCallIsListedUntilItIsHungUp) {
  bench_.OpenLine();
  EXPECT_EQ(0, Dial(" (0603) 222-333 "));
  EXPECT_EQ("ok\n0x101 dialling outgoing \"(0603) 222-333\"\n", Execute("list"));
  EXPECT_EQ("error: no call is waiting for an answer\n", Execute("answer"));
  EXPECT_EQ("ok\n0x101\n", Execute("hang-up"));
  EXPECT_EQ("ok\n", Execute("list"));
  EXPECT_TRUE(bench_.messages.empty()) << "the watched line takes it for a call of its own";
}

TEST_F(ExchangeDialling, TheApplicationHoldsOnlyTheCallsThatComeIn) {
  bench_.OpenLine();
  Dial("602");
  EXPECT_EQ("ok\n0x102\n", Execute("ring 777"));
  const std::size_t offered = bench_.messages.size();
  EXPECT_EQ("ok\n0x101\n", Execute("hang-up 0x101"));
  EXPECT_EQ(offered, bench_.messages.size());
  EXPECT_EQ("ok\n0x102 offering external \"777\"\n", Execute("list"));
  Dial("603");
  EXPECT_GT(0, bench_.exchange.Drop(0x103, "", 0));
}

TEST_F(ExchangeDialling, ItNeedsNoLineAndOutlivesOne) {
  Dial("602");
  EXPECT_EQ("ok\n0x101\n", Execute("hang-up"));
  EXPECT_EQ("error: the program has no line open\n", Execute("hang-up"));
  bench_.OpenLine();
  Dial("603");
  Execute("ring 777");
  bench_.exchange.Close(bench_.line);
  EXPECT_EQ("ok\n0x102 dialling outgoing \"603\"\n", Execute("list"));
}

TEST_F(ExchangeDialling, WhatNoTelephoneCanDialIsRefused) {
  for (const std::string& number : {std::string(), std::string("   "), std::string("()-"),
                                    std::string("Novák"), std::string("602;1"), std::string(41, '1')}) {
    EXPECT_THROW(Dial(number), base::RuntimeError) << number;
  }
  EXPECT_TRUE(bench_.exchange.calls().empty());
  for (std::size_t i = 0; i < exchange::ExchangeDialling::kMaximumCalls; ++i) Dial("1");
  EXPECT_THROW(Dial("1"), base::RuntimeError);
}

}  // namespace
}  // namespace kestro
