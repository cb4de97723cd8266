#pragma once

#include <map>
#include <string>
#include <string_view>

namespace kestro::adapters {

/// Settings in memory: texts by name below keys such as "Software\Kestro\CTI".
/// The letter case of keys and names does not count; the spelling that came
/// first is kept. A text may hold any bytes.
class SettingsTable {
 public:
  struct Value {
    std::string name;
    std::string text;
  };
  struct Key {
    std::string name;
    std::map<std::string, Value> values;  // by folded name
  };

  /// Names joined by "\": UTF-8 without control characters, no name empty.
  [[nodiscard]] static bool IsKey(std::string_view text);
  /// UTF-8; may be empty.
  [[nodiscard]] static bool IsName(std::string_view text);

  /// Also true for a key that only has keys below it.
  [[nodiscard]] bool HasKey(std::string_view key) const;
  void AddKey(std::string_view key);
  /// Null when there is none; valid until the next change.
  [[nodiscard]] const std::string* Find(std::string_view key, std::string_view name) const;
  /// Adds the key when it is missing.
  void Set(std::string_view key, std::string_view name, std::string_view text);

  [[nodiscard]] const std::map<std::string, Key>& keys() const { return keys_; }  // by folded key

 private:
  Key& KeyOf(std::string_view key);

  std::map<std::string, Key> keys_;
};

}  // namespace kestro::adapters
