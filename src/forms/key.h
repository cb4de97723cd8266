#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestro::forms {

/// A key as shortcuts and scripts write it: "Del", "F5", "Ctrl+Shift+N".
struct Key {
  bool control = false;
  bool alt = false;
  bool shift = false;
  std::string name;

  [[nodiscard]] bool plain() const { return !control && !alt && !shift; }
  friend bool operator==(const Key&, const Key&) = default;
};

/// Modifiers in front, joined by "+", then one of A-Z, 0-9, F1-F12, Enter, Esc,
/// Del, Home, End, Up, Down. Nothing for any other text, and for a letter or a
/// digit without Ctrl or Alt: that is text, no key to act on.
[[nodiscard]] std::optional<Key> ParseKey(std::string_view written);

}  // namespace kestro::forms
