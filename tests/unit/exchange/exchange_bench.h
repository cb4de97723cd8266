#pragma once

#include <array>
#include <deque>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exchange/exchange.h"
#include "ports/line_structures.h"

namespace kestro::test {

/// An exchange with two devices, an event loop to run by hand, and an
/// application that notes every message and holds line 1 open.
struct ExchangeBench {
  ExchangeBench() {
    exchange.AddDevice({"EXT 100", "SOFTWARE EXCHANGE", 0});
    exchange.AddDevice({"EXT 101", "PANASONIC KX-TDA", 0x01FFFFFF});
  }

  void OpenLine() {
    std::uint32_t devices = 0;
    exchange.Initialize(
        application, [this](const ports::LineMessage& message) { OnMessage(message); }, "KESTRO CTI",
        devices);
    exchange.Open(application, 1, line, ports::kLineApiVersion, 0, 77, 6, 4);
  }

  void OnMessage(const ports::LineMessage& message) {
    messages.push_back(message);
    if (on_message) on_message(message);
  }

  void RunPosted() {
    while (!posted.empty()) {
      const auto task = std::move(posted.front());
      posted.pop_front();
      task();
    }
  }

  ports::CallHandle Ring(std::string number) {
    exchange::Call call;
    call.handle = exchange.NewHandle();
    call.caller_id = std::move(number);
    exchange.Offer(call);
    return call.handle;
  }

  std::vector<ports::LineMessage> TakeMessages() { return std::exchange(messages, {}); }

  std::deque<std::function<void()>> posted;
  exchange::Exchange exchange{[this](std::function<void()> task) { posted.push_back(std::move(task)); }};
  ports::LineHandle application = 0;
  ports::LineHandle line = 0;
  std::vector<ports::LineMessage> messages;
  std::function<void(const ports::LineMessage&)> on_message;
};

/// A buffer of `size` bytes, all 0xEE, whose dwTotalSize is `told`.
inline std::vector<std::uint8_t> Buffer(std::size_t size, std::uint32_t told) {
  std::vector<std::uint8_t> buffer(size, 0xEE);
  ports::WriteDword(buffer, ports::kTotalSize, told);
  return buffer;
}

}  // namespace kestro::test
