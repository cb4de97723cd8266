// Lets every port fail at every step of a user's day, one failure a run, and
// checks what is left: a program that can be used or has ended with a message,
// a whole database, readable settings, and a next start that works.

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/jetfile/system_file_layer.h"
#include "base/runtime_error.h"
#include "faults/users_day.h"
#include "jet/checker.h"
#include "jet/database.h"
#include "scenario/dumps.h"
#include "scenario/world.h"

namespace kestro::faults {
namespace {

constexpr std::string_view kKey = scenario::kSettingsKey;
constexpr std::string_view kUsersDatabase = R"(C:\Data\KESTRO\KESTROCTI\CTIDB.mdb)";
constexpr std::string_view kProgramsDatabase = "C:\\Program\\CTIDB.mdb";

/// Every procedure logs twice: of this port only one step in so many fails.
constexpr std::int64_t kLogStride = 61;

struct Totals {
  std::int64_t faults = 0;
  std::int64_t endings = 0;
  std::int64_t failed = 0;
};

/// What does not agree in a database file; looked at in a copy, since the program keeps the file itself
/// locked.
std::vector<std::string> Damages(const std::filesystem::path& file) {
  const std::filesystem::path copy = file.string() + ".check";
  std::filesystem::copy_file(file, copy);
  adapters::SystemFileLayer files;
  std::vector<std::string> findings;
  try {
    const auto database = jet::Database::Open(files, copy.string(), jet::OpenMode::kReadWrite);
    findings = jet::CheckDatabase(*database).findings;
  } catch (const jet::Error& error) {
    findings.emplace_back(error.what());
  }
  std::filesystem::remove(copy);
  return findings;
}

/// The rows of all contacts, so that a lost or half-written one shows.
std::vector<std::string> Contacts(FailingWorld& world, std::string_view database) {
  if (!world.machine().Files().FileExists(database)) return {};
  return scenario::DumpSql("SELECT * FROM Contact ORDER BY id_Contact", world.machine().Database(),
                           scenario::ConnectionStringOf(database));
}

class FaultRun {
 public:
  FaultRun(Port port, std::int64_t step, Raised raised) : plan_(port, step, raised) {}

  /// False when the step was never reached: there are no more.
  bool Play() {
    day_.First(plan_);
    CheckProgram();
    day_.Leave();
    CheckLeft("first");
    const auto before = Contacts(world_, DatabasePath());
    day_.Later(plan_);
    CheckProgram();
    day_.Leave();
    CheckLeft("later");
    if (Contacts(world_, DatabasePath()) != before) Add("the contacts are not what they were");
    CheckFiles();
    CheckNextStart();
    return plan_.fired();
  }

  [[nodiscard]] bool ended_early() const { return ended_early_; }
  [[nodiscard]] const std::vector<std::string>& findings() { return world_.findings(); }

 private:
  void Add(std::string text) { world_.Find(std::move(text)); }

  [[nodiscard]] std::string DatabasePath() {
    return world_.settings().QueryValue(kKey, "DatabasePath").value_or(std::string(kUsersDatabase));
  }

  /// Alive means: the user gets at it. Ended means: with a message.
  void CheckProgram() {
    if (!world_.running()) {
      ended_early_ = true;
      if (!world_.critical_message()) Add("the program ended without a message");
      return;
    }
    world_.Do("a second start", [&] { world_.application().Activate(); });
    if (!world_.Window(kMain).visible()) Add("nobody gets at the program");
    const bool icon = world_.session().notification_area.SendEvent(ports::kRightButtonUp);
    if (!icon && plan_.port() != Port::kNotificationArea) Add("the program has no icon");
    if (world_.application().Flags().ModalDialogOpen) Add("no dialog is open, and the flag says one is");
  }

  void CheckLeft(const char* which) {
    if (world_.running()) {
      Add(std::string("the ") + which + " run cannot be left");
    } else if (world_.session().exchange.line_open() && plan_.port() != Port::kLineFunctions) {
      Add("the line is left open");
    }
    world_.Forget();
  }

