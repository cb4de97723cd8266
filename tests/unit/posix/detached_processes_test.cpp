#include "adapters/posix/detached_processes.h"

#include <csignal>
#include <fcntl.h>
#include <sstream>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include "unit/posix/posix_support.h"

namespace kestro {
namespace {

using namespace std::chrono_literals;
using adapters::FileDescriptor;
using test::ErrorNumberOf;
using test::WriteScript;

/// No child of this process is left, neither running nor as a zombie.
bool HasNoChild() { return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD; }

/// The signal is in the hexadecimal set behind that word.
bool IsIn(const std::string& status, const std::string& word, int signal) {
  const std::size_t place = status.find(word);
  if (place == std::string::npos) throw std::runtime_error(word + " is missing");
  return (std::stoull(status.substr(place + word.size()), nullptr, 16) >> (signal - 1) & 1U) != 0;
}

class DetachedProcesses : public testing::Test {
 protected:
  std::int32_t Start(std::vector<std::string> arguments, std::chrono::milliseconds patience = 5s) {
    return ErrorNumberOf([&] { processes_.Start(std::move(arguments), patience); });
  }
  /// Runs the script to its end and returns what it wrote into the file "out".
  std::string OutputOf(const std::string& body) {
    const std::string out = folder_.File("out").string();
    EXPECT_EQ(0, Start({WriteScript(folder_, "script", body), out}));
    return test_support::ReadFile(out);
  }

  test_support::TemporaryFolder folder_;
  test::PollingWatcher watcher_;
  adapters::DetachedProcesses processes_{watcher_};
};

TEST_F(DetachedProcesses, AFailureAtOnceIsRaisedAndLeavesNothing) {
  const std::pair<const char*, std::int32_t> cases[] = {{"exit 0", 0},       {"exit 1", 440},
                                                        {"exit 126", 440},   {"exit 127", 440},
                                                        {"kill -9 $$", 440}, {"sleep 0.1; exit 3", 440}};
  for (const auto& [script, error] : cases) {
    EXPECT_EQ(error, Start({WriteScript(folder_, "script", script)})) << script;
    EXPECT_TRUE(HasNoChild()) << script;
  }
  EXPECT_EQ(0U, watcher_.watched());
}

TEST_F(DetachedProcesses, WhatCannotBeStartedIsRaised) {
  const std::string plain = folder_.File("plain").string();
  test_support::WriteFile(plain, "no program");
  EXPECT_EQ(53, Start({folder_.File("missing").string()}));
  EXPECT_EQ(53, Start({"kestro-no-such-program"}));
  EXPECT_EQ(75, Start({plain}));
  EXPECT_EQ(75, Start({folder_.path().string()}));
  EXPECT_EQ(53, Start({}));
  EXPECT_EQ(53, Start({""}));
  EXPECT_EQ(75, Start({"/bin/true", std::string("a\0b", 3)}));
  EXPECT_EQ(75, Start({"/bin/true", std::string(4U << 20U, '1')})) << "longer than the system takes";
  EXPECT_TRUE(HasNoChild());
}

TEST_F(DetachedProcesses, OneThatGoesOnIsCollectedWhenItEnds) {
  const auto before = std::chrono::steady_clock::now();
  EXPECT_EQ(0, Start({"/bin/sleep", "0.5"}, 50ms));
  EXPECT_GT(400ms, std::chrono::steady_clock::now() - before) << "the window would have been blocked";
  EXPECT_EQ(1U, processes_.running());
  EXPECT_TRUE(watcher_.RunUntil([&] { return processes_.running() == 0; }));
  EXPECT_TRUE(HasNoChild());
  EXPECT_EQ(0U, watcher_.watched());
}

TEST_F(DetachedProcesses, OneThatHangsStaysAloneWhenTheProgramEnds) {
  test::PollingWatcher watcher;
  {
    adapters::DetachedProcesses processes(watcher);
    processes.Start({"/bin/sleep", "30"}, 10ms);
    EXPECT_EQ(1U, watcher.watched());
  }
  EXPECT_EQ(0U, watcher.watched());
  siginfo_t child{};
  ASSERT_EQ(0, ::waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT)) << "it must still run";
  EXPECT_EQ(0, child.si_pid);
  const std::string children = test_support::ReadFile("/proc/thread-self/children");
  ASSERT_EQ(0, ::kill(std::stoi(children), SIGKILL));
  EXPECT_EQ(std::stoi(children), ::waitpid(std::stoi(children), nullptr, 0));
}

TEST_F(DetachedProcesses, NothingOfThisProcessGoesWithIt) {
  const FileDescriptor leaked(::open("/dev/null", O_RDONLY));  // without O_CLOEXEC
  const FileDescriptor high(::fcntl(leaked.get(), F_DUPFD, 200));
  ASSERT_TRUE(high);
  // The shell itself has opened the script and the output.
  const std::string links =
      OutputOf("for fd in /proc/$$/fd/*; do readlink $fd; done >\"$1\" 2>/dev/null; true");
  std::istringstream lines(links);
  for (std::string line; std::getline(lines, line);) {
    const bool known = line == "/dev/null" || line == folder_.File("script") || line == folder_.File("out");
    EXPECT_TRUE(known) << line;
  }
  EXPECT_EQ("closed\n", OutputOf("test -e /proc/$$/fd/200 && echo open >\"$1\" || echo closed >\"$1\""));
}

TEST_F(DetachedProcesses, ItHasItsOwnSessionAndUsualSignals) {
  sigset_t blocked{};
  sigset_t before{};
  ::sigemptyset(&blocked);
  ::sigaddset(&blocked, SIGUSR1);
  ::pthread_sigmask(SIG_BLOCK, &blocked, &before);
  const auto handler = ::signal(SIGUSR2, SIG_IGN);
  const std::string text = OutputOf(
      // Read by the shell itself: while it waits for a command to start it blocks signals of its own accord.
      "while read -r line; do case $line in SigBlk*|SigIgn*) echo \"$line\";; esac; done </proc/$$/status "
      ">\"$1\"\n"
      "out=$1; set -- $(cat /proc/$$/stat); test $1 = $6 && echo own session >>\"$out\"");
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  ::signal(SIGUSR2, handler);
  EXPECT_FALSE(IsIn(text, "SigBlk:", SIGUSR1)) << text;
  EXPECT_FALSE(IsIn(text, "SigIgn:", SIGUSR2)) << text;
  EXPECT_NE(std::string::npos, text.find("own session\n")) << text;
}

}  // namespace
}  // namespace kestro
