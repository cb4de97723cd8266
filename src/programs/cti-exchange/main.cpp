// Operates the software exchange of the running program from a terminal.

#include <algorithm>
#include <array>
#include <exception>
#include <iostream>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "exchange/request_words.h"
#include "programs/cti-exchange/running_program.h"

namespace {

enum ExitStatus : int { kDone = 0, kRefused = 1, kUsage = 2, kNotRunning = 3 };

constexpr std::array<std::string_view, 5> kCommands = {"ring", "answer", "hang-up", "list", "help"};

constexpr std::string_view kUsageText =
    "Usage: cti-exchange COMMAND\n"
    "  ring NUMBER [--internal] [--name TEXT] [--transferred] [--no-number]\n"
    "                       a call comes in\n"
    "  answer [HANDLE]      the newest call (or the one named) is answered\n"
    "  hang-up [HANDLE]     the newest call (or the one named) ends\n"
    "  list                 the calls\n"
    "  help                 what the running program understands\n";

/// The request line; nothing when the words are no request at all.
std::optional<std::string> RequestLine(std::span<char* const> words) {
  if (words.empty()) return std::nullopt;
  if (std::find(kCommands.begin(), kCommands.end(), std::string_view(words.front())) == kCommands.end()) {
    return std::nullopt;
  }
  std::string line;
  for (const std::string_view word : words) {
    const bool plain = !word.empty() && word.find_first_of(" \"\\") == std::string_view::npos;
    line +=
        (line.empty() ? "" : " ") + (plain ? std::string(word) : kestro::exchange::QuoteRequestWord(word));
  }
  // Refuses what could not travel on one line, a line feed in a name for instance.
  static_cast<void>(kestro::exchange::SplitRequest(line));
  return line;
}

int Run(const std::string& line) {
  const std::optional<std::string> reply = kestro::programs::AskRunningProgram(line);
  if (!reply) {
    std::cerr << "KESTRO CTI is not running on the software exchange\n";
    return kNotRunning;
  }
  const bool done = reply->starts_with("ok\n");
  (done ? std::cout : std::cerr) << *reply << std::flush;
  return done ? kDone : kRefused;
}

}  // namespace

int main(int argc, char* argv[]) {
  try {
    const std::span words(argv, static_cast<std::size_t>(argc));
    const auto line = RequestLine(words.subspan(std::min<std::size_t>(1, words.size())));
    if (line) return Run(*line);
    std::cerr << kUsageText;
    return kUsage;
  } catch (const kestro::exchange::RequestError& error) {
    std::cerr << "cti-exchange: " << error.what() << "\n";
    return kUsage;
  } catch (const std::exception& error) {
    std::cerr << "cti-exchange: " << error.what() << "\n";
    return kRefused;
  }
}
