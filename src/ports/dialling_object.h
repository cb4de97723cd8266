#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace kestro::ports {

/// The external dialling object ("CTI.DialCom"): created for one call, released afterwards.
class DiallingObject {
 public:
  virtual ~DiallingObject() = default;
  /// Dials the number as it stands; the object's own result. Raises when it cannot.
  virtual std::int32_t Dial(std::string_view number) = 0;
};

class DiallingObjects {
 public:
  virtual ~DiallingObjects() = default;
  /// Raises 429 when there is no such object on this system.
  [[nodiscard]] virtual std::unique_ptr<DiallingObject> CreateDialCom() = 0;
};

}  // namespace kestro::ports
