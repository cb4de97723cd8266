#include "adapters/posix/detached_processes.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "adapters/posix/system_error.h"

namespace kestro::adapters {
namespace {

constexpr int kFirstOtherDescriptor = 3;

void Require(int error) {
  if (error != 0) RaiseSystemError(error, base::kFileNotFound);
}

/// Standard input and outputs lead nowhere, everything else is closed.
class NoDescriptors {
 public:
  NoDescriptors() {
    Require(::posix_spawn_file_actions_init(&actions_));
    for (int descriptor = 0; descriptor < kFirstOtherDescriptor; ++descriptor) {
      Require(::posix_spawn_file_actions_addopen(&actions_, descriptor, "/dev/null",
                                                 descriptor == 0 ? O_RDONLY : O_WRONLY, 0));
    }
    Require(::posix_spawn_file_actions_addclosefrom_np(&actions_, kFirstOtherDescriptor));
  }
  ~NoDescriptors() { ::posix_spawn_file_actions_destroy(&actions_); }
  NoDescriptors(const NoDescriptors&) = delete;
  NoDescriptors& operator=(const NoDescriptors&) = delete;

  [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

/// A session of its own, no signal blocked, none ignored or handled.
class FreshProcess {
 public:
  FreshProcess() {
    Require(::posix_spawnattr_init(&attributes_));
    sigset_t signals{};
    ::sigemptyset(&signals);
    Require(::posix_spawnattr_setsigmask(&attributes_, &signals));
    ::sigfillset(&signals);
    Require(::posix_spawnattr_setsigdefault(&attributes_, &signals));
    constexpr int kFlags = POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
    Require(::posix_spawnattr_setflags(&attributes_, kFlags));
  }
  ~FreshProcess() { ::posix_spawnattr_destroy(&attributes_); }
  FreshProcess(const FreshProcess&) = delete;
  FreshProcess& operator=(const FreshProcess&) = delete;

  [[nodiscard]] const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

pid_t Spawn(std::vector<std::string>& arguments) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  const NoDescriptors descriptors;
  const FreshProcess attributes;
  pid_t process = 0;
  Require(
      ::posix_spawnp(&process, pointers[0], descriptors.get(), attributes.get(), pointers.data(), environ));
  return process;
}

FileDescriptor OpenHandle(pid_t process) {
  // Not by the C library's function: some of its headers declare that one with the linkage of C++.
  FileDescriptor handle(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
  if (!handle) RaiseSystemError(errno, base::kFileNotFound);
  return handle;
}

/// True when the process has ended by then.
bool EndsWithin(const FileDescriptor& handle, std::chrono::milliseconds patience) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + patience;
  while (true) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    pollfd ended{handle.get(), POLLIN, 0};
    const int result = ::poll(&ended, 1, static_cast<int>(std::max(left.count(), decltype(left.count()){0})));
    if (result >= 0 || errno != EINTR) return result > 0;
  }
}

/// Takes the ended process away; what went wrong with it, empty for status 0.
std::string Collect(pid_t process) {
  int status = 0;
  while (::waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) return {};  // somebody else has collected it
  }
  if (WIFSIGNALED(status)) return "was ended by signal " + std::to_string(WTERMSIG(status));
  return WEXITSTATUS(status) == 0 ? "" : "ended with status " + std::to_string(WEXITSTATUS(status));
}

}  // namespace

DetachedProcesses::~DetachedProcesses() {
  for (const auto& [process, handle] : running_) watcher_.Unwatch(handle.get());
}

void DetachedProcesses::Start(std::vector<std::string> arguments, std::chrono::milliseconds patience) {
  if (arguments.empty() || arguments[0].empty()) base::RaiseFileError(base::kFileNotFound);
  for (const std::string& argument : arguments) {
    if (argument.find('\0') != std::string::npos) base::RaiseFileError(base::kPathAccessError, "a zero byte");
  }
  // A process that cannot be watched must not be started: this takes the descriptor for it in advance.
  FileDescriptor handle = OpenHandle(::getpid());
  const pid_t process = Spawn(arguments);
  handle.Reset();
  handle = OpenHandle(process);
  if (!EndsWithin(handle, patience)) return CollectLater(process, std::move(handle));
  if (const std::string failure = Collect(process); !failure.empty()) {
    throw base::RuntimeError(base::kAutomationError, arguments[0] + " " + failure);
  }
}

void DetachedProcesses::CollectLater(pid_t process, FileDescriptor handle) {
  const int descriptor = handle.get();
  running_[process] = std::move(handle);
  watcher_.Watch(descriptor, [this, process, descriptor] {
    watcher_.Unwatch(descriptor);
    running_.erase(process);
    Collect(process);
  });
}

}  // namespace kestro::adapters
