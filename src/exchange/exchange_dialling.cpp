#include "exchange/exchange_dialling.h"

#include <string>

#include "base/runtime_error.h"
#include "base/text.h"
#include "exchange/exchange_structures.h"

namespace kestro::exchange {
namespace {

class ExchangeDialCom final : public ports::DiallingObject {
 public:
  ExchangeDialCom(Exchange& exchange, const ports::AnsiCodePage& code_page)
      : exchange_(exchange), code_page_(code_page) {}

  std::int32_t Dial(std::string_view number) override {
    const std::string dialled = code_page_.FromText(base::Trim(number));
    if (dialled.size() > ExchangeDialling::kMaximumNumberCharacters || !IsDialable(dialled)) {
      throw base::RuntimeError(base::kInvalidProcedureCall, "The exchange cannot dial this number");
    }
    if (exchange_.calls().size() >= ExchangeDialling::kMaximumCalls) {
      throw base::RuntimeError(base::kActionNotSupported, "The exchange has too many calls");
    }
    exchange_.Dial(dialled);
    return 0;
  }

 private:
  Exchange& exchange_;
  const ports::AnsiCodePage& code_page_;
};

}  // namespace

std::unique_ptr<ports::DiallingObject> ExchangeDialling::CreateDialCom() {
  return std::make_unique<ExchangeDialCom>(exchange_, code_page_);
}

}  // namespace kestro::exchange
