#pragma once

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/stat.h>

#include "support/error_number.h"
#include "support/polling_watcher.h"
#include "unit/support/temporary_folder.h"

namespace kestro::test {

/// Sets (or, with null, removes) an environment variable for one test.
class ScopedEnvironment {
 public:
  ScopedEnvironment(const char* name, const char* value) : name_(name) {
    if (const char* const before = std::getenv(name)) before_ = before;
    Set(value);
  }
  ~ScopedEnvironment() { Set(before_ ? before_->c_str() : nullptr); }
  ScopedEnvironment(const ScopedEnvironment&) = delete;
  ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

 private:
  void Set(const char* value) {
    if (value == nullptr) {
      ::unsetenv(name_);
    } else {
      ::setenv(name_, value, 1);
    }
  }

  const char* name_;
  std::optional<std::string> before_;
};

class ScopedUmask {
 public:
  explicit ScopedUmask(mode_t mask) : before_(::umask(mask)) {}
  ~ScopedUmask() { ::umask(before_); }
  ScopedUmask(const ScopedUmask&) = delete;
  ScopedUmask& operator=(const ScopedUmask&) = delete;

 private:
  mode_t before_;
};

/// Permission bits, without following a symbolic link.
inline int Permissions(const std::filesystem::path& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 ? static_cast<int>(status.st_mode & 07777U) : -1;
}

/// No file of this process may become larger while it lives; a write behind that is an error, no signal.
class ScopedFileLimit {
 public:
  explicit ScopedFileLimit(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    if (::getrlimit(RLIMIT_FSIZE, &before_) != 0) throw std::runtime_error("no limit can be set");
    const rlimit small{bytes, before_.rlim_max};
    if (::setrlimit(RLIMIT_FSIZE, &small) != 0) throw std::runtime_error("no limit can be set");
  }
  ~ScopedFileLimit() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, SIG_DFL);
  }
  ScopedFileLimit(const ScopedFileLimit&) = delete;
  ScopedFileLimit& operator=(const ScopedFileLimit&) = delete;

 private:
  rlimit before_{};
};

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
