#pragma once

#include <functional>
#include <memory>
#include <string>

#include "ports/clock.h"
#include "ports/settings_store.h"

namespace kestro::programs {

/// Whose data the program works on.
struct UserWorld {
  std::string user_data_folder;  // native; empty = the user has none
  std::unique_ptr<ports::SettingsStore> settings;
};

/// Name of the only line of the software exchange.
inline constexpr const char* kExchangeLine = "EXT 101";

/// The user's own settings file and data. What is wrong with the file is
/// reported; the clock must outlive the settings.
[[nodiscard]] UserWorld OwnWorld(const ports::Clock& clock, std::function<void(const std::string&)> report);

/// A sample address book in a folder of its own and settings that are forgotten
/// at the end: the user's contacts and settings are never touched. Raises
/// base::RuntimeError.
[[nodiscard]] UserWorld DemoWorld(const std::string& program_folder);

}  // namespace kestro::programs
