#include "exchange/exchange_commands.h"
#include "fuzz/property.h"
#include "support/latin1_code_page.h"
#include "unit/exchange/exchange_bench.h"

// A request to the exchange, with a line open and some calls there: a reply in
// its form, and nothing changed by a request that was refused.

namespace kestro::fuzz {
namespace {

void CheckWords(std::string_view text) {
  const auto words = exchange::SplitRequest(exchange::QuoteRequestWord(text));
  Require(words.size() == 1 && words.front().quoted && words.front().text == text,
          "a quoted word has changed");
}

}  // namespace

void Check(std::string_view request) {
  test::ExchangeBench bench;
  bench.OpenLine();
  bench.Ring("602111222");
  bench.exchange.Dial("585000100");
  const test::Latin1CodePage code_page;
  exchange::ExchangeCommands commands(bench.exchange, code_page);
  const std::string before = commands.Execute("list");
  const std::string reply = commands.Execute(request);
  Require(reply.ends_with('\n'), "a reply without a line end");
  Require(reply.starts_with("ok\n") || reply.starts_with("error: "), "a reply of another form");
  if (reply.starts_with("error: ")) Require(commands.Execute("list") == before, "refused, and carried out");
  try {
    static_cast<void>(exchange::SplitRequest(request));
  } catch (const exchange::RequestError&) {
    return;  // no plain text
  }
  CheckWords(request);
}

}  // namespace kestro::fuzz
