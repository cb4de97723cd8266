#pragma once

#include <random>
#include <string>
#include <string_view>

#include "core/messages.h"
#include "core/procedure_frame.h"
#include "core/registry_settings_module.h"
#include "core/shared_functions.h"
#include "ports/file_system.h"
#include "ports/process_control.h"

namespace kestro::core::Functions {

/// Where the contacts database lies: the copy of the template at the first
/// start, and the pictures beside the database. Paths are system paths.
class DatabaseLocation {
 public:
  DatabaseLocation(LogModule& log, Messages& messages, SharedFunctions& shared,
                   RegistrySettingsModule& settings, ports::FileSystem& files,
                   ports::ProcessControl& process);

  /// The user's application-data folder. Raises when there is none.
  [[nodiscard]] std::string GetAppPathDirectory();
  /// Folder for the user's database, made when missing; the program's folder
  /// when the user has no data folder.
  [[nodiscard]] std::string GetDatabaseDirectory();
  [[nodiscard]] std::string GetTemplateDBPath();
  [[nodiscard]] std::string GetDestinationDBPath(std::string_view folder);
  /// Makes sure that the database exists in the folder and returns its path. Ends
  /// the process after message 117 (no template) or 120 (half a copy); where the
  /// copy failed and left nothing, the start checks report the missing database.
  std::string CopyDatabaseTemplate(std::string_view folder);
  /// To be run once a user.
  void DoFirstStartActions();
  [[nodiscard]] bool FirstStartIsDone();
  /// Database folder that the configuration file beside the program names, with
  /// "\" behind it; the program's folder when there is no such file.
  [[nodiscard]] std::string ConfiguredDatabaseFolder();

  /// Copies a picture beside the database under a new, numbered name and returns
  /// its path; empty (and logged) when that fails. Nothing is overwritten.
  [[nodiscard]] std::string CopyPictureToDestinationFolder(std::string_view source,
                                                           std::string_view database_path);

 private:
  void CreateWhenMissing(const std::string& folder);
  void CopyTemplate(const std::string& from, const std::string& to);
  [[nodiscard]] std::string GetDestinationPictureName(std::string_view source,
                                                      std::string_view database_path);
  void EndWithMessage(std::string_view text_id, std::initializer_list<std::string> parameters);

  ProcedureFrame procedure_;
  Messages& messages_;
  SharedFunctions& shared_;
  RegistrySettingsModule& settings_;
  ports::FileSystem& files_;
  ports::ProcessControl& process_;
  std::mt19937 random_{2000};  // seeded once: drawing again goes on in the sequence
};

/// The folder in the text of a configuration file: behind "MDBDatabasePath" and
/// one character, behind "value=" and one character, up to the next double
/// quote. A missing mark is not noticed: the cut then starts at the 16th (7th)
/// character. Kept as it stands.
[[nodiscard]] std::string ConfiguredFolderIn(std::string_view text);

}  // namespace kestro::core::Functions
