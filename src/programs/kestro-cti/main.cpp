// The program on a Linux desktop.

#include <algorithm>
#include <chrono>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include <QApplication>
#include <QIcon>

#include "adapters/posix/activation_socket.h"
#include "adapters/posix/instance_lock.h"
#include "adapters/posix/runtime_folder.h"
#include "adapters/posix/user_folders.h"
#include "base/runtime_error.h"
#include "core/dial_link.h"
#include "generated/version.h"
#include "programs/kestro-cti/desktop_program.h"

namespace {

using kestro::adapters::InstanceLock;
using kestro::adapters::RuntimeFolder;
using kestro::programs::DesktopProgram;

enum ExitStatus : int { kEnded = 0, kFailed = 1, kUsage = 2 };

constexpr std::chrono::seconds kPatienceWithOther{5};

constexpr std::string_view kUsageText =
    "Usage: kestro-cti [--demo] [--end-after-start] [LINK] | --help | --version\n"
    "Watches the line of the built-in software exchange; cti-exchange, in another\n"
    "terminal, makes it ring.\n"
    "  --demo      with a sample address book and settings that are forgotten\n"
    "  --end-after-start\n"
    "              comes up and ends in order: tells whether the program can run here\n"
    "  LINK        a telephone link, tel:NUMBER or callto:NUMBER: the running program,\n"
    "              or this one once it is up, asks whether to dial the number\n"
    "  --help      shows this text\n"
    "  --version   shows the version\n";

/// What the command line asks for.
struct Options {
  DesktopProgram::World world = DesktopProgram::World::kOwn;
  bool end_after_start = false;
  DesktopProgram::Link link;
};

/// Waits a little for a program that is just coming up.
int HandOver(const RuntimeFolder& folder, const std::string& number) {
  const auto end = std::chrono::steady_clock::now() + kPatienceWithOther;
  while (!kestro::adapters::RequestDialling(kestro::adapters::ActivationSocketPath(folder), number)) {
    if (std::chrono::steady_clock::now() >= end) {
      std::cerr << "kestro-cti: the running program does not take the link\n";
      return kFailed;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return kEnded;
}

int RunApplication(const Options& options, InstanceLock instances, int argument_count, char* arguments[]) {
  QApplication application(argument_count, arguments);
  QApplication::setApplicationName(QStringLiteral("kestro-cti"));
  QApplication::setApplicationDisplayName(QString());  // captions stand alone
  const std::string icon = kestro::adapters::ExecutableFolder() + "/Icons/app.ico";
  QApplication::setWindowIcon(QIcon(QString::fromStdString(icon)));
  DesktopProgram program(options.world, std::move(instances), options.link);
  return program.Run(options.end_after_start);
}

int RunProgram(const Options& options, int argument_count, char* arguments[]) {
  try {
    const RuntimeFolder folder;
    InstanceLock instances(folder);
    if (options.link && instances.AnotherInstanceRuns()) return HandOver(folder, *options.link);
    return RunApplication(options, std::move(instances), argument_count, arguments);
  } catch (const kestro::base::RuntimeError& error) {
    std::cerr << "kestro-cti: " << error.description() << "\n";
    return kFailed;
  } catch (const std::exception& error) {
    std::cerr << "kestro-cti: " << error.what() << "\n";
    return kFailed;
  }
}

/// Whom the user calls is nothing for the list of processes, which every user of the machine can read.
void Blank(char* argument) { std::fill(argument, argument + std::string_view(argument).size(), '\0'); }

}  // namespace

int main(int argument_count, char* arguments[]) {
  Options options;
  for (int i = 1; i < argument_count; ++i) {
    const std::string_view option = arguments[i];
    if (option == "--help") {
      std::cout << kUsageText;
      return kEnded;
    }
    if (option == "--version") {
      std::cout << kestro::kProductName << " " << kestro::kVersion << "\n";
      return kEnded;
    }
    if (option == "--demo") {
      options.world = DesktopProgram::World::kDemo;
    } else if (option == "--end-after-start") {
      options.end_after_start = true;
    } else if (kestro::core::IsDialLink(option)) {
      options.link = kestro::core::NumberOfLink(option);
      Blank(arguments[i]);
    } else if (option == "-session") {
      ++i;  // the session manager's own: an identifier follows
    } else {
      std::cerr << "kestro-cti: unknown option " << option << "\n" << kUsageText;
      return kUsage;
    }
  }
  return RunProgram(options, argument_count, arguments);
}
