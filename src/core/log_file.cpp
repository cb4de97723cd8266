#include "core/log_file.h"

#include <array>
#include <ctime>

#include "base/one_line.h"
#include "ports/file_system.h"

namespace kestro::core {
namespace {

/// "2026-11-21 17:03:05.123", local time.
std::string LogTime(std::chrono::system_clock::time_point time) {
  using std::chrono::milliseconds;
  const auto since_epoch = std::chrono::floor<milliseconds>(time.time_since_epoch());
  const auto seconds = std::chrono::floor<std::chrono::seconds>(since_epoch);
  const auto whole = static_cast<std::time_t>(seconds.count());
  const std::tm* const local = std::localtime(&whole);
  if (local == nullptr) return "(no time)";  // for the clock is out by far
  std::array<char, 64> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S.", local);
  const std::string fraction = std::to_string((since_epoch - seconds).count());
  return std::string(text.data(), length).append(3 - fraction.size(), '0').append(fraction);
}

std::string Numbered(const std::string& path, int number) {
  return number == 0 ? path : path + "." + std::to_string(number);
}

}  // namespace

void LogFile::SetFileLogging(bool enabled) {
  enabled_ = enabled;
  StartAnew();
}

void LogFile::SetLogDirectory(std::string_view directory) {
  directory_ = directory;
  StartAnew();
}

void LogFile::StartAnew() {
  Close();
  paused_since_.reset();
}

void LogFile::Close() {
  path_.clear();
  file_.Close();
}

void LogFile::LineEntry(const base::LogSource& source, std::string_view message) {
  if (enabled_) Store({}, source.Text(), message);
}

void LogFile::ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) {
  if (enabled_) Store("ERROR " + std::to_string(number) + " ", source, description);
}

void LogFile::Store(std::string text, std::string_view source, std::string_view message) {
  const Time now = clock_.Now();
  if (paused_since_ && now >= *paused_since_ && now < *paused_since_ + kPause) {
    ++missing_entries_;
    return;
  }
  base::AppendOnOneLine(text, source);
  text.append(" | ");
  base::AppendOnOneLine(text, message);
  try {
    const std::string time = LogTime(now);
    Write(LineAboutMissingEntries(time) + time + " " + text + options_.line_end);
    paused_since_.reset();
    missing_entries_ = 0;
  } catch (const base::RuntimeError& error) {
    Pause(now, error);
  }
}

std::string LogFile::LineAboutMissingEntries(const std::string& time) const {
  if (missing_entries_ == 0) return {};
  return time + " KESTROCTI.LogFile | The log could not be written: " + std::to_string(missing_entries_) +
         " entries are missing." + options_.line_end;
}

void LogFile::Pause(Time now, const base::RuntimeError& error) {
  const bool is_news = !paused_since_;
  Close();
  paused_since_ = now;
  ++missing_entries_;
  if (is_news && options_.report_failure) {
    options_.report_failure("The log cannot be written: " + error.description());
  }
}

void LogFile::Write(const std::string& lines) {
  const std::string& fallback = options_.fallback_folder;
  try {
    if (!path_.empty()) return Append(lines);
    if (!directory_.empty()) return WriteTo(directory_, lines);
  } catch (const base::RuntimeError&) {
    if (fallback.empty()) throw;
  }
  if (fallback.empty()) base::RaiseFileError(base::kPathNotFound, "no log directory");
  file_.MakeFolder(fallback);
  WriteTo(fallback, lines);
}

void LogFile::WriteTo(const std::string& folder, const std::string& lines) {
  path_ = ports::BuildPath(folder, kFileName);
  size_ = file_.Open(path_);
  Append(lines);
}

void LogFile::Append(const std::string& lines) {
  if (size_ > 0 && size_ + lines.size() > options_.size_limit) PutAside();
  file_.Append(lines);
  size_ += lines.size();
}

void LogFile::PutAside() {
  file_.Close();  // some systems rename no file that is open
  for (int number = kKeptFiles; number > 0; --number) {
    file_.Rename(Numbered(path_, number - 1), Numbered(path_, number));
  }
  size_ = file_.Open(path_);
}

}  // namespace kestro::core
