// A fuzz engine for compilers that bring none: runs LLVMFuzzerTestOneInput on the corpus and then on
// seeded mutations of it. Equal seeds give equal inputs on every machine.
//
//   fuzz_x [--runs N] [--seed S] [--max-length BYTES] [--timeout SECONDS] [FILE|FOLDER ...]
//
// N counts all inputs, those of the corpus included. "-runs=N" and the other options in that spelling are
// understood too, so that the same call works for a program linked with the compiler's own engine.
//
// An input that fails (an exception, a sanitizer report, a crash, a run that exceeds the time-out) is
// written to crash-SEED-RUN in the current folder; passing that file as the corpus repeats it. Exit status:
// 0 no failure, 1 a failure, 2 wrong arguments or an unreadable corpus.

#include <algorithm>
#include <array>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// The sanitizers own these names, reserved as they are.
// NOLINTBEGIN(bugprone-reserved-identifier)

// Their run time defines it; in a build without them it is null.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

// GCC's undefined-behaviour run time does not call the callback above; an abort it does announce.
extern "C" const char* __ubsan_default_options();
extern "C" const char* __ubsan_default_options() { return "abort_on_error=1:print_stacktrace=1"; }

// NOLINTEND(bugprone-reserved-identifier)

namespace {

using Input = std::vector<std::uint8_t>;

constexpr std::uint64_t kDefaultRuns = 10'000;
constexpr std::size_t kDefaultMaxLength = 4096;  // bytes; a longer corpus file is used in full
constexpr unsigned kDefaultTimeoutSeconds = 20;  // for one input
constexpr std::uint64_t kMaxReportedFailures = 10;

struct Options {
  std::uint64_t runs = kDefaultRuns;
  std::uint64_t seed = 1;
  std::uint64_t max_length = kDefaultMaxLength;
  std::uint64_t timeout_seconds = kDefaultTimeoutSeconds;
  std::vector<std::filesystem::path> corpus;
};

// What a dying process must still be able to write down, hence not local to main and not a class:
// signal handlers read it. `g_input` does not own.
const std::uint8_t* g_input = nullptr;
std::size_t g_input_size = 0;
std::array<char, 64> g_crash_file{};

// Only calls that are allowed in a signal handler.
void WriteText(const char* text) {
  const ssize_t written = ::write(STDERR_FILENO, text, std::strlen(text));
  static_cast<void>(written);  // there is nobody left to tell
}

void SaveCurrentInput() {
  if (g_input == nullptr) return;
  const int file = ::open(g_crash_file.data(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  std::size_t done = 0;
  while (file >= 0 && done < g_input_size) {
    const ssize_t written = ::write(file, g_input + done, g_input_size - done);
    if (written <= 0) break;
    done += static_cast<std::size_t>(written);
  }
  if (file >= 0) ::close(file);
  WriteText(file >= 0 && done == g_input_size ? "input written to " : "INPUT COULD NOT BE WRITTEN to ");
  WriteText(g_crash_file.data());
  WriteText("\n");
}

void OnDeath() { SaveCurrentInput(); }

void OnSignal(int signal_number) {
  WriteText(signal_number == SIGALRM ? "the time-out of one input passed\n"
                                     : "the process is killed by a signal\n");
  SaveCurrentInput();
  std::signal(signal_number, SIG_DFL);
  if (signal_number == SIGALRM) ::_exit(1);
  std::raise(signal_number);
}

// Runs one input; a report line when it ended with an exception.
std::optional<std::string> RunOne(const Input& input, const Options& options, std::uint64_t run) {
  // A heap block of exactly this size, so that a read one byte behind the end is seen.
  const std::vector<std::uint8_t> exact(input.begin(), input.end());
  g_input = exact.data();
  g_input_size = exact.size();
  std::snprintf(g_crash_file.data(), g_crash_file.size(), "crash-%llu-%llu",
                static_cast<unsigned long long>(options.seed), static_cast<unsigned long long>(run));
  ::alarm(static_cast<unsigned>(options.timeout_seconds));
  std::optional<std::string> failure;
  try {
    if (LLVMFuzzerTestOneInput(exact.data(), exact.size()) != 0) failure = "a result other than 0";
  } catch (const std::exception& error) {
    failure = std::string("an exception left the target: ") + error.what();
  } catch (...) {
    failure = "an exception of an unknown type left the target";
  }
  ::alarm(0);
  if (failure) SaveCurrentInput();
  g_input = nullptr;
  return failure;
}

// Small random changes of one input, several in a row.
class Mutator {
 public:
  Mutator(std::uint64_t seed, std::size_t max_length) : random_(seed), max_length_(max_length) {}

  std::size_t Below(std::size_t bound) {
    // Not std::uniform_int_distribution: its results differ between libraries.
    return bound == 0 ? 0 : static_cast<std::size_t>(random_() % bound);
  }

  Input Mutate(Input input, const std::vector<Input>& corpus) {
    const std::size_t changes = 1 + Below(6);
    for (std::size_t i = 0; i < changes; ++i) Change(input, corpus);
    return input;
  }

 private:
  void Change(Input& input, const std::vector<Input>& corpus) {
    switch (Below(10)) {
      case 0:
        return FlipBit(input);
      case 1:
        return SetByte(input);
      case 2:
        return SetInterestingByte(input);
      case 3:
        return SetInterestingWord(input);
      case 4:
        return NudgeWord(input);
      case 5:
        return input.resize(Below(input.size() + 1));
      case 6:
        return Extend(input);
      case 7:
        return RemovePart(input);
      case 8:
        return RepeatPart(input);
      default:
        return Splice(input, corpus[Below(corpus.size())]);
    }
  }

  void FlipBit(Input& input) {
    if (input.empty()) return;
    std::uint8_t& byte = input[Below(input.size())];
    byte = static_cast<std::uint8_t>(byte ^ (1U << Below(8)));
  }

  void SetByte(Input& input) {
    if (!input.empty()) input[Below(input.size())] = static_cast<std::uint8_t>(Below(256));
  }

  void SetInterestingByte(Input& input) {
    static constexpr std::string_view kBytes{"\0\x01\x7F\x80\xFF\r\n\t \";,\\'%0-+9A=<>/\xC3\xE2", 26};
    if (!input.empty()) input[Below(input.size())] = static_cast<std::uint8_t>(kBytes[Below(kBytes.size())]);
  }

  // Sizes and offsets in binary records are little-endian 32-bit words.
  void SetInterestingWord(Input& input) {
    static constexpr std::array<std::uint32_t, 18> kWords{
        0,     1,      2,      4,       8,          16,         100,        0x7F,       0xFF,
        0x100, 0x7FFF, 0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFF0, 0xFFFFFFFE, 0xFFFFFFFF};
    if (input.size() < 4) return;
    StoreWord(input, Below(input.size() - 3), kWords[Below(kWords.size())]);
  }

  // An existing word moves a little, or becomes something near the input's own length.
  void NudgeWord(Input& input) {
    if (input.size() < 4) return;
    const std::size_t at = Below(input.size() - 3);
    auto value = static_cast<std::uint32_t>(input.size());
    if (Below(2) == 0) {
      value = 0;
      for (std::size_t i = 4; i-- > 0;) value = (value << 8U) | input[at + i];
    }
    StoreWord(input, at, value + static_cast<std::uint32_t>(Below(17)) - 8U);
  }

  static void StoreWord(Input& input, std::size_t at, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) input[at + i] = static_cast<std::uint8_t>(value >> (8U * i));
  }

  void Extend(Input& input) {
    if (input.size() >= max_length_) return;
    const std::size_t room = max_length_ - input.size();
    const std::size_t count = 1 + Below(std::min<std::size_t>(room, Below(8) == 0 ? room : 16));
    const bool same = Below(2) == 0;
    auto byte = static_cast<std::uint8_t>(Below(256));
    for (std::size_t i = 0; i < count; ++i) {
      if (!same) byte = static_cast<std::uint8_t>(Below(256));
      input.push_back(byte);
    }
  }

  void RemovePart(Input& input) {
    if (input.empty()) return;
    const std::size_t at = Below(input.size());
    const std::size_t count = 1 + Below(std::min<std::size_t>(input.size() - at, 32));
    const auto first = input.begin() + static_cast<std::ptrdiff_t>(at);
    input.erase(first, first + static_cast<std::ptrdiff_t>(std::min(count, input.size() - at)));
  }

  void RepeatPart(Input& input) {
    if (input.empty() || input.size() >= max_length_) return;
    const std::size_t at = Below(input.size());
    const std::size_t count = std::min({input.size() - at, 1 + Below(64), max_length_ - input.size()});
    const Input part(input.begin() + static_cast<std::ptrdiff_t>(at),
                     input.begin() + static_cast<std::ptrdiff_t>(at + count));
    const std::size_t to = Below(input.size() + 1);
    input.insert(input.begin() + static_cast<std::ptrdiff_t>(to), part.begin(), part.end());
  }

  // The head of one input and the tail of another.
  void Splice(Input& input, const Input& other) {
    input.resize(Below(input.size() + 1));
    const std::size_t from = Below(other.size() + 1);
    input.insert(input.end(), other.begin() + static_cast<std::ptrdiff_t>(from), other.end());
    if (input.size() > max_length_) input.resize(max_length_);
  }

  std::mt19937_64 random_;
  std::size_t max_length_;
};

bool ReadFile(const std::filesystem::path& path, std::vector<Input>& corpus) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    std::fprintf(stderr, "%s cannot be read\n", path.c_str());
    return false;
  }
  corpus.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  return true;
}

