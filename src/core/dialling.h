#pragma once

#include <cstdint>
#include <string_view>

#include "ports/dialling_object.h"

namespace kestro::core {

/// Dials numbers through the external dialling object. Has no procedure frame of
/// its own: an error is logged by the procedure that dials.
class Dialling {
 public:
  /// The objects must outlive it.
  explicit Dialling(ports::DiallingObjects& objects) : objects_(objects) {}

  /// Creates the object, lets it dial the number as it stands (an empty one
  /// too) and releases it; the object's own result. Raises 5, before anything
  /// is created, for a number with control characters, 429 when there is no
  /// such object, and what the object raises.
  std::int32_t Dial(std::string_view number);
  /// The number of a link would come back as a link.
  [[nodiscard]] bool HandsToDesktop() { return objects_.HandsToDesktop(); }

 private:
  ports::DiallingObjects& objects_;
};

}  // namespace kestro::core
