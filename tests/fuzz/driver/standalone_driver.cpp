// A fuzz engine for compilers that bring none: runs LLVMFuzzerTestOneInput on the corpus and then on
// seeded mutations of it. Equal seeds give equal inputs.
//
//   fuzz_x [-runs=N] [-seed=S] [-max_len=BYTES] [-timeout=SECONDS] [FILE|FOLDER ...]
//
// N counts all inputs, those of the corpus included. The options are those of the compilers' own engines.
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
#include <stdexcept>
#include <string>
#include <string_view>
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

constexpr unsigned kMaxReportedFailures = 10;

struct Options {
  std::uint64_t runs = 10'000;
  std::uint64_t seed = 1;
  std::uint64_t max_length = 4096;     // bytes; a longer corpus file is used in full
  std::uint64_t timeout_seconds = 20;  // for one input
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
    switch (Below(7)) {
      case 0:
      case 1:
        return ChangeByte(input);
      case 2:
        return ChangeWord(input);
      case 3:
        return input.resize(Below(input.size() + 1));
      case 4:
        return Extend(input);
      case 5:
        return RemoveOrRepeatPart(input);
      default:
        return Splice(input, corpus[Below(corpus.size())]);
    }
  }

  // A bit of it, an interesting value, or any.
  void ChangeByte(Input& input) {
    static constexpr std::string_view kBytes{"\0\x01\x7F\x80\xFF\r\n\t \";,\\'%0-+9A=<>/\xC3\xE2", 26};
    if (input.empty()) return;
    std::uint8_t& byte = input[Below(input.size())];
    const std::size_t kind = Below(3);
    if (kind == 0) byte = static_cast<std::uint8_t>(byte ^ (1U << Below(8)));
    if (kind == 1) byte = static_cast<std::uint8_t>(kBytes[Below(kBytes.size())]);
    if (kind == 2) byte = static_cast<std::uint8_t>(Below(256));
  }

  // Sizes and offsets in binary records are little-endian 32-bit words: an interesting one, the word that is
  // there moved a little, or something near the input's own length.
  void ChangeWord(Input& input) {
    static constexpr std::array<std::uint32_t, 18> kWords{
        0,     1,      2,      4,       8,          16,         100,        0x7F,       0xFF,
        0x100, 0x7FFF, 0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFF0, 0xFFFFFFFE, 0xFFFFFFFF};
    if (input.size() < 4) return;
    const std::size_t at = Below(input.size() - 3);
    auto value = static_cast<std::uint32_t>(input.size());
    const std::size_t kind = Below(4);
    if (kind == 0) std::memcpy(&value, &input[at], 4);
    value += static_cast<std::uint32_t>(Below(17)) - 8U;
    if (kind > 1) value = kWords[Below(kWords.size())];
    std::memcpy(&input[at], &value, 4);
  }

  void Extend(Input& input) {
    if (input.size() >= max_length_) return;
    const std::size_t room = max_length_ - input.size();
    const std::size_t count = 1 + Below(std::min<std::size_t>(room, Below(8) == 0 ? room : 16));
    const std::size_t kinds = Below(2) == 0 ? 1 : 256;  // all the same, or any
    const std::size_t first = Below(256);
    for (std::size_t i = 0; i < count; ++i) input.push_back(static_cast<std::uint8_t>(first + Below(kinds)));
  }

  void RemoveOrRepeatPart(Input& input) {
    if (input.empty()) return;
    const std::size_t at = Below(input.size());
    const auto first = input.begin() + static_cast<std::ptrdiff_t>(at);
    const auto last =
        first + static_cast<std::ptrdiff_t>(1 + Below(std::min<std::size_t>(input.size() - at, 64)));
    if (Below(2) == 0) {
      input.erase(first, last);
      return;
    }
    const Input part(first, last);
    input.insert(input.begin() + static_cast<std::ptrdiff_t>(Below(input.size() + 1)), part.begin(),
                 part.end());
    input.resize(std::min(input.size(), std::max(max_length_, input.size() - part.size())));
  }

  // The head of one input and the tail of another.
  void Splice(Input& input, const Input& other) {
    input.resize(Below(input.size() + 1));
    input.insert(input.end(), other.begin() + static_cast<std::ptrdiff_t>(Below(other.size() + 1)),
                 other.end());
    input.resize(std::min(input.size(), max_length_));
  }

  std::mt19937_64 random_;
  std::size_t max_length_;
};

// Ends with an exception when a file or a folder cannot be read.
std::vector<Input> ReadCorpus(const std::vector<std::filesystem::path>& paths) {
  std::vector<std::filesystem::path> files;
  for (const std::filesystem::path& path : paths) {
    if (!std::filesystem::is_directory(path)) {
      files.push_back(path);
      continue;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
      if (entry.is_regular_file()) files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());  // a folder lists its files in any order; runs are to be repeatable
  std::vector<Input> corpus;
  for (const std::filesystem::path& path : files) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error(path.string() + " cannot be read");
    corpus.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  if (corpus.empty()) corpus.emplace_back();
  return corpus;
}

Options ParseArguments(int argc, char** argv) {
  Options options;
  const std::pair<std::string_view, std::uint64_t&> numbers[] = {{"-runs=", options.runs},
                                                                 {"-seed=", options.seed},
                                                                 {"-max_len=", options.max_length},
                                                                 {"-timeout=", options.timeout_seconds}};
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (!argument.starts_with('-')) {
      options.corpus.emplace_back(argument);
      continue;
    }
    const auto known = std::find_if(std::begin(numbers), std::end(numbers),
                                    [&](const auto& entry) { return argument.starts_with(entry.first); });
    const char* const last = argument.data() + argument.size();
    if (known == std::end(numbers) ||
        std::from_chars(argument.data() + known->first.size(), last, known->second).ptr != last) {
      throw std::invalid_argument(std::string(argument) + ": not an option with a number");
    }
  }
  return options;
}

void CatchDeath() {
  if (__sanitizer_set_death_callback != nullptr) {
    __sanitizer_set_death_callback(SaveCurrentInput);
  } else {
    for (const int signal_number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) std::signal(signal_number, OnSignal);
  }
  std::signal(SIGABRT, OnSignal);
  std::signal(SIGALRM, OnSignal);
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  std::vector<Input> corpus;
  try {
    options = ParseArguments(argc, argv);
    corpus = ReadCorpus(options.corpus);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
  CatchDeath();

  Mutator mutator(options.seed, options.max_length);
  unsigned long long failures = 0;
  unsigned long long run = 0;
  for (; run < options.runs && failures < kMaxReportedFailures; ++run) {
    const Input input = run < corpus.size() ? corpus[static_cast<std::size_t>(run)]
                                            : mutator.Mutate(corpus[mutator.Below(corpus.size())], corpus);
    if (const std::optional<std::string> failure = RunOne(input, options, run)) {
      ++failures;
      std::fprintf(stderr, "run %llu (seed %llu, %zu bytes): %s\n", run,
                   static_cast<unsigned long long>(options.seed), input.size(), failure->c_str());
    }
  }
  std::printf("%llu runs, %llu failures\n", run, failures);
  return failures == 0 ? 0 : 1;
}
