#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "adapters/posix/path_map.h"
#include "adapters/posix/rotating_file.h"
#include "base/runtime_error.h"
#include "ports/clock.h"
#include "ports/logging_component.h"

namespace kestro::adapters {

/// The method log as a file, "KESTROCTI.log", one line an entry:
///
///   2026-11-21 17:03:05.123 KESTROCTI.Functions.OnIncommingCall | Method started.
///   2026-11-21 17:03:05.123 ERROR 9 KESTROCTI.Functions.OnIncommingCall:: | Subscript out of range
///
/// It lies in the log directory or, where that cannot be written, in the
/// fallback folder. It is opened by the first entry; every entry is one write,
/// so the log is complete up to a crash.
///
/// A log that cannot be written (disk full, both places refused) must not cost
/// the user a call. No operation raises for it: the failure is reported once,
/// logging pauses, and every minute (or when the switch or the directory is set
/// again) an entry tries anew. The first line that gets through is preceded by
/// one that says how many are missing.
class LogFile final : public ports::LoggingComponent {
 public:
  static constexpr const char* kFileName = "KESTROCTI.log";
  static constexpr std::uint64_t kSizeLimit = 5'000'000;  // bytes
  static constexpr std::chrono::minutes kPause{1};

  using FailureReport = std::function<void(const std::string& text)>;

  struct Options {
    std::string fallback_folder;  // native; made when needed; empty = none
    FailureReport report_failure;
    std::uint64_t size_limit = kSizeLimit;
  };

  /// The clock must outlive the object.
  LogFile(const ports::Clock& clock, PathMap paths, Options options);

  void SetFileLogging(bool enabled) override;
  void SetLogDirectory(std::string_view directory) override;
  void ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) override;
  void LineEntry(const base::LogSource& source, std::string_view message) override;

 private:
  using Time = std::chrono::system_clock::time_point;

  void Store(std::string_view text);
  /// Writes to the file that is open, or to the first place that takes it. Raises when there is none.
  void Write(const std::string& lines);
  void WriteTo(const std::string& folder, const std::string& lines);
  [[nodiscard]] std::string LineAboutMissingEntries(Time now) const;
  void Pause(Time now, const base::RuntimeError& error);
  void StartAnew();

  const ports::Clock& clock_;
  PathMap paths_;
  Options options_;
  bool enabled_ = false;
  std::string directory_;
  std::optional<RotatingFile> file_;
  std::optional<Time> paused_since_;
  std::uint64_t missing_entries_ = 0;
};

/// $XDG_STATE_HOME/kestro-cti, where the log goes when the log directory cannot
/// be written; empty without a home.
[[nodiscard]] std::string LogFallbackFolder();

}  // namespace kestro::adapters
