#include "programs/tapi32-stand-in/misbehaviour.h"

#include <charconv>
#include <thread>

namespace kestro::programs {
namespace {

using exchange::RequestError;
using exchange::RequestWord;

constexpr std::size_t kMessageWords = 5;

/// The message in the words from `first` to the end.
ports::LineMessage ReadMessage(const std::vector<RequestWord>& words, std::size_t first) {
  if (words.size() != first + kMessageWords) throw RequestError("a message is DEVICE MESSAGE P1 P2 P3");
  const auto number = [&](std::size_t index) { return ReadNumber(words[first + index].text); };
  return {number(0), number(1), 0, number(2), number(3), number(4)};
}

}  // namespace

std::int32_t ReadNumber(const std::string& word) {
  std::string_view digits = word;
  const bool hexadecimal = digits.starts_with("0x");
  if (hexadecimal) digits.remove_prefix(2);
  std::int64_t value = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value, hexadecimal ? 16 : 10);
  if (error != std::errc() || stop != end) throw RequestError("no number: " + word);
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

Misbehaviour::Misbehaviour(adapters::HiddenWindow& window) : window_(window) {
  window_.On(WM_TIMER, [this](WPARAM timer, LPARAM) -> LRESULT {
    OnTimer(timer);
    return 0;
  });
}

Misbehaviour::~Misbehaviour() { window_.On(WM_TIMER, {}); }

void Misbehaviour::PassOn(const ports::LineMessage& message) const {
  CallRaw(callback_, message);
  if (twice_) CallRaw(callback_, message);
}

void Misbehaviour::Entered(std::string_view function) {
  while (true) {
    const auto found = inside_.find(function);
    if (found == inside_.end()) return;
    const ports::LineMessage message = found->second;
    inside_.erase(found);
    CallRaw(callback_, message);
  }
}

void Misbehaviour::OnTimer(UINT_PTR timer) {
  ::KillTimer(window_.handle(), timer);
  const auto node = late_.extract(timer);
  if (node) CallRaw(callback_, node.mapped());
}

bool Misbehaviour::Take(const std::vector<RequestWord>& words) {
  const std::string& command = words.front().text;
  if (command == "deliver") {
    CallRaw(callback_, ReadMessage(words, 1));
  } else if (command == "thread") {
    std::thread([callback = callback_, message = ReadMessage(words, 1)] {
      CallRaw(callback, message);
    }).join();
  } else if (command == "late" && words.size() > 2) {
    const ports::LineMessage message = ReadMessage(words, 2);
    late_[++last_timer_] = message;
    ::SetTimer(window_.handle(), last_timer_, static_cast<UINT>(ReadNumber(words[1].text)), nullptr);
  } else if (command == "inside" && words.size() > 2) {
    inside_.emplace(words[1].text, ReadMessage(words, 2));
  } else if (command == "twice" && words.size() == 2) {
    twice_ = words[1].text == "on";
  } else {
    return false;
  }
  return true;
}

}  // namespace kestro::programs
