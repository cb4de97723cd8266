#pragma once

// Benchmarks that print ratios at their end: what they share.

#include <algorithm>
#include <functional>
#include <iostream>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "base/text.h"

namespace kestro::bench {

/// Prints as usual and keeps each benchmark's best processor time: the machine may be busy with other things.
class BestTimes : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const auto& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      const auto [entry, first] =
          seconds_.try_emplace(run.run_name.function_name, std::numeric_limits<double>::max());
      const double seconds = run.cpu_accumulated_time / static_cast<double>(run.iterations);
      entry->second = std::min(entry->second, seconds);
    }
    ConsoleReporter::ReportRuns(runs);
  }

  /// Without a goal the ratio is only shown.
  void PrintRatio(const std::string& of, const std::string& to, std::optional<double> goal = {}) const {
    const auto one = seconds_.find(of);
    const auto other = seconds_.find(to);
    if (one == seconds_.end() || other == seconds_.end()) return;  // filtered out
    std::cout << "ratio " << of << " / " << to << " = " << one->second / other->second;
    if (goal) std::cout << " (goal <= " << *goal << ")";
    std::cout << "\n";
  }

 private:
  std::map<std::string, double> seconds_;
};

/// The arguments behind this program's own settings, which they may overrule: runs that are compared take
/// turns, so that a busy machine slows both down.
inline std::vector<char*> WithDefaults(std::vector<std::string>& arguments) {
  arguments.insert(arguments.begin() + 1, {"--benchmark_repetitions=9", "--benchmark_min_time=0.1",
                                           "--benchmark_enable_random_interleaving=true",
                                           "--benchmark_report_aggregates_only=false"});
  std::vector<char*> pointers;
  pointers.reserve(arguments.size());
  for (auto& argument : arguments) pointers.push_back(argument.data());
  return pointers;
}

/// Takes the option out of the arguments.
inline int TakeContactCount(std::vector<std::string>& arguments) {
  constexpr std::string_view kOption = "--contacts=";
  const auto found =
      std::ranges::find_if(arguments, [&](const auto& text) { return text.starts_with(kOption); });
  if (found == arguments.end()) return 100'000;
  const int count = base::ToInt32(found->substr(kOption.size()));
  arguments.erase(found);
  return std::max(1, count);
}

/// The whole of main(): takes `--contacts=N` out of the arguments, lets `prepare` register the benchmarks
/// for that many contacts, runs them and lets `report` print the ratios.
inline int RunBenchmarks(int argument_count, char** argument_values,
                         const std::function<void(int contacts)>& prepare,
                         const std::function<void(const BestTimes&)>& report) {
  std::vector<std::string> arguments(argument_values, argument_values + argument_count);
  const int contacts = TakeContactCount(arguments);
  auto pointers = WithDefaults(arguments);
  argument_count = static_cast<int>(pointers.size());
  benchmark::Initialize(&argument_count, pointers.data());
  if (benchmark::ReportUnrecognizedArguments(argument_count, pointers.data())) return 2;
  prepare(contacts);
  BestTimes times;
  benchmark::RunSpecifiedBenchmarks(&times);
  std::cout << contacts << " contacts\n";
  report(times);
  return 0;
}

}  // namespace kestro::bench
