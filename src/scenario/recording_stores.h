#pragma once

#include <string>

#include "base/runtime_error.h"
#include "ports/file_system.h"
#include "ports/logging_component.h"
#include "ports/process_control.h"
#include "ports/settings_store.h"
#include "scenario/transcript.h"

namespace kestro::scenario {

/// Writes down every setting that is stored.
class RecordingSettingsStore final : public ports::SettingsStore {
 public:
  RecordingSettingsStore(ports::SettingsStore& inner, Transcript& transcript)
      : inner_(inner), transcript_(transcript) {}

  std::int32_t CreateKey(std::string_view key) override { return inner_.CreateKey(key); }
  [[nodiscard]] std::optional<std::string> QueryValue(std::string_view key, std::string_view name) override {
    return inner_.QueryValue(key, name);
  }
  std::int32_t SetValue(std::string_view key, std::string_view name, std::string_view value) override;

 private:
  ports::SettingsStore& inner_;
  Transcript& transcript_;
};

/// Writes down every file that is copied.
class RecordingFileSystem final : public ports::FileSystem {
 public:
  RecordingFileSystem(ports::FileSystem& inner, Transcript& transcript)
      : inner_(inner), transcript_(transcript) {}

  [[nodiscard]] bool FileExists(std::string_view path) const override { return inner_.FileExists(path); }
  [[nodiscard]] bool FolderExists(std::string_view path) const override { return inner_.FolderExists(path); }
  void CreateFolder(std::string_view path) override { inner_.CreateFolder(path); }
  void CopyFileTo(std::string_view source, std::string_view target, bool overwrite) override;
  [[nodiscard]] int FileAttributes(std::string_view path) const override {
    return inner_.FileAttributes(path);
  }
  [[nodiscard]] std::string ReadTextLinesJoined(std::string_view path,
                                                std::size_t most_bytes) const override {
    return inner_.ReadTextLinesJoined(path, most_bytes);
  }
  [[nodiscard]] std::string ReadStart(std::string_view path, std::size_t most_bytes) const override {
    return inner_.ReadStart(path, most_bytes);
  }
  [[nodiscard]] std::unique_ptr<ports::FileReader> OpenForReading(std::string_view path) const override {
    return inner_.OpenForReading(path);
  }
  [[nodiscard]] std::string ProgramFolder() const override { return inner_.ProgramFolder(); }
  [[nodiscard]] std::string UserDataFolder() const override { return inner_.UserDataFolder(); }

 private:
  ports::FileSystem& inner_;
  Transcript& transcript_;
};

/// Writes down the errors logged, and, while the script wants to see the log,
/// everything else that reaches the logging component.
class RecordingLog final : public ports::LoggingComponent {
 public:
  explicit RecordingLog(Transcript& transcript) : transcript_(transcript) {}
  void ShowLines(bool show) { show_lines_ = show; }

  void SetFileLogging(bool enabled) override;
  void SetLogDirectory(std::string_view directory) override;
  void ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) override;
  void LineEntry(const base::LogSource& source, std::string_view message) override;

 private:
  Transcript& transcript_;
  bool show_lines_ = false;
};

/// Writes down the end of the process.
class RecordingProcessControl final : public ports::ProcessControl {
 public:
  explicit RecordingProcessControl(Transcript& transcript) : transcript_(transcript) {}
  [[noreturn]] void EndProcess() override {
    transcript_.Add("ended");
    throw base::ProcessEnded{};
  }

 private:
  Transcript& transcript_;
};

}  // namespace kestro::scenario
