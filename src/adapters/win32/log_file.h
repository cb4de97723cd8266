#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "adapters/win32/file_handle.h"
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
/// fallback folder. It is opened by the first entry; every entry is one write.
/// Beyond its size limit it is put aside as NAME.1, older ones as NAME.2 and
/// NAME.3.
///
/// A log that cannot be written must not cost the user a call. No operation
/// raises for it: the failure is reported once, logging pauses, and every minute
/// (or when the switch or the directory is set again) an entry tries anew.
class LogFile final : public ports::LoggingComponent {
 public:
  static constexpr std::string_view kFileName = "KESTROCTI.log";
  static constexpr std::uint64_t kSizeLimit = 5'000'000;  // bytes
  static constexpr int kKeptFiles = 3;
  static constexpr std::chrono::minutes kPause{1};

  using FailureReport = std::function<void(const std::string& text)>;

  /// An empty fallback folder: there is none. The clock must outlive the object.
  LogFile(const ports::Clock& clock, std::string fallback_folder, FailureReport report)
      : clock_(clock), fallback_folder_(std::move(fallback_folder)), report_(std::move(report)) {}

  void SetFileLogging(bool enabled) override;
  void SetLogDirectory(std::string_view directory) override;
  void ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) override;
  void LineEntry(const base::LogSource& source, std::string_view message) override;

 private:
  using Time = std::chrono::system_clock::time_point;

  void Store(std::string_view text);
  /// Raises base::RuntimeError when no place takes it.
  void Write(const std::string& lines);
  void OpenIn(const std::string& folder);
  void OpenFile();
  void PutAside();
  void Pause(Time now, const base::RuntimeError& error);
  void StartAnew();
  [[nodiscard]] std::string LineAboutMissingEntries(Time now) const;

  const ports::Clock& clock_;
  std::string fallback_folder_;
  FailureReport report_;
  bool enabled_ = false;
  std::string directory_;
  std::wstring path_;  // of the file that is open
  Handle file_;
  std::uint64_t size_ = 0;
  std::optional<Time> paused_since_;
  std::uint64_t missing_entries_ = 0;
};

}  // namespace kestro::adapters
