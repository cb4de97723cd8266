// The program on a Linux desktop.

#include <exception>
#include <iostream>
#include <string>
#include <string_view>

#include <QApplication>
#include <QIcon>

#include "adapters/posix/user_folders.h"
#include "base/runtime_error.h"
#include "generated/version.h"
#include "programs/kestro-cti/desktop_program.h"

namespace {

using kestro::programs::DesktopProgram;

enum ExitStatus : int { kEnded = 0, kFailed = 1, kUsage = 2 };

constexpr std::string_view kUsageText =
    "Usage: kestro-cti [--demo] [--end-after-start] | --help | --version\n"
    "Watches the line of the built-in software exchange; cti-exchange, in another\n"
    "terminal, makes it ring.\n"
    "  --demo      with a sample address book and settings that are forgotten\n"
    "  --end-after-start\n"
    "              comes up and ends in order: tells whether the program can run here\n"
    "  --help      shows this text\n"
    "  --version   shows the version\n";

/// What the command line asks for.
struct Options {
  DesktopProgram::World world = DesktopProgram::World::kOwn;
  bool end_after_start = false;
};

int RunProgram(const Options& options, int argument_count, char* arguments[]) {
  QApplication application(argument_count, arguments);
  QApplication::setApplicationName(QStringLiteral("kestro-cti"));
  QApplication::setApplicationDisplayName(QString());  // captions stand alone
  const std::string icon = kestro::adapters::ExecutableFolder() + "/Icons/app.ico";
  QApplication::setWindowIcon(QIcon(QString::fromStdString(icon)));
  try {
    DesktopProgram program(options.world);
    return program.Run(options.end_after_start);
  } catch (const kestro::base::RuntimeError& error) {
    std::cerr << "kestro-cti: " << error.description() << "\n";
    return kFailed;
  } catch (const std::exception& error) {
    std::cerr << "kestro-cti: " << error.what() << "\n";
    return kFailed;
  }
}

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
    } else if (option == "-session") {
      ++i;  // the session manager's own: an identifier follows
    } else {
      std::cerr << "kestro-cti: unknown option " << option << "\n" << kUsageText;
      return kUsage;
    }
  }
  return RunProgram(options, argument_count, arguments);
}
