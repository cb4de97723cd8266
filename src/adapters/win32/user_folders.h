#pragma once

#include <string>

#include "ports/settings_store.h"

namespace kestro::adapters {

/// Folders without a trailing "\"; none is made here.

/// Where the running program lies. Raises 53 when the system cannot tell.
[[nodiscard]] std::string ProgramFolder();

/// The user's application data: what the shell's own settings say or, where they
/// say nothing or the ANSI code page cannot express it, what the system says;
/// empty when there is none.
[[nodiscard]] std::string UserDataFolder(ports::SettingsStore& registry);

/// %LOCALAPPDATA%\KESTRO CTI, for what belongs to this machine only; empty when there is none.
[[nodiscard]] std::string LocalDataFolder();

}  // namespace kestro::adapters
