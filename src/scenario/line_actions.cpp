#include "scenario/line_actions.h"

#include <charconv>
#include <optional>
#include <vector>

#include "scenario/quoting.h"

namespace kestro::scenario {
namespace {

constexpr std::uint32_t kCallerIdChange = 0x8000;

ports::CallHandle HandleOf(const Action& action) { return static_cast<ports::CallHandle>(action.Number(0)); }

std::optional<std::string> AnsiOption(const Action& action, std::string_view name,
                                      const ports::AnsiCodePage& code_page) {
  const Argument* option = action.Option(name);
  return option == nullptr ? std::nullopt : std::optional(code_page.FromText(option->text));
}

std::uint32_t OriginOf(const Argument& origin) {
  if (origin.text == "internal") return exchange::kOriginInternal;
  if (origin.text == "external") return exchange::kOriginExternal;
  return static_cast<std::uint32_t>(origin.number);
}

exchange::Call OfferedCall(const Action& action, const ports::AnsiCodePage& code_page) {
  exchange::Call call;
  call.handle = HandleOf(action);
  call.caller_id = AnsiOption(action, "from", code_page);
  if (const Argument* origin = action.Option("origin")) call.origin = OriginOf(*origin);
  if (const Argument* reason = action.Option("reason"))
    call.reason = static_cast<std::uint32_t>(reason->number);
  return call;
}

std::vector<std::uint8_t> BytesOf(const Action& action) {
  const std::string& digits = action.Text(1);
  std::vector<std::uint8_t> bytes(digits.size() / 2);
  for (std::size_t index = 0; index < bytes.size(); ++index) {
    const char* first = digits.data() + 2 * index;
    const auto [end, error] = std::from_chars(first, first + 2, bytes[index], 16);
    if (error != std::errc{} || end != first + 2) throw ScriptError(action.line, "no hexadecimal bytes");
  }
  if (digits.size() % 2 != 0) throw ScriptError(action.line, "half a byte at the end");
  return bytes;
}

ports::LineMessage MessageOf(const Action& action) {
  return {action.Number(0), action.Number(1), action.Number(2),
          action.Number(3), action.Number(4), action.Number(5)};
}

void CheckFunctionName(const Action& action, bool known) {
  if (!known) throw ScriptError(action.line, "unknown line function " + Quoted(action.Text(0)));
}

void FailFunction(const Action& action, exchange::Exchange& exchange) {
  std::optional<int> times;
  if (const Argument* option = action.Option("times")) times = static_cast<int>(option->number);
  CheckFunctionName(action, exchange.Fail(action.Text(0), action.Number(1), times));
}

std::uint32_t ChangeOf(const Action& action) {
  const Argument* change = action.Option("");
  return change == nullptr ? kCallerIdChange : static_cast<std::uint32_t>(change->number);
}

}  // namespace

bool PerformLineAction(const Action& action, exchange::Exchange& exchange,
                       const ports::AnsiCodePage& code_page) {
  switch (action.kind) {
    case ActionKind::kLineFunctionFails:
      FailFunction(action, exchange);
      return true;
    case ActionKind::kLineFunctionWorks:
      CheckFunctionName(action, exchange.Work(action.Text(0)));
      return true;
    case ActionKind::kCallOffering:
      exchange.Offer(OfferedCall(action, code_page));
      return true;
    case ActionKind::kCallConnected:
      exchange.Connect(HandleOf(action), AnsiOption(action, "to", code_page));
      return true;
    case ActionKind::kCallDisconnected:
      exchange.Disconnect(HandleOf(action));
      return true;
    case ActionKind::kCallIdle:
      exchange.Idle(HandleOf(action));
      return true;
    case ActionKind::kCallInfo:
      exchange.InformOfChange(HandleOf(action), ChangeOf(action));
      return true;
    case ActionKind::kCallState:
      exchange.ReportState(HandleOf(action), static_cast<std::uint32_t>(action.Number(1)));
      return true;
    case ActionKind::kReply:
      exchange.Reply(action.Number(0), action.Number(1));
      return true;
    case ActionKind::kMessage:
      exchange.Deliver(MessageOf(action));
      return true;
    case ActionKind::kRawCallInfo:
      exchange.SetRawCallInfo(HandleOf(action), BytesOf(action));
      return true;
    default:
      return false;
  }
}

}  // namespace kestro::scenario
