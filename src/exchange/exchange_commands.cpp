#include "exchange/exchange_commands.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <optional>

#include "base/text.h"

namespace kestro::exchange {
namespace {

constexpr std::string_view kHelp =
    "ring NUMBER [--internal] [--name \"TEXT\"] [--transferred] [--no-number]\n"
    "answer [HANDLE]\n"
    "hang-up [HANDLE]\n"
    "list\n"
    "help\n";

bool IsState(const Call& call, CallState state) { return call.state == static_cast<std::uint32_t>(state); }

bool IsOffering(const Call& call) { return IsState(call, CallState::kOffering); }

bool IsRunning(const Call& call) {
  return !IsState(call, CallState::kIdle) && !IsState(call, CallState::kDisconnected);
}

std::string_view OriginText(const Call& call) {
  if (call.origin == kOriginOutbound) return "outgoing";
  return call.origin == kOriginInternal ? "internal" : "external";
}

std::string StateText(const Call& call) {
  if (IsState(call, CallState::kIdle)) return "idle";
  if (IsOffering(call)) return "offering";
  if (IsState(call, CallState::kDialling)) return "dialling";
  if (IsState(call, CallState::kConnected)) return "connected";
  if (IsState(call, CallState::kDisconnected)) return "disconnected";
  return "state " + base::Hex(call.state);
}

std::string HandleText(ports::CallHandle handle) { return base::Hex(handle, 3); }

void RequireNoFurtherWord(const std::vector<RequestWord>& words, std::size_t count) {
  if (words.size() > count) throw RequestError("one word too many: " + words[count].text);
}

/// The handle in the second word, decimal or 0x hexadecimal; nothing without one.
std::optional<ports::CallHandle> ReadHandle(const std::vector<RequestWord>& words) {
  RequireNoFurtherWord(words, 2);
  if (words.size() < 2) return std::nullopt;
  std::string_view digits = words[1].text;
  const bool hexadecimal = digits.starts_with("0x");
  if (hexadecimal) digits.remove_prefix(2);
  ports::CallHandle handle = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, handle, hexadecimal ? 16 : 10);
  if (error != std::errc() || stop != end) throw RequestError("no call handle: " + words[1].text);
  return handle;
}

const std::string& RequireNumber(const std::string& number) {
  if (number.size() > ExchangeCommands::kMaximumNumberCharacters)
    throw RequestError("the number is too long");
  const bool valid = !number.empty() && number.find_first_not_of("0123456789+*#") == std::string::npos;
  if (!valid) throw RequestError("a number consists of digits, +, * and #");
  return number;
}

const std::string& RequireName(const std::string& name) {
  if (base::CharacterCount(name) > ExchangeCommands::kMaximumNameCharacters) {
    throw RequestError("the name is too long");
  }
  return name;
}

struct RingOptions {
  bool internal = false;
  bool transferred = false;
  bool no_number = false;
  std::optional<std::string> name;
};

/// Takes the option at `index` (and its value) and moves `index` to its last word.
void ReadRingOption(const std::vector<RequestWord>& words, std::size_t& index, RingOptions& options) {
  const std::string& option = words[index].text;
  const auto set_once = [&option](bool& flag) {
    if (flag) throw RequestError("given twice: " + option);
    flag = true;
  };
  if (option == "--internal") return set_once(options.internal);
  if (option == "--transferred") return set_once(options.transferred);
  if (option == "--no-number") return set_once(options.no_number);
  if (option != "--name") throw RequestError("unknown option: " + option);
  if (options.name) throw RequestError("given twice: " + option);
  if (++index == words.size()) throw RequestError("a text is missing behind --name");
  options.name = RequireName(words[index].text);
}

}  // namespace

std::string ExchangeCommands::Execute(std::string_view request) {
  try {
    return "ok\n" + Dispatch(request);
  } catch (const RequestError& error) {
    return std::string("error: ") + error.what() + "\n";
  }
}

