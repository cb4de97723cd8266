// The program on Windows.

#include <windows.h>

#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <shellapi.h>
#include <string>
#include <vector>

#include "adapters/win32/instance_mutex.h"
#include "adapters/win32/wide_text.h"
#include "base/runtime_error.h"
#include "core/dial_link.h"
#include "generated/version.h"
#include "programs/cti-windows/scenario_mode.h"
#include "programs/cti-windows/standard_streams.h"
#include "programs/cti-windows/windows_program.h"

namespace kestro::programs {
namespace {

enum ExitStatus : int { kEnded = 0, kFailed = 1, kUsage = 2 };

constexpr std::string_view kUsageText =
    "Usage: CTI [/end-after-start] | /dial ADDRESS | /scenario FILE... | /help | /version\n"
    "  /end-after-start  comes up and ends in order: tells whether the program can run here\n"
    "  /dial ADDRESS     asks the running program, or this one once it is up, whether to dial the number of\n"
    "                    a tel: or callto: address\n"
    "  /scenario         plays scenarios; see /scenario --help\n"
    "  /help             shows this text\n"
    "  /version          shows the version\n";

/// The words of the command line (UTF-8) behind the program's name.
std::vector<std::string> Arguments() {
  struct Freer {
    void operator()(LPWSTR* memory) const { ::LocalFree(memory); }
  };
  int count = 0;
  const std::unique_ptr<LPWSTR, Freer> words(::CommandLineToArgvW(::GetCommandLineW(), &count));
  std::vector<std::string> arguments;
  for (int i = 1; words && i < count; ++i) arguments.push_back(adapters::ToUtf8(words.get()[i]));
  return arguments;
}

void Complain(const std::string& text) {
  std::cerr << "CTI: " << text << std::endl;
  ::MessageBoxW(nullptr, adapters::ToWide(text).c_str(), adapters::ToWide(kProductName).c_str(),
                MB_ICONERROR);
}

int RunProgram(bool end_after_start, const std::optional<std::string>& link_number = {}) {
  try {
    WindowsProgram program;
    return program.Run(end_after_start, link_number);
  } catch (const base::RuntimeError& error) {
    Complain(error.description());
  } catch (const std::exception& error) {
    Complain(error.what());
  }
  return kFailed;
}

int Dial(const std::string& address) {
  const std::string number = core::NumberOfLink(address);
  return adapters::AskRunningProgramToDial(number) ? int{kEnded} : RunProgram(false, number);
}

int Main(const std::vector<std::string>& arguments) {
  if (arguments.empty()) return RunProgram(false);
  const std::string& option = arguments.front();
  if (option == "/scenario") return PlayScenarios({arguments.begin() + 1, arguments.end()});
  if (option == "/end-after-start" && arguments.size() == 1) return RunProgram(true);
  if (option == "/dial" && arguments.size() == 2) return Dial(arguments[1]);
  if (option == "/help" || option == "/?") {
    std::cout << kUsageText << std::flush;
    return kEnded;
  }
  if (option == "/version") {
    std::cout << kProductName << " " << kVersion << std::endl;
    return kEnded;
  }
  std::cerr << "CTI: unknown option " << option << "\n" << kUsageText << std::flush;
  return kUsage;
}

}  // namespace
}  // namespace kestro::programs

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*command_line*/, int /*show*/) {
  kestro::programs::OpenStandardStreams();
  try {
    return kestro::programs::Main(kestro::programs::Arguments());
  } catch (const std::exception& error) {
    std::cerr << "CTI: " << error.what() << std::endl;
    return kestro::programs::kUsage;
  }
}
