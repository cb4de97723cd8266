#pragma once

#include "exchange/exchange.h"
#include "ports/ansi_code_page.h"
#include "ports/dialling_object.h"

namespace kestro::exchange {

/// A dialling object whose calls go out on the software exchange, where they
/// are listed until they are hung up.
class ExchangeDialling final : public ports::DiallingObjects {
 public:
  static constexpr std::size_t kMaximumNumberCharacters = 40;
  static constexpr std::size_t kMaximumCalls = 100;

  /// Both must outlive it and the objects that it creates.
  ExchangeDialling(Exchange& exchange, const ports::AnsiCodePage& code_page)
      : exchange_(exchange), code_page_(code_page) {}

  /// Dial returns 0. It raises 5 for what no telephone can dial (no key at all,
  /// letters, more than kMaximumNumberCharacters) and 445 when the exchange has
  /// kMaximumCalls calls already.
  [[nodiscard]] std::unique_ptr<ports::DiallingObject> CreateDialCom() override;

 private:
  Exchange& exchange_;
  const ports::AnsiCodePage& code_page_;
};

}  // namespace kestro::exchange
