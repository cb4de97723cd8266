#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace kestro::ports {

/// The external dialling object ("CTI.DialCom"): created for one call, released
/// afterwards. User-interface thread only.
class DiallingObject {
 public:
  virtual ~DiallingObject() = default;
  /// Dials the number (UTF-8) as it stands, an empty one included if the object
  /// takes it; the object's own result. Raises base::RuntimeError when it
  /// cannot. A call that has begun does not depend on the object any more.
  virtual std::int32_t Dial(std::string_view number) = 0;
};

class DiallingObjects {
 public:
  virtual ~DiallingObjects() = default;
  /// Never null. Raises 429 when there is no such object on this system.
  [[nodiscard]] virtual std::unique_ptr<DiallingObject> CreateDialCom() = 0;
  /// Numbers are handed to the program that the desktop opens telephone links
  /// with, which may well be this one: the number of a link would come back.
  [[nodiscard]] virtual bool HandsToDesktop() { return false; }
};

}  // namespace kestro::ports