std::string ExchangeCommands::Dispatch(std::string_view request) {
  if (request.size() > kMaximumRequestBytes) throw RequestError("the request is too long");
  const Words words = SplitRequest(request);
  if (words.empty()) throw RequestError("the request is empty");
  const std::string& command = words.front().text;
  if (command == "ring") return Ring(words);
  if (command == "answer") return Answer(words);
  if (command == "hang-up") return HangUp(words);
  if (command == "list") return List(words);
  if (command == "help") return Help(words);
  throw RequestError("unknown command: " + command + " (try help)");
}

std::string ExchangeCommands::Ring(const Words& words) {
  const Call call = ReadNewCall(words);
  RequireOpenLine();
  if (exchange_.calls().size() >= kMaximumCalls) throw RequestError("there are too many calls");
  exchange_.Offer(call);
  return HandleText(call.handle) + "\n";
}

Call ExchangeCommands::ReadNewCall(const Words& words) const {
  RingOptions options;
  std::optional<std::string> number;
  for (std::size_t index = 1; index < words.size(); ++index) {
    const RequestWord& word = words[index];
    if (!word.quoted && word.text.starts_with("--")) {
      ReadRingOption(words, index, options);
    } else if (number) {
      throw RequestError("one word too many: " + word.text);
    } else {
      number = RequireNumber(word.text);
    }
  }
  if (!number && !options.no_number) throw RequestError("a number is missing");
  Call call;
  call.handle = exchange_.NewHandle();
  if (!options.no_number) call.caller_id = code_page_.FromText(*number);
  call.caller_name = code_page_.FromText(options.name.value_or(std::string()));
  call.origin = options.internal ? kOriginInternal : kOriginExternal;
  call.reason = options.transferred ? kReasonTransfer : kReasonDirect;
  return call;
}

std::string ExchangeCommands::Answer(const Words& words) {
  const Call call = ChooseCall(words, IsOffering, "no call is waiting for an answer");
  exchange_.Connect(call.handle, call.caller_id);
  return HandleText(call.handle) + "\n";
}

std::string ExchangeCommands::HangUp(const Words& words) {
  const ports::CallHandle handle = ChooseCall(words, IsRunning, "there is no call").handle;
  exchange_.Disconnect(handle);
  // The application may have closed the line while it handled the message.
  if (exchange_.FindCall(handle) != nullptr) exchange_.Idle(handle);
  return HandleText(handle) + "\n";
}

Call ExchangeCommands::ChooseCall(const Words& words, bool (*suits)(const Call&),
                                  const char* none_suits) const {
  const auto handle = ReadHandle(words);
  RequireOpenLineOrCall();
  const auto& calls = exchange_.calls();
  if (handle) {
    const auto found = calls.find(*handle);
    if (found == calls.end()) throw RequestError("no such call: " + HandleText(*handle));
    const Call& call = found->second;
    if (!suits(call)) throw RequestError("the call " + HandleText(*handle) + " is " + StateText(call));
    return call;
  }
  const auto newest =
      std::find_if(calls.rbegin(), calls.rend(), [suits](const auto& entry) { return suits(entry.second); });
  if (newest == calls.rend()) throw RequestError(none_suits);
  return newest->second;
}

std::string ExchangeCommands::List(const Words& words) const {
  RequireNoFurtherWord(words, 1);
  std::string lines;
  for (const auto& [handle, call] : exchange_.calls()) lines += Description(call) + "\n";
  return lines;
}

std::string ExchangeCommands::Description(const Call& call) const {
  std::string line = HandleText(call.handle) + " " + StateText(call);
  line.append(1, ' ').append(OriginText(call));
  const auto& number = call.called_id ? call.called_id : call.caller_id;
  line += number ? " " + QuoteRequestWord(code_page_.ToText(*number)) : " no-number";
  if (!call.caller_name.empty()) line += " name " + QuoteRequestWord(code_page_.ToText(call.caller_name));
  if ((call.reason & kReasonTransfer) != 0) line += " transferred";
  return line;
}

std::string ExchangeCommands::Help(const Words& words) {
  RequireNoFurtherWord(words, 1);
  return std::string(kHelp);
}

void ExchangeCommands::RequireOpenLine() const {
  if (!exchange_.line_open()) throw RequestError("the program has no line open");
}

void ExchangeCommands::RequireOpenLineOrCall() const {
  if (exchange_.calls().empty()) RequireOpenLine();
}

}  // namespace kestro::exchange
