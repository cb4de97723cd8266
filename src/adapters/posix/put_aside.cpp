#include "adapters/posix/put_aside.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <unistd.h>

#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

constexpr int kMostNames = 100;  // of one second

std::string TimeInName(std::chrono::system_clock::time_point time) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  std::tm local{};
  ::localtime_r(&seconds, &local);
  std::array<char, 64> text{};
  return {text.data(), std::strftime(text.data(), text.size(), "%Y%m%d-%H%M%S", &local)};
}

/// 0, or errno; EEXIST when there is such a file.
int RenameWithoutOverwriting(const std::string& from, const std::string& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (errno != EINVAL && errno != ENOSYS) return errno;
  // A file system that cannot do it in one step.
  if (::link(from.c_str(), to.c_str()) != 0) return errno;
  return ::unlink(from.c_str()) == 0 ? 0 : errno;
}

}  // namespace

std::string PutAside(const std::string& file, std::chrono::system_clock::time_point time) {
  const std::string name = file + ".damaged-" + TimeInName(time);
  std::string free_name = name;
  int error = RenameWithoutOverwriting(file, free_name);
  for (int number = 2; error == EEXIST && number <= kMostNames; ++number) {
    free_name = name + "-" + std::to_string(number);
    error = RenameWithoutOverwriting(file, free_name);
  }
  if (error != 0) RaiseSystemError(error, base::kFileNotFound);
  return free_name;
}

}  // namespace kestro::adapters
