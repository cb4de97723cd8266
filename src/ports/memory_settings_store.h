#pragma once

#include <map>
#include <set>
#include <string>

#include "ports/settings_store.h"

namespace kestro::ports {

/// Settings that live as long as the object: for tests, the player and the
/// demonstration. Can be told to refuse writes.
class MemorySettingsStore final : public SettingsStore {
 public:
  static constexpr std::int32_t kNotFound = 2;
  static constexpr std::int32_t kAccessDenied = 5;

  std::int32_t CreateKey(std::string_view key) override {
    if (read_only_) return kAccessDenied;
    keys_.emplace(key);
    return 0;
  }
  std::optional<std::string> QueryValue(std::string_view key, std::string_view name) override {
    const auto found = values_.find({std::string(key), std::string(name)});
    if (found == values_.end()) return std::nullopt;
    return found->second;
  }
  std::int32_t SetValue(std::string_view key, std::string_view name, std::string_view value) override {
    if (read_only_) return kAccessDenied;
    if (!keys_.contains(std::string(key))) return kNotFound;
    values_[{std::string(key), std::string(name)}] = value;
    return 0;
  }

  void RefuseWrites(bool refuse) { read_only_ = refuse; }
  [[nodiscard]] const auto& values() const { return values_; }

 private:
  std::set<std::string> keys_;
  std::map<std::pair<std::string, std::string>, std::string> values_;
  bool read_only_ = false;
};

}  // namespace kestro::ports
