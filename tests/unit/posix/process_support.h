#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "support/polling_watcher.h"
#include "unit/support/temporary_folder.h"

namespace kestro::test {

/// Writes a shell script that anybody may run; its native path.
inline std::string WriteScript(const test_support::TemporaryFolder& folder, std::string_view name,
                               std::string_view body) {
  const auto path = folder.File(name);
  test_support::WriteFile(path, "#!/bin/sh\n" + std::string(body) + "\n");
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  return path.string();
}

/// Lets the script named print its arguments, one a line in angle brackets, into FOLDER/arguments.
inline std::string WriteArgumentScript(const test_support::TemporaryFolder& folder, std::string_view name) {
  const std::string output = folder.File("arguments").string();
  return WriteScript(folder, name,
                     R"(for word; do printf '<%s>\n' "$word"; done >')" + output + ".new'\nmv '" + output +
                         ".new' '" + output + "'");
}

}  // namespace kestro::test
