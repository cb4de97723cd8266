#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "base/runtime_error.h"
#include "ports/clock.h"
#include "ports/growing_file.h"
#include "ports/logging_component.h"

namespace kestro::core {

/// The method log as a file, "KESTROCTI.log", one line an entry, local time:
///
///   2026-11-21 17:03:05.123 KESTROCTI.Functions.OnIncommingCall | Method started.
///   2026-11-21 17:03:05.123 ERROR 9 KESTROCTI.Functions.OnIncommingCall:: | Subscript out of range
///
/// It lies in the log directory or, where that cannot be written, in the
/// fallback folder. It is opened by the first entry; every entry is one write,
/// so the log is complete up to a crash. Before it grows beyond its limit it is
/// put aside: NAME.1 is the last one put aside, NAME.3 the oldest; an older one
/// is gone.
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
  static constexpr int kKeptFiles = 3;
  static constexpr std::chrono::minutes kPause{1};

  using FailureReport = std::function<void(const std::string& text)>;

  struct Options {
    std::string fallback_folder;  // made when needed; empty = none
    FailureReport report_failure;
    std::string line_end = "\n";
    std::uint64_t size_limit = kSizeLimit;
  };

  /// The clock and the file must outlive the object.
  LogFile(const ports::Clock& clock, ports::GrowingFile& file, Options options)
      : clock_(clock), file_(file), options_(std::move(options)) {}

  void SetFileLogging(bool enabled) override;
  void SetLogDirectory(std::string_view directory) override;
  void ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) override;
  void LineEntry(const base::LogSource& source, std::string_view message) override;

 private:
  using Time = std::chrono::system_clock::time_point;

  void Store(std::string text, std::string_view source, std::string_view message);
  /// Writes to the file that is open, or to the first place that takes it. Raises when there is none.
  void Write(const std::string& lines);
  void WriteTo(const std::string& folder, const std::string& lines);
  void Append(const std::string& lines);
  void PutAside();
  [[nodiscard]] std::string LineAboutMissingEntries(const std::string& time) const;
  void Pause(Time now, const base::RuntimeError& error);
  void StartAnew();
  void Close();

  const ports::Clock& clock_;
  ports::GrowingFile& file_;
  Options options_;
  bool enabled_ = false;
  std::string directory_;
  std::string path_;  // of the file that is open; empty = none
  std::uint64_t size_ = 0;
  std::optional<Time> paused_since_;
  std::uint64_t missing_entries_ = 0;
};

}  // namespace kestro::core
