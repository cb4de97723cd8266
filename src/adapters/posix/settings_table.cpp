#include "adapters/posix/settings_table.h"

#include "adapters/posix/utf8.h"
#include "base/text.h"

namespace kestro::adapters {

bool SettingsTable::IsKey(std::string_view text) {
  const bool names_are_empty = text.empty() || text.front() == '\\' || text.back() == '\\' ||
                               text.find("\\\\") != std::string_view::npos;
  return !names_are_empty && base::IsUtf8(text) && !HasControlCharacter(text);
}

bool SettingsTable::IsName(std::string_view text) { return base::IsUtf8(text); }

bool SettingsTable::HasKey(std::string_view key) const {
  const std::string folded = base::FoldCase(key);
  if (keys_.contains(folded)) return true;
  const auto below = keys_.lower_bound(folded + "\\");
  return below != keys_.end() && below->first.starts_with(folded + "\\");
}

SettingsTable::Key& SettingsTable::KeyOf(std::string_view key) {
  return keys_.try_emplace(base::FoldCase(key), Key{std::string(key), {}}).first->second;
}

void SettingsTable::AddKey(std::string_view key) { KeyOf(key); }

const std::string* SettingsTable::Find(std::string_view key, std::string_view name) const {
  const auto found = keys_.find(base::FoldCase(key));
  if (found == keys_.end()) return nullptr;
  const auto value = found->second.values.find(base::FoldCase(name));
  return value == found->second.values.end() ? nullptr : &value->second.text;
}

void SettingsTable::Set(std::string_view key, std::string_view name, std::string_view text) {
  auto& values = KeyOf(key).values;
  values.try_emplace(base::FoldCase(name), Value{std::string(name), {}}).first->second.text = text;
}

}  // namespace kestro::adapters
