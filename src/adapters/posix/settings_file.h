#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/posix/file_identity.h"
#include "adapters/posix/settings_table.h"
#include "ports/clock.h"
#include "ports/settings_store.h"

namespace kestro::adapters {

/// The user's settings in a text file (see settings_text.h), for the user alone.
///
/// The file is read at construction, and again before a change when another
/// program has changed it; what that program wrote stays. Every change replaces
/// the whole file (see FileReplacement), so no crash costs a setting. A symbolic
/// link is followed: the file it leads to is replaced, the link stays.
///
/// Two things can be wrong with the file. Both are reported once, neither is raised:
///  - It is damaged (no settings text, or longer than kMostBytes): it is renamed
///    to NAME.damaged-YYYYMMDD-HHMMSS and the program goes on with what it knows,
///    which at its start is nothing.
///  - It cannot be read, or put aside: it counts as empty and is never written to
///    (13), until it can be read.
class SettingsFile final : public ports::SettingsStore {
 public:
  using Report = std::function<void(const std::string& text)>;

  static constexpr std::size_t kMostBytes = 1024UL * 1024UL;
  static constexpr std::int32_t kNotFound = 2;
  static constexpr std::int32_t kAccessDenied = 13;
  static constexpr std::int32_t kInvalidName = 22;
  static constexpr std::int32_t kTooLarge = 27;

  /// `path` is native; empty when the user has no place for settings. Nothing is
  /// made before the first change. The clock must outlive the object.
  SettingsFile(std::string path, const ports::Clock& clock, Report report);

  std::int32_t CreateKey(std::string_view key) override;
  [[nodiscard]] std::optional<std::string> QueryValue(std::string_view key, std::string_view name) override;
  std::int32_t SetValue(std::string_view key, std::string_view name, std::string_view value) override;

 private:
  /// Changes the settings given and returns 0 when they are to be written,
  /// kNothingToWrite when not, or the system error code of a refusal.
  using ChangeOfTable = std::function<std::int32_t(SettingsTable& settings)>;

  std::int32_t Change(const ChangeOfTable& change);
  /// Holds the file against other programs of this kind while it reads, changes and writes it.
  std::int32_t ChangeFile(const std::string& file, const ChangeOfTable& change);
  void RemoveLeftovers();
  void Read();
  void Take(SettingsTable table, std::optional<FileIdentity> identity);
  void PutDamagedFileAside(const std::string& damage);
  void Disable(const std::string& reason);

  std::string path_;
  const ports::Clock& clock_;
  Report report_;
  SettingsTable table_;
  std::optional<FileIdentity> identity_;  // of the file that table_ stands for; nothing = no file
  bool usable_ = true;
  std::string last_report_;
};

/// $XDG_CONFIG_HOME/kestro-cti/settings.conf (usually ~/.config/...); empty without a home.
[[nodiscard]] std::string SettingsFilePath();

}  // namespace kestro::adapters
