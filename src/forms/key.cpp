#include "forms/key.h"

#include <algorithm>
#include <array>

namespace kestro::forms {
namespace {

constexpr auto kNamedKeys =
    std::to_array<std::string_view>({"F1", "F2", "F3", "F4", "F5", "F6", "F7", "F8", "F9", "F10", "F11",
                                     "F12", "Enter", "Esc", "Del", "Home", "End", "Up", "Down"});

bool TakePrefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

bool TakeModifier(std::string_view& text, Key& key) {
  bool* modifier = TakePrefix(text, "Ctrl+")    ? &key.control
                   : TakePrefix(text, "Alt+")   ? &key.alt
                   : TakePrefix(text, "Shift+") ? &key.shift
                                                : nullptr;
  if (modifier != nullptr) *modifier = true;
  return modifier != nullptr;
}

bool IsCharacterKey(std::string_view name) {
  return name.size() == 1 && ((name[0] >= 'A' && name[0] <= 'Z') || (name[0] >= '0' && name[0] <= '9'));
}

}  // namespace

std::optional<Key> ParseKey(std::string_view written) {
  Key key;
  while (TakeModifier(written, key)) {
  }
  const bool named = std::find(kNamedKeys.begin(), kNamedKeys.end(), written) != kNamedKeys.end();
  if (!named && !(IsCharacterKey(written) && (key.control || key.alt))) return std::nullopt;
  key.name = written;
  return key;
}

}  // namespace kestro::forms
