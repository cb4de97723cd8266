#include "exchange/exchange_commands.h"

#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "exchange/exchange_dialling.h"
#include "support/latin1_code_page.h"
#include "unit/exchange/exchange_bench.h"

namespace kestro {
namespace {

class ExchangeCommands : public testing::Test {
 protected:
  ExchangeCommands() { bench_.OpenLine(); }

  std::string Execute(std::string_view request) { return commands_.Execute(request); }

  test::ExchangeBench bench_;
  test::Latin1CodePage code_page_;
  exchange::ExchangeCommands commands_{bench_.exchange, code_page_};
};

TEST_F(ExchangeCommands, ACallRingsIsAnsweredAndEnds) {
  EXPECT_EQ("ok\n0x101\n", Execute("ring 602111222"));
  EXPECT_EQ("ok\n0x101 offering external \"602111222\"\n", Execute("list"));
  EXPECT_EQ("ok\n0x101\n", Execute("answer"));
  EXPECT_EQ("602111222", bench_.exchange.FindCall(0x101)->connected_id);
  EXPECT_EQ("ok\n0x101 connected external \"602111222\"\n", Execute("list"));
  EXPECT_EQ("ok\n0x101\n", Execute("hang-up"));
  const std::vector<std::int32_t> expected = {2, 0x100, 0x4000, 1};
  std::vector<std::int32_t> states;
  for (const auto& message : bench_.messages) states.push_back(message.parameter1);
  EXPECT_EQ(expected, states);
}

TEST_F(ExchangeCommands, OptionsReachTheCall) {
  EXPECT_EQ("ok\n0x101\n", Execute(R"(ring --name "Jan \"J\" Nov\\ák" --internal *21# --transferred)"));
  const exchange::Call& call = *bench_.exchange.FindCall(0x101);
  EXPECT_EQ("*21#", call.caller_id);
  EXPECT_EQ("Jan \"J\" Nov\\\xE1k", call.caller_name);
  EXPECT_EQ(exchange::kOriginInternal, call.origin);
  EXPECT_EQ(exchange::kReasonTransfer, call.reason);
  EXPECT_EQ("ok\n0x101 offering internal \"*21#\" name \"Jan \\\"J\\\" Nov\\\\ák\" transferred\n",
            Execute("list"));
  EXPECT_EQ("ok\n0x102\n", Execute("ring --no-number"));
  EXPECT_EQ("ok\n0x103\n", Execute("ring 5 --no-number --name --internal"));
  EXPECT_EQ(std::nullopt, bench_.exchange.FindCall(0x103)->caller_id);
  EXPECT_EQ("--internal", bench_.exchange.FindCall(0x103)->caller_name);
}

TEST_F(ExchangeCommands, WithoutAHandleTheNewestSuitableCallIsMeant) {
  Execute("ring 1");
  Execute("ring 2");
  Execute("ring 3");
  EXPECT_EQ("ok\n0x102\n", Execute("answer 0x102"));
  EXPECT_EQ("ok\n0x103\n", Execute("answer"));
  EXPECT_EQ("ok\n0x101\n", Execute("answer"));
  EXPECT_EQ("error: no call is waiting for an answer\n", Execute("answer"));
  EXPECT_EQ("error: the call 0x101 is connected\n", Execute("answer 257"));
  EXPECT_EQ("ok\n0x103\n", Execute("hang-up"));
  EXPECT_EQ("ok\n0x102\n", Execute("hang-up"));
  EXPECT_EQ("error: the call 0x103 is idle\n", Execute("hang-up 0x103"));
}

TEST_F(ExchangeCommands, HostileRequestsAreRefusedAndChangeNothing) {
  Execute("ring 1");
  bench_.TakeMessages();
  const std::pair<std::string, std::vector<std::string>> rows[] = {
      {"the request is empty", {"", "    "}},
      {"unknown command: RING (try help)", {"RING 1"}},
      {"unknown command: exit (try help)", {"exit"}},
      {"a number is missing", {"ring"}},
      {"a number consists of digits, +, * and #", {"ring \"\"", "ring 12a", "ring 1-2", "ring \xC2\xB2"}},
      {"the number is too long", {"ring " + std::string(41, '1')}},
      {"one word too many: 2", {"ring 1 2"}},
      {"unknown option: --external", {"ring 1 --external"}},
      {"given twice: --internal", {"ring 1 --internal --internal"}},
      {"given twice: --name", {"ring 1 --name a --name b"}},
      {"a text is missing behind --name", {"ring 1 --name"}},
      {"the name is too long", {"ring 1 --name " + std::string(101, 'x')}},
      {"one word too many: --internal", {"ring 1 \"--internal\""}},
      {"a closing quote is missing", {"ring 1 --name \"a"}},
      {R"(only \" and \\ may follow a backslash in quotes)",
       {R"(ring 1 --name "a\)", R"(ring 1 --name "a\n")"}},
      {"a blank is missing behind a quote", {"ring 1 --name \"a\"b"}},
      {"a quote inside a word", {"ring 1 --name a\"b"}},
      {"the request holds a control character",
       {"ring\t1", "ring 1\nring 2", "list\r", std::string("list\0", 5), "ring 1 --name \x1b[2J",
        "ring 1 --name \xC2\x9B", "ring 1 --name \xE2\x80\xA8"}},
      {"the request is not UTF-8", {"ring 1 --name \xFF", "ring 1 --name \xC3"}},
      {"no such call: 0x999", {"answer 0x999"}},
      {"no call handle: 0x", {"answer 0x"}},
      {"no call handle: -1", {"answer -1"}},
      {"no call handle: 0x101x", {"answer 0x101x"}},
      {"no call handle: 0x100000101", {"answer 0x100000101"}},
      {"no call handle: nobody", {"hang-up nobody"}},
      {"one word too many: 0x101", {"answer 0x101 0x101"}},
      {"one word too many: all", {"list all"}},
      {"one word too many: me", {"help me"}},
      {"the request is too long", {std::string(4097, ' ')}}};
  for (const auto& [reason, requests] : rows) {
    for (const auto& request : requests) EXPECT_EQ("error: " + reason + "\n", Execute(request)) << request;
  }
  EXPECT_EQ("ok\n0x101 offering external \"1\"\n", Execute("list"));
  EXPECT_TRUE(bench_.messages.empty());
}

TEST_F(ExchangeCommands, ThereIsAnEndToTheNumberOfCalls) {
  for (int i = 0; i < 100; ++i) ASSERT_TRUE(Execute("ring 1").starts_with("ok\n"));
  EXPECT_EQ("error: there are too many calls\n", Execute("ring 1"));
}

TEST_F(ExchangeCommands, WithoutAnOpenLineNothingCanHappen) {
  Execute("ring 1");
  bench_.exchange.Close(bench_.line);
  for (const char* const request : {"ring 1", "answer", "answer 0x101", "hang-up"}) {
    EXPECT_EQ("error: the program has no line open\n", Execute(request)) << request;
  }
  EXPECT_EQ("ok\n", Execute("list"));
}

class ExchangeDialling : public ExchangeCommands {
 protected:
  ExchangeDialling() { bench_.exchange.Close(bench_.line); }
  std::int32_t Dial(std::string_view number) { return objects_.CreateDialCom()->Dial(number); }

  exchange::ExchangeDialling objects_{bench_.exchange, code_page_};
};

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
