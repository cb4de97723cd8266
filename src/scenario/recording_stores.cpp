#include "scenario/recording_stores.h"

#include "scenario/quoting.h"

namespace kestro::scenario {

std::int32_t RecordingSettingsStore::SetValue(std::string_view key, std::string_view name,
                                              std::string_view value) {
  const std::int32_t result = inner_.SetValue(key, name, value);
  if (result == 0) transcript_.Add("registry " + std::string(name) + " = " + Quoted(value));
  return result;
}

void RecordingFileSystem::CopyFileTo(std::string_view source, std::string_view target, bool overwrite) {
  inner_.CopyFileTo(source, target, overwrite);
  transcript_.Add("file copied " + QuotedPath(source) + " -> " + QuotedPath(target));
}

void RecordingLog::SetFileLogging(bool enabled) {
  if (show_lines_) transcript_.Add(enabled ? "log file on" : "log file off");
}

void RecordingLog::SetLogDirectory(std::string_view directory) {
  if (show_lines_) transcript_.Add("log directory " + QuotedPath(directory));
}

void RecordingLog::ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) {
  std::string line = "error " + std::to_string(number) + " ";
  transcript_.Add(line.append(OneLine(source)).append(" | ").append(OneLine(description)));
}

void RecordingLog::LineEntry(const base::LogSource& source, std::string_view message) {
  if (show_lines_) transcript_.Add("log " + source.Text() + " | " + OneLine(message));
}

}  // namespace kestro::scenario
