#include "adapters/posix/settings_text.h"
#include "fuzz/property.h"

// The settings file: what can be read is the same after it has been written and read again.

namespace {

using kestro::adapters::SettingsTable;

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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto read = kestro::adapters::ParseSettings(kestro::fuzz::TextOf(data, size));
  if (!read.damage.empty()) return 0;
  const std::string written = kestro::adapters::FormatSettings(read.settings);
  const auto again = kestro::adapters::ParseSettings(written);
  kestro::fuzz::Require(again.damage.empty(), "our own text cannot be read");
  kestro::fuzz::Require(AreEqual(read.settings, again.settings), "the settings have changed");
  kestro::fuzz::Require(kestro::adapters::FormatSettings(again.settings) == written, "the text has changed");
  return 0;
}
