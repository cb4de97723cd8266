#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/stat.h>

#include "base/runtime_error.h"

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

/// Number of the run-time error that the action raises; 0 when it raises none.
template <class Action>
std::int32_t ErrorNumberOf(Action&& action) {
  try {
    action();
  } catch (const base::RuntimeError& error) {
    return error.number();
  }
  return 0;
}

}  // namespace kestro::test
