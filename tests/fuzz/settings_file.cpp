#include "adapters/posix/settings_text.h"
#include "fuzz/property.h"

// The settings file: what can be read is the same after it has been written and read again.

namespace kestro::fuzz {
namespace {

using adapters::SettingsTable;

bool AreEqual(const SettingsTable& left, const SettingsTable& right) {
  if (left.keys().size() != right.keys().size()) return false;
  for (const auto& [folded, key] : left.keys()) {
    for (const auto& [folded_name, value] : key.values) {
      const std::string* const other = right.Find(key.name, value.name);
      if (other == nullptr || *other != value.text) return false;
    }
    if (!right.HasKey(key.name)) return false;
  }
  return true;
}

}  // namespace

void Check(std::string_view text) {
  const auto read = adapters::ParseSettings(text);
  if (!read.damage.empty()) return;
  const std::string written = adapters::FormatSettings(read.settings);
  const auto again = adapters::ParseSettings(written);
  Require(again.damage.empty(), "our own text cannot be read");
  Require(AreEqual(read.settings, again.settings), "the settings have changed");
  Require(adapters::FormatSettings(again.settings) == written, "the text has changed");
}

}  // namespace kestro::fuzz