bool ReadCorpus(const std::vector<std::filesystem::path>& paths, std::vector<Input>& corpus) {
  for (const std::filesystem::path& path : paths) {
    std::error_code error;
    if (!std::filesystem::is_directory(path, error)) {
      if (!ReadFile(path, corpus)) return false;
      continue;
    }
    std::vector<std::filesystem::path> files;
    for (auto entry = std::filesystem::recursive_directory_iterator(path, error);
         !error && entry != std::filesystem::recursive_directory_iterator(); entry.increment(error)) {
      if (entry->is_regular_file()) files.push_back(entry->path());
    }
    if (error) {
      std::fprintf(stderr, "%s cannot be listed: %s\n", path.c_str(), error.message().c_str());
      return false;
    }
    // A folder lists its files in any order; runs are to be repeatable.
    std::sort(files.begin(), files.end());
    for (const std::filesystem::path& file : files) {
      if (!ReadFile(file, corpus)) return false;
    }
  }
  return true;
}

std::optional<Options> ParseArguments(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument.size() < 2 || argument.front() != '-') {
      options.corpus.emplace_back(argument);
      continue;
    }
    std::string_view name = argument.substr(argument.find_first_not_of('-'));
    std::string_view value;
    if (const std::size_t equals = name.find('='); equals != std::string_view::npos) {
      value = name.substr(equals + 1);
      name = name.substr(0, equals);
    } else if (i + 1 < argc) {
      value = argv[++i];
    }
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    const bool is_number = !value.empty() && error == std::errc() && end == value.data() + value.size();
    if (is_number && name == "runs") {
      options.runs = number;
    } else if (is_number && name == "seed") {
      options.seed = number;
    } else if (is_number && (name == "max-length" || name == "max_len")) {
      options.max_length = number;
    } else if (is_number && name == "timeout") {
      options.timeout_seconds = number;
    } else {
      std::fprintf(stderr, "%s: not an option with a number\n", argv[i]);
      return std::nullopt;
    }
  }
  return options;
}

