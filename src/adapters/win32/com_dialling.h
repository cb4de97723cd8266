#pragma once

#include "ports/dialling_object.h"

namespace kestro::adapters {

/// The dialling object that is registered under "CTI.DialCom", by its IDispatch.
/// The thread must be in a COM apartment (see ComApartment).
class ComDialling final : public ports::DiallingObjects {
 public:
  /// Raises 429 when the identifier is not registered or the object cannot be
  /// made. Dial raises 440 with the words of the object.
  [[nodiscard]] std::unique_ptr<ports::DiallingObject> CreateDialCom() override;
};

/// The calling thread's place in COM while the object lives.
class ComApartment {
 public:
  ComApartment();
  ~ComApartment();
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

 private:
  bool entered_;
};

}  // namespace kestro::adapters
