#pragma once

#include <string>

#include "scenario/address_book.h"
#include "scenario/script.h"
#include "scenario/session.h"

namespace kestro::scenario {

/// The world that a scenario's application is started in. Without a word in the
/// script: one device "EXT 101", the first device as the PhoneLine setting (a
/// PhoneLine setting in the script, an empty one included, takes its place), and
/// a user who starts the program for the first time.
///
/// Rows in the script make the user's database in advance, in the place where
/// the first start finds it. A DatabasePath setting in the script (and a database
/// that is missing on purpose) make it a later start; the database is then made
/// at that path.
class World {
 public:
  explicit World(Session& session) : session_(session) {}

  /// Takes an action that describes the world; false for any other. Raises ScriptError.
  bool Take(const Action& action);
  /// Makes what has been described. Raises ScriptError, with `line` for what is not one action's fault.
  void Build(int line);

 private:
  void TakeDevice(const Action& action);
  void TakeWindows(const Action& action);
  void WriteFile(const Action& action, std::string_view folder);
  void PrepareDatabase();
  void MakeDatabase(const std::string& path);
  void RemoveWhatIsMissing();

  Session& session_;
  AddressBook address_book_;
  std::string first_device_;
  bool without_template_ = false;
  bool without_icons_ = false;
  bool read_only_database_ = false;
  bool no_database_ = false;
};

/// Connection string of a contacts database.
[[nodiscard]] std::string ConnectionStringOf(std::string_view database_path);

}  // namespace kestro::scenario
