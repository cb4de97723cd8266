#include "scenario/player_program.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>

#include "scenario/player.h"
#include "scenario/scenario_folder.h"

namespace kestro::scenario {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kHeadless = "headless";

struct Options {
  std::string front_end;
  std::optional<fs::path> keep;
  std::optional<fs::path> screenshots;
  std::optional<fs::path> transcripts;
  std::vector<std::string> files;
};

std::string Usage(const PlayerSystem& system) {
  return "usage: " + system.command + " [--front-end " + system.front_end_names +
         "] [--keep DIR] [--screenshots DIR] [--transcripts DIR] FILE...\n"
         "Plays each FILE on a fresh application and prints what left the application.\n"
         "  --keep DIR         leave the files of each scenario in DIR/NAME\n"
         "  --screenshots DIR  write a picture of each window that appears or is dumped to DIR\n"
         "  --transcripts DIR  print to DIR/NAME.transcript\n"
         "Exit status: 0 all expectations held, 1 one failed, 2 a script cannot be read.\n";
}

/// Nothing when the arguments make no sense.
std::optional<Options> ReadOptions(const std::vector<std::string>& arguments, const PlayerSystem& system) {
  Options options;
  options.front_end = system.default_front_end;
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
    } else if (name == "--transcripts") {
      options.transcripts = *argument;
    } else {
      return std::nullopt;
    }
  }
  return options.files.empty() ? std::nullopt : std::optional(options);
}

std::optional<std::string> ReadFile(const fs::path& name) {
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

  [[nodiscard]] WindowViewer Viewer(forms::FrontEndDriver& driver) {
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

/// Where the transcript of a scenario goes.
class TranscriptOutput {
 public:
  TranscriptOutput(const std::optional<fs::path>& folder, const std::string& scenario, std::ostream& standard)
      : out_(&standard) {
    if (!folder) return;
    fs::create_directories(*folder);
    file_.open(*folder / fs::path(scenario).stem().concat(".transcript"), std::ios::binary);
    file_.exceptions(std::ios::failbit | std::ios::badbit);
    out_ = &file_;
  }

  void Print(std::string_view line) { *out_ << line << "\n"; }

 private:
  std::ofstream file_;
  std::ostream* out_;
};

/// Plays the files one after the other.
class Program {
 public:
  Program(const PlayerSystem& system, const Options& options, FrontEndFactory& front_ends, std::ostream& out,
          std::ostream& errors)
      : system_(system),
        options_(options),
        front_ends_(front_ends),
        out_(out),
        errors_(errors),
        pictures_(options.screenshots) {}

  int PlayFile(const std::string& file) {
    const auto bytes = ReadFile(file);
    if (!bytes) {
      errors_ << file << ": cannot be read\n";
      return Verdict::kUnreadable;
    }
    TranscriptOutput output(options_.transcripts, file, out_);
    Transcript transcript([&output](std::string_view line) { output.Print(line); });
    const Verdict verdict = Play(*bytes, file, transcript);
    Report(file, verdict, transcript);
    return verdict.status;
  }

 private:
  Verdict Play(const std::string& bytes, const std::string& file, Transcript& transcript) {
    try {
      const std::vector<Action> script = ParseScript(bytes);
      const auto folder = MakeFolder(file);
      const ScenarioMachine machine = system_.make_machine(folder->path());
      const auto front_end = front_ends_.Make(machine.native_path);
      Player player(*machine.machine, *front_end, transcript, pictures_.Viewer(front_end->Driver()));
      return player.Play(script);
    } catch (const ScriptError& error) {
      return {Verdict::kUnreadable, error.line(), error.what()};
    }
  }

  /// DIR/NAME, with a number behind it when that is there already.
  [[nodiscard]] std::unique_ptr<ScenarioFolder> MakeFolder(const std::string& file) const {
    if (!options_.keep) return std::make_unique<ScenarioFolder>();
    const fs::path wanted = *options_.keep / fs::path(file).stem();
    fs::path folder = wanted;
    for (int number = 2; fs::exists(folder); ++number) {
      folder = wanted.string() + "-" + std::to_string(number);
    }
    return std::make_unique<ScenarioFolder>(folder);
  }

  void Report(const std::string& file, const Verdict& verdict, const Transcript& transcript) {
    if (verdict.status == Verdict::kHeld) return;
    out_.flush();
    errors_ << file << ":" << verdict.line << ": " << verdict.reason << "\n";
    if (verdict.status != Verdict::kFailed) return;
    for (const std::string& line : transcript.Tail()) errors_ << "    " << line << "\n";
  }

  const PlayerSystem& system_;
  const Options& options_;
  FrontEndFactory& front_ends_;
  std::ostream& out_;
  std::ostream& errors_;
  Pictures pictures_;
};

}  // namespace

int RunPlayer(const PlayerSystem& system, const std::vector<std::string>& arguments, std::ostream& out,
              std::ostream& errors) {
  if (std::find(arguments.begin(), arguments.end(), "--help") != arguments.end()) {
    out << Usage(system);
    return Verdict::kHeld;
  }
  const auto options = ReadOptions(arguments, system);
  const auto front_ends = options ? system.front_ends(options->front_end) : nullptr;
  if (!front_ends) {
    errors << Usage(system);
    return Verdict::kUnreadable;
  }
  if (options->screenshots && options->front_end == kHeadless) {
    errors << system.command << ": the front end headless draws nothing\n";
    return Verdict::kUnreadable;
  }
  Program program(system, *options, *front_ends, out, errors);
  int status = Verdict::kHeld;
  for (const std::string& file : options->files) status = std::max(status, program.PlayFile(file));
  return status;
}

}  // namespace kestro::scenario
