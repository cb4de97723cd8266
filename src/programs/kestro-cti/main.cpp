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

enum ExitStatus : int { kEnded = 0, kFailed = 1, kUsage = 2, kRunningAlready = 3 };

constexpr std::string_view kUsageText =
    "Usage: kestro-cti --demo | --help | --version\n"
    "  --demo      runs on the built-in software exchange with a sample address book;\n"
    "              cti-exchange, in another terminal, makes it ring\n"
    "  --help      shows this text\n"
    "  --version   shows the version\n";

int RunProgram(int argument_count, char* arguments[]) {
  QApplication application(argument_count, arguments);
  QApplication::setApplicationName(QStringLiteral("kestro-cti"));
  QApplication::setApplicationDisplayName(QString());  // captions stand alone
  const std::string icon = kestro::adapters::ExecutableFolder() + "/Icons/app.ico";
  QApplication::setWindowIcon(QIcon(QString::fromStdString(icon)));
  try {
    DesktopProgram program;
    return program.Run();
  } catch (const kestro::base::RuntimeError& error) {
    const bool running = error.number() == kestro::base::kFileAlreadyExists;
    std::cerr << "kestro-cti: " << (running ? "the program is running already" : error.description()) << "\n";
    return running ? kRunningAlready : kFailed;
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
  if (option == "--demo") return RunProgram(argument_count, arguments);
  if (!option.empty()) std::cerr << "kestro-cti: unknown option " << option << "\n";
  std::cerr << kUsageText;
  return kUsage;
}
