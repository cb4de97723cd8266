#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "programs/cti-scenario/front_ends.h"
#include "programs/cti-scenario/posix_machine.h"
#include "scenario/player.h"

namespace kestro::programs {
namespace {

namespace fs = std::filesystem;
using scenario::Verdict;

constexpr std::string_view kHeadless = "headless";

struct Options {
  std::string front_end = std::string(kHeadless);
  std::optional<fs::path> keep;
  std::optional<fs::path> screenshots;
  std::vector<std::string> files;
};

std::string Usage() {
  return "usage: cti-scenario [--front-end " + std::string(FrontEndNames()) +
         "] [--keep DIR] [--screenshots DIR] FILE...\n"
         "Plays each FILE on a fresh application and prints what left the application.\n"
         "  --keep DIR         leave the files of each scenario in DIR/NAME\n"
         "  --screenshots DIR  write a picture of each window that appears or is dumped to DIR\n"
         "Exit status: 0 all expectations held, 1 one failed, 2 a script cannot be read.\n";
}

/// Nothing when the arguments make no sense.
std::optional<Options> ReadOptions(const std::vector<std::string>& arguments) {
  Options options;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    if (!argument->starts_with("--")) {
      options.files.push_back(*argument);
      continue;
    }
    const std::string name = *argument;
    if (++argument == arguments.end()) return std::nullopt;
    if (name == "--front-end") {
      options.front_end = *argument;
    } else if (name == "--keep") {
      options.keep = *argument;
    } else if (name == "--screenshots") {
      options.screenshots = *argument;
    } else {
      return std::nullopt;
    }
  }
  return options.files.empty() ? std::nullopt : std::optional(options);
}

std::optional<std::string> ReadFile(const std::string& name) {
  std::ifstream in(name, std::ios::binary);
  std::string bytes(std::istreambuf_iterator<char>(in), {});
  return in.bad() || !in.is_open() ? std::nullopt : std::optional(std::move(bytes));
}

/// Numbered pictures in a folder, "03-ContactDetail.png". A window that still looks as in its last
/// picture gets no other one.
class Pictures {
 public:
  explicit Pictures(std::optional<fs::path> folder) : folder_(std::move(folder)) {
    if (folder_) fs::create_directories(*folder_);
  }

  [[nodiscard]] scenario::WindowViewer Viewer(forms::FrontEndDriver& driver) {
    if (!folder_) return {};
    return [this, &driver](forms::Form& window) { Take(window, driver); };
  }

 private:
  void Take(forms::Form& window, forms::FrontEndDriver& driver) {
    const std::string number = std::to_string(next_);
    const std::string name = (number.size() < 2 ? "0" + number : number) + "-" + window.name() + ".png";
    const std::string file = (*folder_ / name).string();
    if (!driver.SavePicture(window, file)) throw std::runtime_error(file + " cannot be written");
    auto bytes = ReadFile(file);
    std::optional<std::string>& last = last_pictures_[window.name()];
    if (bytes == last) {
      fs::remove(file);
      return;
    }
    last = std::move(bytes);
    ++next_;
  }

  std::optional<fs::path> folder_;
  std::map<std::string, std::optional<std::string>> last_pictures_;
  int next_ = 1;
};

/// DIR/NAME, with a number behind it when that is there already.
std::unique_ptr<ScenarioFolder> MakeFolder(const Options& options, const std::string& file) {
  if (!options.keep) return std::make_unique<ScenarioFolder>();
  const fs::path wanted = *options.keep / fs::path(file).stem();
  fs::path folder = wanted;
  for (int number = 2; fs::exists(folder); ++number) folder = wanted.string() + "-" + std::to_string(number);
  return std::make_unique<ScenarioFolder>(folder);
}

void Report(const std::string& file, const Verdict& verdict, const scenario::Transcript& transcript) {
  if (verdict.status == Verdict::kHeld) return;
  std::cout.flush();
  std::cerr << file << ":" << verdict.line << ": " << verdict.reason << "\n";
  if (verdict.status != Verdict::kFailed) return;
  for (const std::string& line : transcript.Tail()) std::cerr << "    " << line << "\n";
}

int PlayFile(const Options& options, const std::string& file, FrontEndFactory& front_ends,
             Pictures& pictures) {
  const auto bytes = ReadFile(file);
  if (!bytes) {
    std::cerr << file << ": cannot be read\n";
    return Verdict::kUnreadable;
  }
  scenario::Transcript transcript([](std::string_view line) { std::cout << line << "\n"; });
  Verdict verdict;
  try {
    const std::vector<scenario::Action> script = scenario::ParseScript(*bytes);
    const auto folder = MakeFolder(options, file);
    PosixMachine machine(*folder);
    const auto front_end = front_ends.Make([&](std::string_view path) { return machine.NativePath(path); });
    scenario::Player player(machine, *front_end, transcript, pictures.Viewer(front_end->Driver()));
    verdict = player.Play(script);
  } catch (const scenario::ScriptError& error) {
    verdict = {Verdict::kUnreadable, error.line(), error.what()};
  }
  Report(file, verdict, transcript);
  return verdict.status;
}

int Run(const std::vector<std::string>& arguments) {
  if (std::find(arguments.begin(), arguments.end(), "--help") != arguments.end()) {
    std::cout << Usage();
    return Verdict::kHeld;
  }
  const auto options = ReadOptions(arguments);
  const auto front_ends = options ? FrontEndsNamed(options->front_end) : nullptr;
  if (!front_ends) {
    std::cerr << Usage();
    return Verdict::kUnreadable;
  }
  if (options->screenshots && options->front_end == kHeadless) {
    std::cerr << "cti-scenario: the front end headless draws nothing\n";
    return Verdict::kUnreadable;
  }
  Pictures pictures(options->screenshots);
  int status = Verdict::kHeld;
  for (const std::string& file : options->files) {
    status = std::max(status, PlayFile(*options, file, *front_ends, pictures));
  }
  return status;
}

}  // namespace
}  // namespace kestro::programs

int main(int argc, char* argv[]) {
  try {
    return kestro::programs::Run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::cerr << "cti-scenario: " << error.what() << "\n";
    return kestro::scenario::Verdict::kUnreadable;
  }
}
