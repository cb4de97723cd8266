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
    "Usage: kestro-cti [--demo | --help | --version]\n"
    "Watches the line of the built-in software exchange; cti-exchange, in another\n"
    "terminal, makes it ring.\n"
    "  --demo      with a sample address book and settings that are forgotten\n"
    "  --help      shows this text\n"
    "  --version   shows the version\n";

int RunProgram(DesktopProgram::World world, int argument_count, char* arguments[]) {
  QApplication application(argument_count, arguments);
  QApplication::setApplicationName(QStringLiteral("kestro-cti"));
  QApplication::setApplicationDisplayName(QString());  // captions stand alone
  const std::string icon = kestro::adapters::ExecutableFolder() + "/Icons/app.ico";
  QApplication::setWindowIcon(QIcon(QString::fromStdString(icon)));
  try {
    DesktopProgram program(world);
    return program.Run();
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
  const std::string_view option = argument_count > 1 ? arguments[1] : "";
  if (option == "--help") {
    std::cout << kUsageText;
    return kEnded;
  }
  if (option == "--version") {
    std::cout << kestro::kProductName << " " << kestro::kVersion << "\n";
    return kEnded;
  }
  if (option == "--demo") return RunProgram(DesktopProgram::World::kDemo, argument_count, arguments);
  // Other options than the toolkit's own have no meaning; the session manager passes some.
  if (option.empty() || option == "-session") {
    return RunProgram(DesktopProgram::World::kOwn, argument_count, arguments);
  }
  std::cerr << "kestro-cti: unknown option " << option << "\n" << kUsageText;
  return kUsage;
}
