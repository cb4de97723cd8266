#include "programs/tapi32-stand-in/stand_in.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iostream>

#include "base/runtime_error.h"

namespace kestro::programs {
namespace {

using exchange::RequestError;
using exchange::RequestWord;

constexpr const wchar_t* kWindowClass = L"KESTRO CTI stand-in";
constexpr std::size_t kMostJournalLines = 1000;

std::string Environment(const char* name) {
  std::array<char, 4096> value{};
  const DWORD size = ::GetEnvironmentVariableA(name, value.data(), static_cast<DWORD>(value.size()));
  return size < value.size() ? std::string(value.data(), size) : std::string();
}

std::uint16_t Port() {
  const std::string text = Environment("KESTRO_TAPI_PORT");
  std::uint16_t port = 0;
  std::from_chars(text.data(), text.data() + text.size(), port);
  return port == 0 ? StandIn::kDefaultPort : port;
}

}  // namespace

StandIn::StandIn()
    : window_(kWindowClass),
      poster_(window_, [](const std::function<void()>& task) { task(); }),
      exchange_([this](std::function<void()> task) { poster_(std::move(task)); }) {
  exchange_.AddDevice({.name = "EXT 101"});
  exchange_.AddDevice({.name = "EXT 102"});
  exchange_.AnswerByItself(true);
  RunScript(Environment("KESTRO_TAPI_SCRIPT"));
  try {
    server_ = std::make_unique<adapters::ControlServer>(
        window_, Port(), [this](std::string_view request) { return Execute(request); });
  } catch (const base::RuntimeError& error) {
    std::cerr << "tapi32 stand-in: " << error.description() << std::endl;
  }
}

void StandIn::RunScript(std::string_view script) {
  while (!script.empty()) {
    const auto end = std::min(script.find(';'), script.size());
    const std::string reply = Execute(script.substr(0, end));
    if (!reply.starts_with("ok\n")) std::cerr << "tapi32 stand-in: " << reply << std::flush;
    script.remove_prefix(std::min(end + 1, script.size()));
  }
}

void StandIn::Entered(std::string_view function, const std::string& arguments) {
  if (journal_.size() < kMostJournalLines) journal_.push_back(std::string(function) + arguments);
  misbehaviour_.Entered(function);
}

std::string StandIn::Execute(std::string_view request) {
  try {
    const std::vector<RequestWord> words = exchange::SplitRequest(request);
    if (!words.empty()) {
      if (const auto reply = TakeOwn(words)) return "ok\n" + *reply;
    }
  } catch (const RequestError& error) {
    return std::string("error: ") + error.what() + "\n";
  }
  return commands_.Execute(request);
}

std::optional<std::string> StandIn::TakeOwn(const std::vector<RequestWord>& words) {
  const std::string& command = words.front().text;
  if (command == "fail") return Fail(words);
  if (command == "journal") return TakeJournal();
  if (command == "work" && words.size() == 2) {
    if (!exchange_.Work(words[1].text)) throw RequestError("no line function: " + words[1].text);
    return std::string();
  }
  if (command == "device" && words.size() == 3) {
    exchange_.AddDevice({.name = words[1].text, .provider = words[2].text});
    return std::string();
  }
  if (command == "status") {
    return std::string(exchange_.initialized() ? "initialised" : "shut-down") +
           (exchange_.line_open() ? " line-open\n" : " line-closed\n");
  }
  return misbehaviour_.Take(words) ? std::optional(std::string()) : std::nullopt;
}

std::string StandIn::Fail(const std::vector<RequestWord>& words) {
  if (words.size() != 3 && words.size() != 4) throw RequestError("fail FUNCTION RESULT [TIMES]");
  std::optional<int> times;
  if (words.size() == 4) times = ReadNumber(words[3].text);
  if (!exchange_.Fail(words[1].text, ReadNumber(words[2].text), times)) {
    throw RequestError("no line function: " + words[1].text);
  }
  return {};
}

std::string StandIn::TakeJournal() {
  std::string lines;
  for (const std::string& line : journal_) lines += line + "\n";
  journal_.clear();
  return lines;
}

}  // namespace kestro::programs
