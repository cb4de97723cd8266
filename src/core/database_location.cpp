#include "core/database_location.h"

#include <cmath>

#include "base/text.h"

namespace kestro::core::Functions {
namespace {

constexpr std::string_view kTemplate = "DBTemplate.tpl";
constexpr std::string_view kDatabase = "CTIDB.mdb";
constexpr std::string_view kConfigurationFile = "CTI.exe.config";
constexpr std::size_t kMostConfigurationBytes = std::size_t{1} << 20U;
constexpr std::string_view kFirstStartDone = "FirstStartDone";
constexpr double kPictureNumbers = 2000;
constexpr int kMostDraws = 100'000;  // far more than there are numbers: then all of them are taken

std::string WithSeparator(std::string_view folder) {
  std::string path(folder);
  if (!path.ends_with('\\')) path.push_back('\\');
  return path;
}

/// What stands behind `mark` and one more character; positions count characters.
std::string_view Behind(std::string_view text, std::string_view mark) {
  const auto found = text.find(mark);
  const std::size_t before =
      found == std::string_view::npos ? 0 : base::CharacterCount(text.substr(0, found)) + 1;
  const auto skipped = base::FirstCharacters(text, before == 0 ? mark.size() : before + mark.size());
  return text.substr(skipped.size());
}

}  // namespace

std::string ConfiguredFolderIn(std::string_view text) {
  const auto value = Behind(Behind(text, "MDBDatabasePath"), "value=");
  return std::string(value.substr(0, value.find('"')));
}

DatabaseLocation::DatabaseLocation(LogModule& log, Messages& messages, SharedFunctions& shared,
                                   RegistrySettingsModule& settings, ports::FileSystem& files,
                                   ports::ProcessControl& process)
    : procedure_(log, "KESTROCTI.Functions", Spelling::kFullStop),
      messages_(messages),
      shared_(shared),
      settings_(settings),
      files_(files),
      process_(process) {}

std::string DatabaseLocation::GetAppPathDirectory() {
  return procedure_("GetAppPathDirectory", [&] { return files_.UserDataFolder(); });
}

std::string DatabaseLocation::GetDatabaseDirectory() {
  return procedure_("GetDatabaseDirectory", [&]() -> std::string {
    std::string folder;
    try {
      folder = GetAppPathDirectory();
    } catch (const base::RuntimeError&) {
      folder = shared_.GetCurrentApplicationPath();
    }
    folder = base::Trim(folder);
    if (base::CharacterCount(folder) > 1) folder = WithSeparator(folder);
    if (!files_.FolderExists(folder)) return shared_.GetCurrentApplicationPath();
    CreateWhenMissing(folder + "KESTRO");
    CreateWhenMissing(folder + "KESTRO\\KESTROCTI");
    return folder + "KESTRO\\KESTROCTI";
  });
}

void DatabaseLocation::CreateWhenMissing(const std::string& folder) {
  if (files_.FolderExists(folder)) return;
  procedure_.Log("GetDatabaseDirectory", "Creating directory '" + folder + "'");
  files_.CreateFolder(folder);
}

std::string DatabaseLocation::GetTemplateDBPath() {
  return procedure_("GetTemplateDBPath",
                    [&] { return WithSeparator(shared_.GetCurrentApplicationPath()).append(kTemplate); });
}

std::string DatabaseLocation::GetDestinationDBPath(std::string_view folder) {
  return procedure_("GetDestinationDBPath", [&] { return WithSeparator(folder).append(kDatabase); });
}

std::string DatabaseLocation::CopyDatabaseTemplate(std::string_view folder) {
  constexpr std::string_view kName = "CopyDatabaseTemplate";
  return procedure_(kName, [&] {
    const std::string from = GetTemplateDBPath();
    std::string to = GetDestinationDBPath(folder);
    if (!files_.FileExists(from)) {
      procedure_.Log(kName, "Unable to find template database. Application is shutting down.");
      EndWithMessage("117", {from, std::string(kLineBreak)});
    }
    if (!files_.FileExists(to)) {
      procedure_.Log(kName, "Copying template database to destination database.");
      CopyTemplate(from, to);
    }
    return to;
  });
}

void DatabaseLocation::CopyTemplate(const std::string& from, const std::string& to) {
  try {
    files_.CopyFileTo(from, to, true);
  } catch (const base::RuntimeError& error) {
    procedure_.Log("CopyDatabaseTemplate", error.description());
    if (!files_.FileExists(to)) return;
    procedure_.Log("CopyDatabaseTemplate",
                   "Unable to copy template database to destination DB. Application is shutting down.");
    EndWithMessage("120", {from, to, std::string(kLineBreak)});
  }
}

void DatabaseLocation::EndWithMessage(std::string_view text_id,
                                      std::initializer_list<std::string> parameters) {
  messages_.Show(ports::kCritical, text_id, parameters);
  process_.EndProcess();
}

bool DatabaseLocation::FirstStartIsDone() {
  return settings_.GetRegistrySetting(kFirstStartDone, "0") == "1";
}

/// Done only when the database is there and found again: a first start that
/// met a full disk or settings that cannot be written is made up for by the next one.
void DatabaseLocation::DoFirstStartActions() {
  procedure_("DoFirstStartActions", [&] {
    const std::string path = CopyDatabaseTemplate(GetDatabaseDirectory());
    settings_.SaveRegistrySetting(SettingName::kDatabasePath, path);
    const bool is_stored = settings_.GetRegistrySetting(SettingName::kDatabasePath, "") == path;
    if (is_stored && files_.FileExists(path)) settings_.SaveRegistrySetting(kFirstStartDone, "1");
  });
}

std::string DatabaseLocation::ConfiguredDatabaseFolder() {
  const std::string program_folder = shared_.GetCurrentApplicationPath();
  const std::string file = program_folder + std::string(kConfigurationFile);
  std::string text;
  try {
    if (files_.FileExists(file)) text = files_.ReadTextLinesJoined(file, kMostConfigurationBytes);
  } catch (const base::RuntimeError& error) {
    procedure_.Log("ConfiguredDatabaseFolder", "Configuration file is left out: " + error.description());
  }
  const std::string folder = ConfiguredFolderIn(text);
  return folder.empty() ? program_folder : folder + "\\";
}

std::string DatabaseLocation::GetDestinationPictureName(std::string_view source,
                                                        std::string_view database_path) {
  return procedure_.With(Spelling::kBare, "GetDestinationPictureName", [&] {
    const double drawn = static_cast<double>(random_()) / (static_cast<double>(std::mt19937::max()) + 1);
    const auto number = std::lround(drawn * kPictureNumbers);
    return ports::BuildPath(ports::GetParentFolderName(database_path),
                            std::to_string(number) + ports::GetFileName(source));
  });
}

std::string DatabaseLocation::CopyPictureToDestinationFolder(std::string_view source,
                                                             std::string_view database_path) {
  return procedure_.OutermostWith(
      Spelling::kBare, "CopyPictureToDestinationFolder",
      [&] {
        std::string target = GetDestinationPictureName(source, database_path);
        for (int draws = 0; files_.FileExists(target); ++draws) {
          if (draws == kMostDraws) throw base::RuntimeError(base::kFileAlreadyExists, "File already exists");
          target = GetDestinationPictureName(source, database_path);
        }
        files_.CopyFileTo(source, target, false);
        return target;
      },
      [](const base::RuntimeError&) { return std::string(); });
}

}  // namespace kestro::core::Functions
