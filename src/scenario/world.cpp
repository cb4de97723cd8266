#include "scenario/world.h"

#include <array>
#include <limits>

#include "base/runtime_error.h"
#include "base/text.h"
#include "scenario/quoting.h"
#include "scenario/script_line.h"

namespace kestro::scenario {
namespace {

constexpr std::string_view kDatabasePath = "DatabasePath";
constexpr std::string_view kPhoneLine = "PhoneLine";
constexpr std::string_view kDefaultDevice = "EXT 101";
constexpr std::string_view kFirstStartDone = "FirstStartDone";
constexpr std::string_view kUsersDatabase = R"(C:\Data\KESTRO\KESTROCTI\CTIDB.mdb)";
constexpr std::string_view kTemplate = "C:\\Program\\DBTemplate.tpl";
constexpr std::array<std::string_view, 4> kIcons = {"idle", "ringing", "accepted", "stopped"};

/// A number of the script as `Value`; raises ScriptError when it does not fit.
template <class Value>
Value Fitting(const Action& action, std::int64_t number) {
  if (number < 0 || number > std::numeric_limits<Value>::max()) {
    throw ScriptError(action.line, std::to_string(number) + " is out of range");
  }
  return static_cast<Value>(number);
}

/// Runs something of the machine's; its failure becomes the script's.
template <class Work>
void OnMachine(int line, Work work) {
  try {
    work();
  } catch (const base::RuntimeError& error) {
    throw ScriptError(line, error.description());
  }
}

/// A folder from the root on, one level after the other.
void MakeFolder(ports::FileSystem& files, const std::string& folder) {
  if (folder.empty() || files.FolderExists(folder)) return;
  const std::string parent = ports::GetParentFolderName(folder);
  if (parent != folder) MakeFolder(files, parent);
  files.CreateFolder(folder);
}

}  // namespace

std::string ConnectionStringOf(std::string_view database_path) {
  return std::string(ports::kConnectionStringStart).append(database_path).append(ports::kConnectionStringEnd);
}

bool World::Take(const Action& action) {
  switch (action.kind) {
    case ActionKind::kDevice:
      TakeDevice(action);
      return true;
    case ActionKind::kProgramFile:
      WriteFile(action, Machine::kProgramFolder);
      return true;
    case ActionKind::kDataFile:
      WriteFile(action, Machine::kUserDataFolder);
      return true;
    case ActionKind::kWithoutTemplate:
      without_template_ = true;
      return true;
    case ActionKind::kWithoutIcons:
      without_icons_ = true;
      return true;
    case ActionKind::kReadOnlyDatabase:
      read_only_database_ = true;
      return true;
    case ActionKind::kNoDatabase:
      no_database_ = true;
      return true;
    case ActionKind::kAnotherInstance:
      session_.instances.SetAnotherRuns();
      return true;
    case ActionKind::kWithoutSystemInformation:
      session_.system_information.SetNothingKnown();
      return true;
    case ActionKind::kWindows:
      TakeWindows(action);
      return true;
    case ActionKind::kShell32:
      session_.shell.SetShellMajor(Fitting<std::uint16_t>(action, action.arguments[0].number));
      return true;
    case ActionKind::kScreen:
      session_.windows.SetScreen({action.Number(0), action.Number(1)});
      return true;
    default:
      return address_book_.Add(action);
  }
}

void World::TakeDevice(const Action& action) {
  exchange::Device device;
  device.name = session_.machine.CodePage().FromText(action.Text(0));
  if (const Argument* provider = action.Option("provider")) {
    device.provider = session_.machine.CodePage().FromText(provider->text);
  }
  if (const Argument* states = action.Option("states")) {
    device.line_states = static_cast<std::uint32_t>(states->number);
  }
  session_.exchange.AddDevice(std::move(device));
  if (first_device_.empty()) first_device_ = action.Text(0);
}

void World::TakeWindows(const Action& action) {
  const std::string& version = action.Text(0);
  const auto dot = version.find('.');
  const auto major = ParseNumber(version.substr(0, dot));
  const auto minor = dot == std::string::npos ? std::nullopt : ParseNumber(version.substr(dot + 1));
  if (!major || !minor) throw ScriptError(action.line, "a version is written as in 5.1");
  session_.shell.SetWindows(Fitting<std::uint8_t>(action, *major), Fitting<std::uint8_t>(action, *minor),
                            action.Option("9x") == nullptr);
}

void World::WriteFile(const Action& action, std::string_view folder) {
  const std::string& name = action.Text(0);
  const bool leaves_folder = name.empty() || name.front() == '\\' || name.find("..") != std::string::npos ||
                             name.find_first_of(":/") != std::string::npos;
  if (leaves_folder) throw ScriptError(action.line, Quoted(name) + " is no name inside the folder");
  const bool as_it_stands = action.Option("utf-8") != nullptr;
  const std::string bytes =
      as_it_stands ? action.Text(1) : session_.machine.CodePage().FromText(action.Text(1));
  OnMachine(action.line, [&] { session_.machine.WriteFile(ports::BuildPath(folder, name), bytes); });
}

void World::Build(int line) {
  if (first_device_.empty()) {
    session_.exchange.AddDevice({session_.machine.CodePage().FromText(kDefaultDevice)});
    first_device_ = kDefaultDevice;
  }
  if (!session_.settings.QueryValue(kSettingsKey, kPhoneLine)) {
    session_.SetSetting(kPhoneLine, first_device_);
  }
  OnMachine(line, [&] {
    PrepareDatabase();
    RemoveWhatIsMissing();
  });
}

void World::RemoveWhatIsMissing() {
  Machine& machine = session_.machine;
  if (without_template_) machine.RemoveFile(kTemplate);
  if (!without_icons_) return;
  for (const std::string_view icon : kIcons) {
    machine.RemoveFile(std::string(Machine::kProgramFolder).append("\\Icons\\").append(icon).append(".ico"));
  }
}

void World::PrepareDatabase() {
  const auto configured = session_.settings.QueryValue(kSettingsKey, kDatabasePath);
  const std::string path = configured.value_or(std::string(kUsersDatabase));
  if (configured || no_database_) {
    session_.SetSetting(kDatabasePath, path);
    session_.SetSetting(kFirstStartDone, "1");
  }
  if (base::Trim(path).empty() || no_database_) {
    if (!address_book_.empty())
      throw ScriptError(address_book_.first_line(), "there is no database for this");
    return;
  }
  if (configured || read_only_database_ || !address_book_.empty()) MakeDatabase(path);
}

void World::MakeDatabase(const std::string& path) {
  Machine& machine = session_.machine;
  MakeFolder(machine.Files(), ports::GetParentFolderName(path));
  if (!machine.Files().FileExists(path)) machine.Files().CopyFileTo(kTemplate, path, true);
  address_book_.Store(machine.Database(), ConnectionStringOf(path));
  if (read_only_database_) machine.SetReadOnly(path);
}

}  // namespace kestro::scenario
