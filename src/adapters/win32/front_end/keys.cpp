#include "adapters/win32/front_end/keys.h"

#include <algorithm>
#include <array>

namespace kestro::adapters::win32 {
namespace {

struct Named {
  std::string_view name;
  WORD key;
};

constexpr std::array kNamed{Named{"Enter", VK_RETURN}, Named{"Esc", VK_ESCAPE}, Named{"Del", VK_DELETE},
                            Named{"Home", VK_HOME},    Named{"End", VK_END},    Named{"Up", VK_UP},
                            Named{"Down", VK_DOWN}};

bool IsDown(int key) { return GetKeyState(key) < 0; }

std::string NameOf(WPARAM key) {
  if ((key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9')) return {static_cast<char>(key)};
  if (key >= VK_F1 && key <= VK_F12) return "F" + std::to_string(key - VK_F1 + 1);
  const auto found =
      std::find_if(kNamed.begin(), kNamed.end(), [&](const Named& one) { return one.key == key; });
  return found == kNamed.end() ? std::string() : std::string(found->name);
}

}  // namespace

WORD VirtualKey(const forms::Key& key) {
  const auto found =
      std::find_if(kNamed.begin(), kNamed.end(), [&](const Named& one) { return one.name == key.name; });
  if (found != kNamed.end()) return found->key;
  if (key.name.size() > 1) return static_cast<WORD>(VK_F1 + std::stoi(key.name.substr(1)) - 1);
  return static_cast<WORD>(key.name.at(0));
}

std::optional<forms::Key> KeyOf(WPARAM virtual_key) {
  forms::Key key{IsDown(VK_CONTROL), IsDown(VK_MENU), IsDown(VK_SHIFT), NameOf(virtual_key)};
  return key.name.empty() ? std::nullopt : std::optional(key);
}

}  // namespace kestro::adapters::win32
