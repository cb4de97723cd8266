#include "adapters/posix/log_file.h"

#include "adapters/posix/log_line.h"
#include "adapters/posix/system_error.h"
#include "adapters/posix/user_folders.h"
#include "base/one_line.h"

namespace kestro::adapters {

LogFile::LogFile(const ports::Clock& clock, PathMap paths, Options options)
    : clock_(clock), paths_(std::move(paths)), options_(std::move(options)) {}

void LogFile::SetFileLogging(bool enabled) {
  enabled_ = enabled;
  StartAnew();
}

void LogFile::SetLogDirectory(std::string_view directory) {
  directory_ = directory;
  StartAnew();
}

void LogFile::StartAnew() {
  file_.reset();
  paused_since_.reset();
}

void LogFile::LineEntry(const base::LogSource& source, std::string_view message) {
  if (!enabled_) return;
  std::string text;
  base::AppendOnOneLine(text, source.Text());
  text.append(" | ");
  base::AppendOnOneLine(text, message);
  Store(text);
}

void LogFile::ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) {
  if (!enabled_) return;
  std::string text = "ERROR " + std::to_string(number) + " ";
  base::AppendOnOneLine(text, source);
  text.append(" | ");
  base::AppendOnOneLine(text, description);
  Store(text);
}

void LogFile::Store(std::string_view text) {
  const Time now = clock_.Now();
  const bool waits = paused_since_ && now >= *paused_since_ && now < *paused_since_ + kPause;
  if (waits) {
    ++missing_entries_;
    return;
  }
  try {
    Write(LineAboutMissingEntries(now) + LogTime(now).append(1, ' ').append(text).append(1, '\n'));
    paused_since_.reset();
    missing_entries_ = 0;
  } catch (const base::RuntimeError& error) {
    Pause(now, error);
  }
}

std::string LogFile::LineAboutMissingEntries(Time now) const {
  if (missing_entries_ == 0) return {};
  return LogTime(now) +
         " KESTROCTI.LogFile | The log could not be written: " + std::to_string(missing_entries_) +
         " entries are missing.\n";
}

void LogFile::Pause(Time now, const base::RuntimeError& error) {
  const bool is_news = !paused_since_;
  file_.reset();
  paused_since_ = now;
  ++missing_entries_;
  if (is_news && options_.report_failure) {
    options_.report_failure("The log cannot be written: " + error.description());
  }
}

void LogFile::Write(const std::string& lines) {
  try {
    if (file_) return file_->Append(lines);
    if (!directory_.empty()) return WriteTo(paths_.ToNative(directory_), lines);
  } catch (const base::RuntimeError&) {
    if (options_.fallback_folder.empty()) throw;
  }
  if (options_.fallback_folder.empty()) RaiseError(base::kPathNotFound, "no log directory");
  MakeFolders(options_.fallback_folder);
  WriteTo(options_.fallback_folder, lines);
}

void LogFile::WriteTo(const std::string& folder, const std::string& lines) {
  file_.reset();
  file_.emplace(folder + "/" + kFileName, options_.size_limit);
  file_->Append(lines);
}

std::string LogFallbackFolder() {
  const std::string home = UserStateHome();
  return home.empty() ? home : home + "/kestro-cti";
}

}  // namespace kestro::adapters