  void CheckFiles() {
    for (const auto database : {kUsersDatabase, kProgramsDatabase}) {
      if (!world_.machine().Files().FileExists(database)) continue;
      for (const std::string& finding : Damages(world_.machine().NativePath(database))) {
        Add("the database is damaged: " + finding);
      }
    }
    for (const std::string& report : world_.settings_reports()) Add("settings: " + report);
  }

  /// As if the machine had been repaired: everything must work again.
  void CheckNextStart() {
    FaultPlan no_fault(plan_.port(), 0, Raised::kError);
    day_.Start(no_fault);
    for (const std::string& message : world_.messages()) Add("the next start says: " + message);
    if (!world_.running() || !world_.application().Flags().ApplicationStarted) {
      return Add("the next start does not watch the line");
    }
    day_.Play("call 0x201 offering from \"602111222\"");
    if (!world_.application().Flags().CallInProgress) Add("the next start does not see calls");
    const auto contacts = Contacts(world_, DatabasePath());
    const bool known = std::ranges::any_of(
        contacts, [](const std::string& contact) { return contact.find(kNumber) != std::string::npos; });
    const char* window = known ? "ContactDetail" : "UnknownContact";
    const bool pops_up = world_.settings().QueryValue(kKey, "AutomaticWindowPopUp").value_or("1") != "0";
    if (pops_up && !world_.Window(window).visible()) {
      Add(std::string("the next start does not show ") + window);
    }
    day_.Leave();
    CheckLeft("next");
  }

  FaultPlan plan_;
  FailingWorld world_;
  UsersDay day_{world_};
  bool ended_early_ = false;
};

Totals TestPort(const PortEntry& entry, std::int64_t stride, Raised raised) {
  Totals totals;
  for (std::int64_t step = 1;; step += stride) {
    FaultRun run(entry.port, step, raised);
    const bool fired = run.Play();
    if (!run.findings().empty()) {
      ++totals.failed;
      std::cerr << "FAILED: " << entry.name << ", step " << step << "\n";
      for (const std::string& text : run.findings()) std::cerr << "    " << text << "\n";
    }
    if (!fired) return totals;
    ++totals.faults;
    if (run.ended_early()) ++totals.endings;
  }
}

int Run(std::int64_t stride, Raised raised) {
  Totals all;
  for (const PortEntry& entry : kPorts) {
    const std::int64_t steps = entry.has_many_steps ? stride : 1;
    const Totals totals = TestPort(entry, entry.port == Port::kLog ? steps * kLogStride : steps, raised);
    std::cout << entry.name << ": " << totals.faults << " faults, " << totals.endings
              << " ended the program with a message, " << totals.failed << " failed\n";
    all.faults += totals.faults;
    all.failed += totals.failed;
  }
  std::cout << all.faults << " faults injected, " << all.failed << " failed\n";
  return all.failed == 0 && all.faults > 0 ? 0 : 1;
}

}  // namespace
}  // namespace kestro::faults

int main(int argument_count, char* arguments[]) {
  using kestro::faults::Raised;
  std::int64_t stride = 1;
  Raised raised = Raised::kError;
  for (int i = 1; i < argument_count; ++i) {
    const std::string_view argument = arguments[i];
    if (argument == "--bad-alloc") {
      raised = Raised::kBadAlloc;
    } else if (std::from_chars(argument.data(), argument.data() + argument.size(), stride).ec !=
               std::errc{}) {
      stride = 0;
    }
  }
  if (stride < 1) {
    std::cerr << "usage: cti-faults [--bad-alloc] [STRIDE]\n"
                 "  --bad-alloc  failures are raised as those of memory\n"
                 "  STRIDE       of ports with many steps every so many fails; 1 = all\n";
    return 2;
  }
  try {
    return kestro::faults::Run(stride, raised);
  } catch (const std::exception& error) {
    std::cerr << "cti-faults: " << error.what() << "\n";
    return 1;
  }
}
