// Drives the whole application through very many calls and everything that may
// happen beside them, at random, and checks after each what must always hold.
// Equal seeds repeat equal runs.

#include <algorithm>
#include <charconv>
#include <functional>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

#include "soak/invariants.h"
#include "soak/line_side.h"
#include "soak/memory_watch.h"
#include "soak/user_side.h"

namespace kestro::soak {
namespace {

constexpr std::int64_t kCallsBetweenSamples = 500;
constexpr std::int64_t kCallsBetweenRestores = 10'000;
constexpr int kEndsInARun = 20;

struct Options {
  std::int64_t calls = 20'000;
  std::uint64_t seed = 1;
};

constexpr std::string_view kUsage =
    "usage: cti-soak [--calls N] [--seed S]\n"
    "Exit status: 0 nothing found, 1 something is wrong, 2 wrong arguments.\n";

std::optional<Options> ReadOptions(int count, char* arguments[]) {
  Options options;
  for (int i = 1; i < count; i += 2) {
    const std::string_view name = arguments[i];
    const std::string_view value = i + 1 < count ? arguments[i + 1] : "";
    const auto read = [&](auto& target) {
      const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), target);
      return error == std::errc{} && end == value.data() + value.size() && target > 0;
    };
    if (!(name == "--calls" && read(options.calls)) && !(name == "--seed" && read(options.seed)))
      return std::nullopt;
  }
  return options;
}

class Soak {
 public:
  explicit Soak(const Options& options) : options_(options), world_(options.seed) {
    world_.SetModalUser([this](forms::Form& window) { user_.UseModal(window); });
    world_.SetMeanwhile([this] {
      for (int message = world_.random().Below(4); message >= 0; --message) line_.Message();
      if (world_.random().OneIn(2)) user_.PressTray();
    });
  }

  int Run();

 private:
  void OneCall();
  void Between() {
    for (int action = world_.random().Below(3); action > 0; --action) user_.Act();
  }
  void Guarded(const std::function<void()>& work);
  void Report();

  Options options_;
  SoakWorld world_;
  UserSide user_{world_};
  LineSide line_{world_, [this] { Between(); }};
  MemoryWatch whole_run_{"the whole run"};
  MemoryWatch last_application_{"one application"};  // nothing that ends with it can hide in it
  std::int64_t call_ = 0;
  bool running_ = false;
};

/// The end of the application is expected or a finding.
void Soak::Guarded(const std::function<void()>& work) {
  if (world_.GoesOn("the application", work)) return;
  running_ = false;
  world_.CheckEnd();
}

/// Only the first half has ends: the memory of one application is watched in the second.
void Soak::OneCall() {
  const bool may_end = call_ < options_.calls / 2;
  const int end_in = static_cast<int>(std::max<std::int64_t>(1, options_.calls / 2 / kEndsInARun));
  Guarded([&] {
    line_.Call();
    world_.driver().Settle();
    if (world_.random().OneIn(3)) user_.SwitchOn();
    if (!may_end || !world_.random().OneIn(end_in)) return;
    if (!world_.random().OneIn(5)) return user_.EndApplication();
    world_.ExpectEnd("message 106");
    line_.EndByOverflow();
    world_.ExpectNoEnd();
  });
  if (running_) Invariants(world_).CheckAtRest();
}

int Soak::Run() {
  for (call_ = 1; call_ <= options_.calls && world_.findings().empty(); ++call_) {
    world_.transcript().Begin("call " + std::to_string(call_), false);
    if (!running_) {
      running_ = true;
      Guarded([&] { world_.StartApplication(); });
    }
    if (running_) OneCall();
    if (call_ % kCallsBetweenRestores == 0) world_.Restore();
    if (call_ % kCallsBetweenSamples != 0) continue;
    whole_run_.Sample(call_);
    if (call_ > options_.calls / 2) last_application_.Sample(call_ - options_.calls / 2);
  }
  if (whole_run_.Grows() || last_application_.Grows()) world_.Find("memory grows with the calls");
  Report();
  return world_.findings().empty() ? 0 : 1;
}

void Soak::Report() {
  std::cout << "messages:";
  for (const auto& [number, count] : world_.boxes()) std::cout << " " << number << " x" << count;
  std::cout << "\nends:";
  for (const auto& [reason, count] : world_.ends()) std::cout << " " << reason << " x" << count << ";";
  std::cout << "\n";
  for (const MemoryWatch* watch : {&whole_run_, &last_application_}) watch->Print(std::cout);
  if (world_.findings().empty()) {
    std::cout << call_ - 1 << " calls, seed " << options_.seed << ": nothing found\n";
    return;
  }
  std::cerr << "FAILED at call " << call_ - 1 << ", seed " << options_.seed << ":\n";
  for (const std::string& text : world_.findings()) std::cerr << "  " << text << "\n";
  std::cerr << "The last lines of the transcript:\n";
  for (const std::string& line : world_.transcript().Tail()) std::cerr << "    " << line << "\n";
}

}  // namespace
}  // namespace kestro::soak

int main(int argument_count, char* arguments[]) {
  const auto options = kestro::soak::ReadOptions(argument_count, arguments);
  if (!options) {
    std::cerr << kestro::soak::kUsage;
    return 2;
  }
  try {
    return kestro::soak::Soak(*options).Run();
  } catch (const std::exception& error) {
    std::cerr << "cti-soak: " << error.what() << "\n";
    return 1;
  }
}
