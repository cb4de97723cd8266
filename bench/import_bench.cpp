// What the import of contacts costs, with the ratios printed at the end:
//   bench_import_bench [--contacts=N] [Google Benchmark options]
//
// Splitting lines stands beside looking for ";" in the same bytes, and beside the regular expressions of the
// standard library. The import of a file of N contacts, from the choice of the file to the closing message,
// stands beside the engine's own shell, which imports the same file in one transaction into a table with
// indexes over the same columns (its letters in simple order: it does not know ours). Those two are measured
// by the wall clock, taking turns, each by its best time.

#include "support/import_bench.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <regex>
#include <string>
#include <vector>

#include "adapters/posix/posix_file_system.h"
#include "core/system_clock.h"
#include "import/cvs_parser.h"
#include "support/address_book.h"
#include "support/ratios.h"

namespace {

using namespace kestro;
using namespace kestro::bench;

constexpr int kParsedLines = 2000;
constexpr int kRounds = 7;

std::string LineOf(int number) {
  const Contact contact = MakeContact(number);
  std::string line = contact.Name + ";\"" + contact.Company + "\";" + contact.Position;
  for (const auto& phone : contact.Phone) line += ";" + phone;
  line += ";Work;Mobile;Fax;Home;" + contact.Street + ";" + contact.City + ";" + contact.ZIPCode + ";" +
          contact.Country + ";" + contact.Email + ";;\"" + contact.Note + "\"";
  for (const auto& field : contact.UserField) line += ";" + field;
  return line;
}

std::int64_t BytesOf(const std::vector<std::string>& lines) {
  std::int64_t bytes = 0;
  for (const auto& line : lines) bytes += static_cast<std::int64_t>(line.size());
  return bytes;
}

/// Runs `split` on every line.
template <class Split>
void RegisterSplitting(const char* name, const std::vector<std::string>& lines, Split split) {
  benchmark::RegisterBenchmark(name, [&lines, split](benchmark::State& state) {
    for (auto step : state) {
      for (const auto& line : lines) split(line);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * BytesOf(lines));
  });
}

void RegisterParsers(const std::vector<std::string>& lines, const import::CVSParser& parser) {
  RegisterSplitting("ParseLine", lines, [&parser](const std::string& line) {
    static std::vector<std::string_view> fields;
    benchmark::DoNotOptimize(parser.ParseLine(line, fields));
  });
  RegisterSplitting("memchr", lines, [](const std::string& line) {
    const char* position = line.data();
    const char* const end = position + line.size();
    while (const void* found = std::memchr(position, ';', static_cast<std::size_t>(end - position))) {
      benchmark::DoNotOptimize(found);
      position = static_cast<const char*>(found) + 1;
    }
  });
  RegisterSplitting("std::regex", lines, [](const std::string& line) {
    static const std::regex kPattern(R"((\s*"[^"]*"\s*;)|(\s*[^;]*\s*;))", std::regex::optimize);
    const std::string extended = line + ";";
    for (std::sregex_iterator match(extended.begin(), extended.end(), kPattern), end; match != end; ++match) {
      benchmark::DoNotOptimize(*match);
    }
  });
}

/// Fewest seconds that some work took.
class Best {
 public:
  template <class Work>
  void Time(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    seconds_ =
        std::min(seconds_, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  [[nodiscard]] double seconds() const { return seconds_; }

 private:
  double seconds_ = std::numeric_limits<double>::max();
};

/// Longest time between two pauses for window events, in seconds.
class LongestStretch {
 public:
  void Pause() {
    const auto now = std::chrono::steady_clock::now();
    longest_ = std::max(longest_, std::chrono::duration<double>(now - last_).count());
    last_ = now;
  }
  [[nodiscard]] double seconds() const { return longest_; }

 private:
  std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
  double longest_ = 0;
};

/// Returns how long the window was left alone.
double ImportOurs(test_support::ContactsDatabase& book, const std::string& file, int count) {
  adapters::PosixFileSystem files(adapters::PathMap(), ".", ".");
  const core::SystemClock clock;
  test::ImportBench bench(book.database(), book.path().string(), files, clock);
  LongestStretch stretch;
  bench.host().on_pause = [&] { stretch.Pause(); };
  bench.Import(file);
  if (bench.Count() != count) throw std::runtime_error(bench.boxes.back());
  return stretch.seconds();
}

/// Makes the shell's table and script; imports with it.
class Shell {
 public:
  Shell(const test_support::TemporaryFolder& folder, const std::string& file)
      : database_(folder.File("shell.db")) {
    std::string columns;
    for (int i = 1; i <= 22; ++i) columns += (i == 1 ? "c" : ", c") + std::to_string(i) + " TEXT";
    std::ofstream(schema_ = folder.File("schema.sql"))
        << "PRAGMA journal_mode = DELETE; PRAGMA synchronous = FULL;\nCREATE TABLE Contact (" << columns
        << ");\nCREATE INDEX i4 ON Contact (c4); CREATE INDEX i5 ON Contact (c5);\n"
        << "CREATE INDEX i6 ON Contact (c6); CREATE INDEX i7 ON Contact (c7);\n"
        << "CREATE INDEX i1 ON Contact (c1 COLLATE NOCASE);\n";
    std::ofstream(script_ = folder.File("import.sql"))
        << "PRAGMA synchronous = FULL;\n.mode csv\n.separator ;\n.import " << file << " Contact\n";
  }
  void MakeDatabase() {
    std::filesystem::remove(database_);
    Run(schema_);
  }
  void Import() { Run(script_); }

 private:
  void Run(const std::filesystem::path& script) const {
    const std::string command =
        "sqlite3 '" + database_.string() + "' < '" + script.string() + "' > /dev/null";
    if (std::system(command.c_str()) != 0) throw std::runtime_error("The engine's shell failed");
  }

  std::filesystem::path database_;
  std::filesystem::path schema_;
  std::filesystem::path script_;
};

void CompareImports(int count) {
  const test_support::TemporaryFolder folder;
  const std::string file = folder.File("contacts.csv").string();
  {
    std::ofstream out(file);
    for (int i = 0; i < count; ++i) out << LineOf(i) << "\n";
  }
  Shell shell(folder, file);
  Best ours;
  Best theirs;
  double stretch = std::numeric_limits<double>::max();
  for (int round = 0; round < kRounds; ++round) {
    test_support::ContactsDatabase book;
    ours.Time([&] { stretch = std::min(stretch, ImportOurs(book, file, count)); });
    shell.MakeDatabase();
    theirs.Time([&] { shell.Import(); });
  }
  std::cout << "import: " << ours.seconds() << " s, the engine's shell: " << theirs.seconds() << " s\n"
            << "ratio import / engine's shell = " << ours.seconds() / theirs.seconds() << " (goal <= 2)\n"
            << "longest time without window events, in the quietest round: " << stretch
            << " s (goal <= 0.1)\n";
}

}  // namespace

int main(int argument_count, char** argument_values) {
  std::vector<std::string> lines;
  lines.reserve(kParsedLines);
  for (int i = 0; i < kParsedLines; ++i) lines.push_back(LineOf(i));
  test::NoLog no_log;
  core::LogModule log(no_log);
  const import::CVSParser parser(log);
  int contacts = 0;
  return RunBenchmarks(
      argument_count, argument_values,
      [&](int count) {
        contacts = count;
        RegisterParsers(lines, parser);
      },
      [&](const BestTimes& times) {
        times.PrintRatio("ParseLine", "memchr", 3);
        times.PrintRatio("ParseLine", "std::regex");
        CompareImports(contacts);
      });
}
