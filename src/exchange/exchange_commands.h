#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "exchange/exchange.h"
#include "exchange/request_words.h"
#include "ports/ansi_code_page.h"

namespace kestro::exchange {

/// The exchange as a person operates it from another terminal: one request line
/// in, one reply out.
///
///   ring NUMBER [--internal] [--name "TEXT"] [--transferred] [--no-number]
///   answer [HANDLE]      the newest offered call, or the one named
///   hang-up [HANDLE]     the newest call that has not ended, or the one named
///   list                 one line a call: 0x101 offering external "602111222"; one
///                        that was dialled: 0x102 dialling outgoing "585000100"
///   help
///
/// The request is UTF-8 from outside and trusted in nothing; one that is refused
/// changes nothing. A reply is "ok" or "error: REASON", then lines; every line
/// ends in a line feed. User-interface thread; the application may do anything
/// before Execute returns, even run its event loop and call Execute again.
class ExchangeCommands {
 public:
  static constexpr std::size_t kMaximumRequestBytes = 4096;
  static constexpr std::size_t kMaximumNumberCharacters = 40;
  static constexpr std::size_t kMaximumNameCharacters = 100;
  static constexpr std::size_t kMaximumCalls = 100;

  /// Both must outlive the object.
  ExchangeCommands(Exchange& exchange, const ports::AnsiCodePage& code_page)
      : exchange_(exchange), code_page_(code_page) {}

  [[nodiscard]] std::string Execute(std::string_view request);

 private:
  using Words = std::vector<RequestWord>;

  std::string Dispatch(std::string_view request);
  std::string Ring(const Words& words);
  std::string Answer(const Words& words);
  std::string HangUp(const Words& words);
  [[nodiscard]] std::string List(const Words& words) const;
  [[nodiscard]] static std::string Help(const Words& words);

  [[nodiscard]] Call ReadNewCall(const Words& words) const;
  /// The call that the request names if it suits, otherwise the newest one that does.
  [[nodiscard]] Call ChooseCall(const Words& words, bool (*suits)(const Call&), const char* none_suits) const;
  [[nodiscard]] std::string Description(const Call& call) const;
  void RequireOpenLine() const;
  /// A call that was dialled can be ended although no line is open.
  void RequireOpenLineOrCall() const;

  Exchange& exchange_;
  const ports::AnsiCodePage& code_page_;
};

}  // namespace kestro::exchange
