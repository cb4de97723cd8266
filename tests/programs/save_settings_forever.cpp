// Saves settings until it is killed, and checks what a killed one left behind.
//
//   save-settings-forever save FILE    prints a generation as soon as all its settings are saved
//   save-settings-forever check FILE   prints the generation that the file is complete for;
//                                      exit status 1 when it is not what a save leaves

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/posix/settings_file.h"
#include "core/registry_settings_module.h"
#include "core/system_clock.h"

namespace {

using kestro::adapters::SettingsFile;
using kestro::core::kSettingsKey;

constexpr std::array kNames = {"DatabasePath", "LogIntoFile", "AutomaticWindowPopUp", "AutomaticWindowHide",
                               "PhoneLine"};

/// The number many times over: a text of it that is cut off or mixed with another is noticed.
std::string ValueOf(std::uint64_t generation) {
  constexpr int kRepetitions = 500;
  std::string value;
  for (int i = 0; i < kRepetitions; ++i) value.append(std::to_string(generation)).append(" \\ ");
  return value;
}

std::optional<std::uint64_t> GenerationOf(const std::string& value) {
  std::uint64_t generation = 0;
  std::from_chars(value.data(), value.data() + value.size(), generation);
  if (value != ValueOf(generation)) return std::nullopt;
  return generation;
}

[[noreturn]] void Fail(std::string_view text) {
  std::cerr << text << std::endl;
  std::exit(1);
}

/// The settings are saved one by one in the order of their names, so a kill leaves one
/// generation in the first ones and the one before it in the others.
std::uint64_t CompleteGeneration(SettingsFile& settings) {
  std::uint64_t newest = 0;
  std::uint64_t previous = 0;
  for (const char* const name : kNames) {
    const auto value = settings.QueryValue(kSettingsKey, name);
    const auto generation = value ? GenerationOf(*value) : std::nullopt;
    if (!generation) Fail(std::string(value ? "not a saved value: " : "missing: ") + name);
    if (newest == 0) newest = previous = *generation;
    if (*generation > previous) Fail("a setting is newer than one saved before it");
    if (*generation + 1 < newest) Fail("a setting is more than one generation old");
    previous = *generation;
  }
  return previous;
}

[[noreturn]] void SaveForever(SettingsFile& settings, std::uint64_t generation) {
  if (settings.CreateKey(kSettingsKey) != 0) Fail("the key cannot be made");
  while (true) {
    ++generation;
    for (const char* const name : kNames) {
      const auto error = settings.SetValue(kSettingsKey, name, ValueOf(generation));
      if (error != 0) Fail("error " + std::to_string(error));
    }
    std::cout << generation << std::endl;
  }
}

}  // namespace

int main(int argument_count, char* arguments[]) {
  const std::string_view command = argument_count == 3 ? arguments[1] : "";
  if (command != "save" && command != "check") Fail("save-settings-forever save|check FILE");
  const kestro::core::SystemClock clock;
  SettingsFile settings(arguments[2], clock, [](const std::string& text) { Fail(text); });
  const bool is_new = !settings.QueryValue(kSettingsKey, kNames.back());
  if (command == "save") SaveForever(settings, is_new ? 0 : CompleteGeneration(settings));
  std::cout << CompleteGeneration(settings) << std::endl;
}
