#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "ports/line_structures.h"
#include "soak/invariants.h"
#include "soak/soak_world.h"

namespace kestro::soak {

inline constexpr ports::CallHandle kFirstHandle = 0x101;
inline constexpr int kHandles = 24;        // few: they come again while their calls are still there
inline constexpr int kMostIdBytes = 2600;  // more than a structure of the line functions has room for
inline constexpr std::int32_t kMonitorDigits = 9;

inline constexpr std::array<std::string_view, 12> kLineFunctions = {
    "lineInitialize",        "lineNegotiateAPIVersion", "lineGetDevCaps", "lineOpen",
    "lineSetStatusMessages", "lineGetCallInfo",         "lineDrop",       "lineDeallocateCall",
    "lineTranslateAddress",  "lineBlindTransfer",       "lineClose",      "lineShutdown"};

inline constexpr std::array<std::string_view, 8> kOddNumbers = {
    "777888999", "", " ", "UNKNOWN", "+", "00", "\x80\xFF\x01", "0123456789012345678901234567890123456789"};
inline constexpr std::array<std::string_view, 3> kPrefixes = {"", "+420", "00420"};
inline constexpr std::array<std::string_view, 4> kInternalNumbers = {"21", "22", "23", "99"};

/// What comes from the telephone line: whole calls in good order, and everything
/// that no exchange should send.
class LineSide {
 public:
  /// `between` is run between the steps of a call.
  LineSide(SoakWorld& world, std::function<void()> between) : world_(world), between_(std::move(between)) {}

  /// One call from its offer to whatever becomes of it.
  void Call() {
    const exchange::Call call = RandomCall();
    MaybeBreak();
    exchange().AnswerByItself(random().OneIn(4));
    if (random().OneIn(4)) {
      InDisorder(call);
    } else {
      InOrder(call);
    }
    between_();
    End(call.handle);
    if (random().OneIn(3)) Repair();
  }
  /// One message, of whatever kind.
  void Message() {
    const auto handle = kFirstHandle + static_cast<std::uint32_t>(random().Below(kHandles));
    Deliver([&] {
      switch (random().Below(10)) {
        case 0:
          return exchange().Connect(handle, random().OneIn(2) ? std::optional<std::string>() : "602000010");
        case 1:
          return exchange().Disconnect(handle);
        case 2:
          return exchange().Idle(handle);
        case 3:
          return exchange().InformOfChange(handle, random().OneIn(2) ? 0x8000 : random().Word());
        case 4:
          return exchange().ReportState(handle,
                                        random().OneIn(2) ? 1U << random().Below(32) : random().Word());
        case 5:
          return exchange().Reply(random().Number(), random().Number());
        case 6:
          return RawMessage();
        default:
          return exchange().Offer(RandomCall());
      }
    });
  }
  /// One number in the upper half of LINE_MONITORDIGITS ends the application; only
  /// while that is expected.
  void EndByOverflow() {
    Deliver([&] { exchange().Deliver({0, kMonitorDigits, 0, 0x00010000, 0, 0}); });
  }
  /// Line functions work again.
  void Repair() {
    for (const auto function : kLineFunctions) exchange().Work(function);
    world_.session().database.SetFault(scenario::DatabaseFault::kNone);
    world_.session().settings.RefuseWrites(false);
    world_.session().dialling.SetDialObject(scenario::DialObject::kWorks);
  }

 private:
  void InOrder(const exchange::Call& call) {
    Deliver([&] { exchange().Offer(call); });
    between_();
    if (random().OneIn(3)) Deliver([&] { exchange().InformOfChange(call.handle, 0x8000); });
    if (random().OneIn(4)) return;  // nobody takes it
    Deliver([&] { exchange().Connect(call.handle, call.caller_id); });
    between_();
    if (random().OneIn(3)) between_();
    if (random().OneIn(3))
      Deliver([&] { exchange().Reply(1 + random().Below(3), random().OneIn(2) ? 0 : -5); });
    if (!random().OneIn(3)) Deliver([&] { exchange().Disconnect(call.handle); });
  }
  void InDisorder(const exchange::Call& call) {
    const int steps = random().Below(8);
    for (int step = 0; step < steps; ++step) {
      if (random().OneIn(3)) {
        Deliver([&] { exchange().Offer(call); });
      } else {
        Message();
      }
      if (random().OneIn(3)) between_();
    }
  }
  /// A call that ends for good. While a transfer has failed, the end of the line's call leaves the
  /// call to the user: nothing to check then, and nothing when its messages are not heard.
  void End(ports::CallHandle call) {
    const app::Application& application = world_.application();
    Deliver([&] { exchange().Disconnect(call); });
    const bool heard = exchange().line_open() && application.Flags().ApplicationStarted;
    if (heard) Invariants(world_).CheckAfterCall();
    Deliver([&] { exchange().Idle(call); });
  }
  void Break() {
    const std::int32_t result = random().OneIn(4) ? random().Number() : ports::kLineErrOperationFailed;
    exchange().Fail(random().Pick(kLineFunctions), result, 1 + random().Below(3));
  }
  void MaybeBreak() {
    if (random().OneIn(30)) Break();
    if (random().OneIn(200)) {
      world_.session().database.SetFault(random().OneIn(2) ? scenario::DatabaseFault::kReading
                                                           : scenario::DatabaseFault::kWriting);
    }
    if (random().OneIn(200)) world_.session().settings.RefuseWrites(true);
    if (random().OneIn(100)) {
      world_.session().dialling.SetDialObject(random().OneIn(2) ? scenario::DialObject::kMissing
                                                                : scenario::DialObject::kFails);
    }
  }
  void RawMessage() {
    ports::LineMessage message{random().Number(), random().Below(30) - 3, random().Number(),
                               random().Number(), random().Number(),      random().Number()};
    if (random().OneIn(4)) message.message = random().Number();
    if (message.message == kMonitorDigits) message.parameter1 &= 0x7FFF;  // see EndByOverflow
    exchange().Deliver(message);
  }
  [[nodiscard]] exchange::Call RandomCall() {
    exchange::Call call;
    call.handle = kFirstHandle + static_cast<std::uint32_t>(random().Below(kHandles));
    if (random().OneIn(4)) call.origin = exchange::kOriginInternal;
    if (random().OneIn(6)) call.reason = exchange::kReasonTransfer;
    if (random().OneIn(8)) {
      call.caller_id = Noise();
    } else if (call.origin == exchange::kOriginInternal) {
      call.caller_id = random().Pick(kInternalNumbers);
    } else if (random().OneIn(2)) {
      call.caller_id = KnownNumber();
    } else if (!random().OneIn(4)) {
      call.caller_id = random().Pick(kOddNumbers);
    }
    return call;
  }
  /// One that contacts have.
  [[nodiscard]] std::string KnownNumber() {
    const std::string number = ContactNumber(random().Below(kContacts / 2));
    return std::string(random().Pick(kPrefixes)) + number;
  }
  [[nodiscard]] std::string Noise() {
    std::string bytes(static_cast<std::size_t>(random().Below(kMostIdBytes)), '1');
    for (char& byte : bytes) {
      if (random().OneIn(2)) byte = static_cast<char>(random().Word());
    }
    return bytes;
  }
  void Deliver(const std::function<void()>& work) { world_.At(kOnTheLine, work); }

  [[nodiscard]] exchange::Exchange& exchange() { return world_.session().exchange; }
  [[nodiscard]] Random& random() { return world_.random(); }

  SoakWorld& world_;
  std::function<void()> between_;
};

}  // namespace kestro::soak
