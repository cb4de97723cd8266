#pragma once

#include <utility>

namespace kestro::base {

/// Gives a variable a value for the length of a scope; the old one comes back
/// however the scope is left.
template <class Value>
class ScopeValue {
 public:
  ScopeValue(Value& variable, Value value)
      : variable_(variable), old_(std::exchange(variable, std::move(value))) {}
  ~ScopeValue() { variable_ = std::move(old_); }
  ScopeValue(const ScopeValue&) = delete;
  ScopeValue& operator=(const ScopeValue&) = delete;

 private:
  Value& variable_;
  Value old_;
};

}  // namespace kestro::base
