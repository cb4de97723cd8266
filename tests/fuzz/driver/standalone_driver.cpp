// A fuzz engine for compilers that bring none: runs LLVMFuzzerTestOneInput on the corpus and then on
// seeded mutations of it. Equal seeds give equal inputs.
//
//   fuzz_x [-runs=N] [-seed=S] [-timeout=SECONDS] [FILE|FOLDER ...]
//
// N counts all inputs, those of the corpus included. The options are those of the compilers' own engines.
//
// Each input is written to running-SEED in the current folder before it is run: there it stays when it kills
// the process (a sanitizer report, a crash, a run that exceeds the time-out). One that ends with an exception
// is left in crash-SEED-RUN. Passing that file as the corpus repeats it. Exit status: 0 no failure, 1 a
// failure, 2 wrong arguments or an unreadable corpus; or what the process was killed by.

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
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

// NOLINTBEGIN(bugprone-reserved-identifier): the sanitizer owns this name, reserved as it is
extern "C" const char* __ubsan_default_options();
extern "C" const char* __ubsan_default_options() { return "print_stacktrace=1"; }
// NOLINTEND(bugprone-reserved-identifier)

namespace {

using Input = std::string;  // of bytes

constexpr unsigned kMaxReportedFailures = 10;
constexpr std::size_t kMaxLength = 4096;  // bytes of a mutation; a longer corpus file is used in full

struct Options {
  std::uint64_t runs = 10'000;
  std::uint64_t seed = 1;
  std::uint64_t timeout_seconds = 20;  // for one input
  std::vector<std::filesystem::path> corpus;
};

void WriteInput(const std::filesystem::path& path, const Input& input) {
  std::ofstream file(path, std::ios::binary);
  file.write(input.data(), static_cast<std::streamsize>(input.size()));
  if (!file.flush()) throw std::runtime_error(path.string() + " cannot be written");
}

// Runs one input; a report line when it ended with an exception.
std::optional<std::string> RunOne(const Input& input, const Options& options) {
  // A heap block of exactly this size, so that a read one byte behind the end is seen.
  const std::vector<std::uint8_t> exact(input.begin(), input.end());
  std::optional<std::string> failure;
  ::alarm(static_cast<unsigned>(options.timeout_seconds));
  try {
    if (LLVMFuzzerTestOneInput(exact.data(), exact.size()) != 0) failure = "a result other than 0";
  } catch (const std::exception& error) {
    failure = std::string("an exception left the target: ") + error.what();
  } catch (...) {
    failure = "an exception of an unknown type left the target";
  }
  ::alarm(0);
  return failure;
}

// Small random changes of one input, several in a row.
class Mutator {
 public:
  explicit Mutator(std::uint64_t seed) : random_(seed) {}

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
    char& byte = input[Below(input.size())];
    const std::size_t kind = Below(3);
    if (kind == 0) byte = static_cast<char>(byte ^ (1 << Below(8)));
    if (kind == 1) byte = kBytes[Below(kBytes.size())];
    if (kind == 2) byte = static_cast<char>(Below(256));
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
    if (input.size() >= kMaxLength) return;
    const std::size_t room = kMaxLength - input.size();
    const std::size_t count = 1 + Below(Below(8) == 0 ? room : std::min<std::size_t>(room, 16));
    const std::size_t kinds = Below(2) == 0 ? 1 : 256;  // all the same, or any
    const std::size_t first = Below(256);
    for (std::size_t i = 0; i < count; ++i) input.push_back(static_cast<char>(first + Below(kinds)));
  }

  void RemoveOrRepeatPart(Input& input) {
    if (input.empty()) return;
    const std::size_t at = Below(input.size());
    const std::size_t count = 1 + Below(std::min<std::size_t>(input.size() - at, 64));
    if (Below(2) == 0) {
      input.erase(at, count);
      return;
    }
    const Input part = input.substr(at, count);
    input.insert(Below(input.size() + 1), part);
    input.resize(std::min(input.size(), std::max(kMaxLength, input.size() - count)));
  }

  // The head of one input and the tail of another.
  void Splice(Input& input, const Input& other) {
    input.resize(Below(input.size() + 1));
    input += other.substr(Below(other.size() + 1));
    input.resize(std::min(input.size(), kMaxLength));
  }

  std::mt19937_64 random_;
};

// Ends with an exception when a file or a folder cannot be read.
std::vector<Input> ReadCorpus(const std::vector<std::filesystem::path>& paths) {
  std::vector<std::filesystem::path> files;
  for (const std::filesystem::path& path : paths) {
    const bool is_folder = std::filesystem::is_directory(path);
    if (is_folder) std::copy(std::filesystem::directory_iterator(path), {}, std::back_inserter(files));
    if (!is_folder) files.push_back(path);
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
  const std::pair<std::string_view, std::uint64_t&> numbers[] = {
      {"-runs=", options.runs}, {"-seed=", options.seed}, {"-timeout=", options.timeout_seconds}};
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

// The number of failures, each of which is reported.
unsigned RunAll(const Options& options, const std::vector<Input>& corpus) {
  const std::string seed = std::to_string(options.seed);
  const std::filesystem::path running = "running-" + seed;
  Mutator mutator(options.seed);
  unsigned failures = 0;
  std::uint64_t run = 0;
  for (; run < options.runs && failures < kMaxReportedFailures; ++run) {
    const Input input = run < corpus.size() ? corpus[static_cast<std::size_t>(run)]
                                            : mutator.Mutate(corpus[mutator.Below(corpus.size())], corpus);
    WriteInput(running, input);
    const std::optional<std::string> failure = RunOne(input, options);
    if (!failure) continue;
    ++failures;
    const std::string left = "crash-" + seed + "-" + std::to_string(run);
    std::filesystem::rename(running, left);
    std::fprintf(stderr, "%s (%zu bytes): %s\n", left.c_str(), input.size(), failure->c_str());
  }
  std::filesystem::remove(running);
  std::printf("%llu runs, %u failures\n", static_cast<unsigned long long>(run), failures);
  return failures;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const Options options = ParseArguments(argc, argv);
    return RunAll(options, ReadCorpus(options.corpus)) == 0 ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
}
