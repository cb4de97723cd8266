#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/win32/hidden_window.h"
#include "exchange/request_words.h"
#include "programs/tapi32-stand-in/raw_callback.h"

namespace kestro::programs {

/// How a telephony provider can misbehave, each on request. A message is five
/// numbers, decimal or 0x hexadecimal: DEVICE MESSAGE P1 P2 P3.
///
///   deliver MESSAGE             at once, whatever state the line is in (closed, shut down)
///   late MILLISECONDS MESSAGE   after that time, whatever has happened by then
///   thread MESSAGE              from another thread
///   inside FUNCTION MESSAGE     from inside the next call of that line function
///   twice on|off                every message of the exchange comes twice
class Misbehaviour {
 public:
  /// The window must outlive the object.
  explicit Misbehaviour(adapters::HiddenWindow& window);
  ~Misbehaviour();
  Misbehaviour(const Misbehaviour&) = delete;
  Misbehaviour& operator=(const Misbehaviour&) = delete;

  /// The last callback registered; it stays known after the functions were shut down.
  void SetCallback(RawCallback callback) { callback_ = callback; }
  /// A message of the exchange itself.
  void PassOn(const ports::LineMessage& message) const;
  /// A line function begins.
  void Entered(std::string_view function);

  /// False for a request of another kind; raises exchange::RequestError for one that makes no sense.
  bool Take(const std::vector<exchange::RequestWord>& words);

 private:
  void OnTimer(UINT_PTR timer);

  adapters::HiddenWindow& window_;
  RawCallback callback_ = nullptr;
  bool twice_ = false;
  std::multimap<std::string, ports::LineMessage, std::less<>> inside_;  // by function
  std::map<UINT_PTR, ports::LineMessage> late_;                         // by timer
  UINT_PTR last_timer_ = 0;
};

/// A number in a request, decimal or 0x hexadecimal, as the 32 bits it stands for.
[[nodiscard]] std::int32_t ReadNumber(const std::string& word);

}  // namespace kestro::programs
