#include "exchange/exchange_commands.h"
#include "fuzz/property.h"
#include "support/latin1_code_page.h"

// A request to the exchange, with a line open and some calls there: a reply in
// its form, and nothing changed by a request that was refused.

namespace {

using kestro::fuzz::Require;

/// The exchange with an application that has opened its line.
class OpenExchange {
 public:
  OpenExchange() {
    exchange.AddDevice({"EXT 101"});
    kestro::ports::LineHandle application = 0;
    kestro::ports::LineHandle line = 0;
    std::uint32_t devices = 0;
    exchange.Initialize(
        application, [](const kestro::ports::LineMessage&) {}, "fuzz", devices);
    exchange.Open(application, 0, line, kestro::ports::kLineApiVersion, 0, 0, 6, 4);
    kestro::exchange::Call call;
    call.handle = exchange.NewHandle();
    call.caller_id = "602111222";
    exchange.Offer(call);
    exchange.Dial("585000100");
  }

  kestro::exchange::Exchange exchange{[](const std::function<void()>& task) { task(); }};
};

void CheckWords(std::string_view text) {
  const auto words = kestro::exchange::SplitRequest(kestro::exchange::QuoteRequestWord(text));
  Require(words.size() == 1 && words.front().quoted && words.front().text == text,
          "a quoted word has changed");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view request = kestro::fuzz::TextOf(data, size);
  OpenExchange open;
  const kestro::test::Latin1CodePage code_page;
  kestro::exchange::ExchangeCommands commands(open.exchange, code_page);
  const std::string before = commands.Execute("list");
  const std::string reply = commands.Execute(request);
  Require(reply.ends_with('\n'), "a reply without a line end");
  Require(reply.starts_with("ok\n") || reply.starts_with("error: "), "a reply of another form");
  if (reply.starts_with("error: ")) Require(commands.Execute("list") == before, "refused, and carried out");
  try {
    static_cast<void>(kestro::exchange::SplitRequest(request));
  } catch (const kestro::exchange::RequestError&) {
    return 0;  // no plain text
  }
  CheckWords(request);
  return 0;
}