void CatchDeath() {
  if (__sanitizer_set_death_callback != nullptr) {
    __sanitizer_set_death_callback(OnDeath);
  } else {
    for (const int signal_number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) std::signal(signal_number, OnSignal);
  }
  std::signal(SIGABRT, OnSignal);
  std::signal(SIGALRM, OnSignal);
}

}  // namespace

int main(int argc, char** argv) {
  const std::optional<Options> options = ParseArguments(argc, argv);
  if (!options) return 2;
  std::vector<Input> corpus;
  if (!ReadCorpus(options->corpus, corpus)) return 2;
  if (corpus.empty()) corpus.emplace_back();
  CatchDeath();

  Mutator mutator(options->seed, options->max_length);
  std::uint64_t failures = 0;
  std::uint64_t run = 0;
  for (; run < options->runs && failures < kMaxReportedFailures; ++run) {
    const Input input = run < corpus.size() ? corpus[static_cast<std::size_t>(run)]
                                            : mutator.Mutate(corpus[mutator.Below(corpus.size())], corpus);
    if (const std::optional<std::string> failure = RunOne(input, *options, run)) {
      ++failures;
      std::fprintf(stderr, "run %llu (seed %llu, %zu bytes): %s\n", static_cast<unsigned long long>(run),
                   static_cast<unsigned long long>(options->seed), input.size(), failure->c_str());
    }
  }
  std::printf("%llu runs, %llu failures\n", static_cast<unsigned long long>(run),
              static_cast<unsigned long long>(failures));
  return failures == 0 ? 0 : 1;
}
