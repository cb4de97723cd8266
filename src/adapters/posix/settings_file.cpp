#include "adapters/posix/settings_file.h"

#include <fcntl.h>
#include <unistd.h>
#include <utility>

#include "adapters/posix/file_descriptor.h"
#include "adapters/posix/file_replacement.h"
#include "adapters/posix/plain_file.h"
#include "adapters/posix/put_aside.h"
#include "adapters/posix/settings_text.h"
#include "adapters/posix/user_folders.h"
#include "base/runtime_error.h"

namespace kestro::adapters {
namespace {

constexpr std::int32_t kNothingToWrite = -1;
constexpr const char* kFolderName = "/kestro-cti";
constexpr const char* kFileName = "/settings.conf";

/// A folder that is new survives a power failure as what is saved in it does.
void MakeFolderDurably(const std::string& folder) {
  if (::access(folder.c_str(), F_OK) == 0) return;
  MakeFolders(folder);
  const std::string above = folder.substr(0, folder.rfind('/') + 1);
  const FileDescriptor descriptor(::open(above.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor) ::fsync(descriptor.get());
}

}  // namespace

SettingsFile::SettingsFile(std::string path, const ports::Clock& clock, Report report)
    : path_(std::move(path)), clock_(clock), report_(std::move(report)) {
  if (path_.empty()) {
    Disable("there is no home folder");
    return;
  }
  RemoveLeftovers();
  Read();
}

std::int32_t SettingsFile::CreateKey(std::string_view key) {
  if (!SettingsTable::IsKey(key)) return kInvalidName;
  return Change([&](SettingsTable& settings) {
    if (settings.HasKey(key)) return kNothingToWrite;
    settings.AddKey(key);
    return 0;
  });
}

std::optional<std::string> SettingsFile::QueryValue(std::string_view key, std::string_view name) {
  const std::string* const found = table_.Find(key, name);
  return found == nullptr ? std::nullopt : std::optional(*found);
}

std::int32_t SettingsFile::SetValue(std::string_view key, std::string_view name, std::string_view value) {
  if (!SettingsTable::IsName(name)) return kInvalidName;
  return Change([&](SettingsTable& settings) {
    if (!settings.HasKey(key)) return kNotFound;
    const std::string* const before = settings.Find(key, name);
    if (identity_ && before != nullptr && *before == value) return kNothingToWrite;
    settings.Set(key, name, value);
    return 0;
  });
}

std::int32_t SettingsFile::Change(const ChangeOfTable& change) {
  try {
    if (path_.empty()) return kAccessDenied;
    MakeFolderDurably(path_.substr(0, path_.rfind('/')));
    return ChangeFile(FollowLinks(path_), change);
  } catch (const base::RuntimeError& error) {
    Disable(error.description());
    return kAccessDenied;
  }
}

std::int32_t SettingsFile::ChangeFile(const std::string& file, const ChangeOfTable& change) {
  FileReplacement replacement(file);
  if (const std::int32_t error = replacement.Open(); error != 0) return error;
  if (!usable_ || identity_ != FileIdentity::Of(file)) Read();
  if (!usable_) return kAccessDenied;

  SettingsTable changed = table_;
  const std::int32_t result = change(changed);
  if (result != 0) return result == kNothingToWrite ? 0 : result;
  const std::string text = FormatSettings(changed);
  if (text.size() > kMostBytes) return kTooLarge;
  if (const std::int32_t error = replacement.Write(text); error != 0) return error;
  identity_ = FileIdentity::Of(file);
  table_ = std::move(changed);
  return 0;
}

void SettingsFile::RemoveLeftovers() {
  try {
    FileReplacement replacement(FollowLinks(path_));
    if (replacement.Open() == 0) replacement.RemoveLeftovers();
  } catch (const base::RuntimeError&) {
    // Links in a circle: reading the file reports them.
  }
}

void SettingsFile::Read() {
  try {
    const FileDescriptor file = OpenPlainFile(path_);
    const auto identity = FileIdentity::Of(file);
    ParsedSettings parsed = ParseSettings(ReadToEnd(file, kMostBytes));
    if (!parsed.damage.empty()) return PutDamagedFileAside(parsed.damage);
    Take(std::move(parsed.settings), identity);
  } catch (const base::RuntimeError& error) {
    if (error.number() == base::kFileNotFound) return Take({}, std::nullopt);
    if (error.number() == base::kOutOfMemory) return PutDamagedFileAside(error.description());
    Disable(error.description());
  }
}

void SettingsFile::Take(SettingsTable table, std::optional<FileIdentity> identity) {
  table_ = std::move(table);
  identity_ = identity;
  usable_ = true;
  last_report_.clear();
}

void SettingsFile::PutDamagedFileAside(const std::string& damage) {
  try {
    const std::string kept = PutAside(FollowLinks(path_), clock_.Now());
    Take(std::move(table_), std::nullopt);
    report_("The settings file " + path_ + " is damaged (" + damage + "). It is kept as " + kept +
            "; nothing in it is used.");
  } catch (const base::RuntimeError& error) {
    Disable("it is damaged (" + damage + ") and cannot be renamed: " + error.description());
  }
}

void SettingsFile::Disable(const std::string& reason) {
  usable_ = false;
  std::string text = "The settings file " + path_ + " cannot be used, no setting will be saved: " + reason;
  if (text == last_report_) return;
  last_report_ = std::move(text);
  report_(last_report_);
}

std::string SettingsFilePath() {
  const std::string configuration = AbsolutePathFromEnvironment("XDG_CONFIG_HOME");
  if (!configuration.empty()) return configuration + kFolderName + kFileName;
  const std::string home = HomeFolder();
  return home.empty() ? home : home + "/.config" + kFolderName + kFileName;
}

}  // namespace kestro::adapters
