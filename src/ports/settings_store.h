#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kestro::ports {

/// The per-user settings: string values under keys, in the shape of the registry
/// functions. A result is 0 for success or a system error code (2 = not found).
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  /// Makes the key (and its parents) when it does not exist.
  virtual std::int32_t CreateKey(std::string_view key) = 0;
  /// Text of a value (a number is delivered as its decimal text); nothing when
  /// the key or the value is missing or of another type.
  [[nodiscard]] virtual std::optional<std::string> QueryValue(std::string_view key,
                                                              std::string_view name) = 0;
  /// Writes a text; fails with 2 when the key does not exist. Durable when it returns 0.
  virtual std::int32_t SetValue(std::string_view key, std::string_view name, std::string_view value) = 0;
};

}  // namespace kestro::ports
