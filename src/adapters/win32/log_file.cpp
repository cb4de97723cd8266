#include "adapters/win32/log_file.h"

#include <array>
#include <cstdio>

#include "adapters/win32/plain_file.h"
#include "adapters/win32/system_error.h"
#include "adapters/win32/wide_text.h"
#include "base/one_line.h"

namespace kestro::adapters {
namespace {

/// "2026-11-21 17:03:05.123", local time.
std::string LogTime(std::chrono::system_clock::time_point time) {
  using std::chrono::milliseconds;
  const auto since_epoch = std::chrono::floor<milliseconds>(time.time_since_epoch());
  const auto seconds = std::chrono::floor<std::chrono::seconds>(since_epoch);
  const auto whole = static_cast<std::time_t>(seconds.count());
  std::tm local{};
  ::localtime_s(&local, &whole);
  std::array<char, 64> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S.", &local);
  const std::string fraction = std::to_string((since_epoch - seconds).count());
  return std::string(text.data(), length).append(3 - fraction.size(), '0').append(fraction);
}

std::wstring Numbered(const std::wstring& path, int number) {
  return number == 0 ? path : path + L"." + std::to_wstring(number);
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
  if (paused_since_ && now >= *paused_since_ && now < *paused_since_ + kPause) {
    ++missing_entries_;
    return;
  }
  try {
    Write(LineAboutMissingEntries(now) + LogTime(now).append(1, ' ').append(text).append("\r\n"));
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
         " entries are missing.\r\n";
}

void LogFile::Pause(Time now, const base::RuntimeError& error) {
  const bool is_news = !paused_since_;
  file_.reset();
  paused_since_ = now;
  ++missing_entries_;
  if (is_news && report_) report_("The log cannot be written: " + error.description());
}

void LogFile::Write(const std::string& lines) {
  if (!file_ && !directory_.empty()) {
    try {
      OpenIn(directory_);
    } catch (const base::RuntimeError&) {
      if (fallback_folder_.empty()) throw;
    }
  }
  if (!file_) {
    if (fallback_folder_.empty()) RaiseError(base::kPathNotFound, "no log directory");
    ::CreateDirectoryW(ToWide(fallback_folder_).c_str(), nullptr);
    OpenIn(fallback_folder_);
  }
  if (size_ > 0 && size_ + lines.size() > kSizeLimit) PutAside();
  WriteAll(file_, lines);
  size_ += lines.size();
}

void LogFile::OpenIn(const std::string& folder) {
  path_ = ToWide(folder + (folder.ends_with('\\') ? "" : "\\") + std::string(kFileName));
  OpenFile();
}

void LogFile::OpenFile() {
  file_ = OwnHandle(::CreateFileW(path_.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file_) RaiseSystemError(::GetLastError(), base::kPathNotFound);
  LARGE_INTEGER size{};
  const bool is_file =
      ::GetFileType(file_.get()) == FILE_TYPE_DISK && ::GetFileSizeEx(file_.get(), &size) != FALSE;
  if (!is_file) {
    file_.reset();
    RaiseError(base::kPathAccessError, "not a file");
  }
  size_ = static_cast<std::uint64_t>(size.QuadPart);
}

void LogFile::PutAside() {
  file_.reset();
  for (int number = kKeptFiles; number > 0; --number) {
    const bool moved = ::MoveFileExW(Numbered(path_, number - 1).c_str(), Numbered(path_, number).c_str(),
                                     MOVEFILE_REPLACE_EXISTING) != FALSE;
    if (!moved && ::GetLastError() != ERROR_FILE_NOT_FOUND) {
      RaiseSystemError(::GetLastError(), base::kPathNotFound);
    }
  }
  OpenFile();
}

}  // namespace kestro::adapters
