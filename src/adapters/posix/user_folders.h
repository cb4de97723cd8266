#pragma once

#include <string>

namespace kestro::adapters {

/// Native folders of the user and of the running program, without a trailing
/// "/"; none is made here. A relative path in the environment does not count.

/// $HOME, or the home of the user's account; empty when there is none.
[[nodiscard]] std::string HomeFolder();
/// $XDG_DATA_HOME, or ~/.local/share; empty without a home.
[[nodiscard]] std::string UserDataHome();
/// $XDG_STATE_HOME, or ~/.local/state; empty without a home.
[[nodiscard]] std::string UserStateHome();
/// Where the running program lies. Raises 53 when the system cannot tell.
[[nodiscard]] std::string ExecutableFolder();

/// The value of an environment variable if it is an absolute path; otherwise empty.
[[nodiscard]] std::string AbsolutePathFromEnvironment(const char* name);

/// Makes the folder and the missing ones above it, for the user alone (mode
/// 0700). Raises what RaiseSystemError does; an existing folder is no error.
void MakeFolders(const std::string& folder);

}  // namespace kestro::adapters
