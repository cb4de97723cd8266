#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "soak/soak_world.h"

namespace kestro::soak {

/// What comes from the telephone line: whole calls in good order, and everything
/// that no exchange should send.
class LineSide {
 public:
  /// `between` is run between the steps of a call.
  LineSide(SoakWorld& world, std::function<void()> between) : world_(world), between_(std::move(between)) {}

  /// One call from its offer to whatever becomes of it.
  void Call();
  /// One message, of whatever kind.
  void Message();
  /// One number in the upper half of LINE_MONITORDIGITS ends the application; only
  /// while that is expected.
  void EndByOverflow();
  /// Line functions work again.
  void Repair();

 private:
  void InOrder(const exchange::Call& call);
  void InDisorder(const exchange::Call& call);
  void End(ports::CallHandle call);
  void Break();
  void MaybeBreak();
  void RawMessage();
  [[nodiscard]] exchange::Call RandomCall();
  [[nodiscard]] std::vector<std::uint8_t> HostileCallInfo();
  void Deliver(const std::function<void()>& work);

  [[nodiscard]] exchange::Exchange& exchange() { return world_.session().exchange; }
  [[nodiscard]] test::Random& random() { return world_.random(); }

  SoakWorld& world_;
  std::function<void()> between_;
};

}  // namespace kestro::soak
