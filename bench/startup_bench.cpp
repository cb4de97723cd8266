// The time from the start of the program to its tray icon, and its memory, next to a program that has nothing
// but a tray icon and a window:
//   bench_startup_bench
// Both end by themselves as soon as they are up; the time counts until then. Needs a display with a
// notification area: "./dev bench" brings one.

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <limits>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "unit/support/temporary_folder.h"

extern char** environ;  // NOLINT(readability-redundant-declaration): not declared by every C library

namespace {

constexpr int kRuns = 15;

struct Figures {
  double seconds = std::numeric_limits<double>::max();
  long kilobytes = std::numeric_limits<long>::max();  // largest resident size
};

/// Runs the program to its end.
Figures RunOnce(std::vector<std::string> command) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (auto& word : command) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const auto start = std::chrono::steady_clock::now();
  pid_t child = 0;
  if (const int error = posix_spawn(&child, arguments[0], nullptr, nullptr, arguments.data(), environ)) {
    throw std::system_error(error, std::generic_category(), command[0]);
  }
  int status = 0;
  rusage usage{};
  while (wait4(child, &status, 0, &usage) < 0) {
    if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "wait4");
  }
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) throw std::runtime_error(command[0] + " failed");
  return {elapsed.count(), usage.ru_maxrss};
}

/// The best of several runs: the machine may be busy with other things.
void TakeBest(Figures& best, const Figures& run) {
  best.seconds = std::min(best.seconds, run.seconds);
  best.kilobytes = std::min(best.kilobytes, run.kilobytes);
}

void Print(const char* name, const Figures& figures) {
  std::cout << name << ": " << figures.seconds * 1000 << " ms, " << figures.kilobytes << " kB\n";
}

}  // namespace

int main() {
  const kestro::test_support::TemporaryFolder home;
  for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
    setenv(name, home.path().c_str(), 1);
  }
  if (std::getenv("DISPLAY") == nullptr) {
    std::cout << "skipped: there is no display\n";
    return 0;
  }
  std::filesystem::permissions(home.path(), std::filesystem::perms::owner_all);
  const std::string programs = KESTRO_PROGRAM_DIR;
  const std::vector<std::string> ours = {programs + "/kestro-cti", "--demo", "--end-after-start"};
  const std::vector<std::string> minimal = {std::string(KESTRO_BENCH_DIR) + "/minimal_tray"};
  Figures program;
  Figures reference;
  RunOnce(ours);  // makes the address book and fills the font cache
  for (int run = 0; run < kRuns; ++run) {
    TakeBest(program, RunOnce(ours));
    TakeBest(reference, RunOnce(minimal));
  }
  Print("kestro-cti", program);
  Print("minimal program", reference);
  std::cout << "ratio start-up / minimal program = " << program.seconds / reference.seconds
            << " (goal <= 2)\n"
            << "ratio resident memory / minimal program = "
            << static_cast<double>(program.kilobytes) / static_cast<double>(reference.kilobytes)
            << " (goal <= 2)\n";
  return 0;
}
