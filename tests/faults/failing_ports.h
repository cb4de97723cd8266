#pragma once

#include <optional>
#include <string>

#include "app/ports.h"
#include "faults/fault_plan.h"

namespace kestro::faults {

/// Each stands in front of another port and fails where the plan says so, the
/// way that port's failures look: with an error, or with a result. A call that
/// fails does nothing else.

class FailingSettings final : public ports::SettingsStore {
 public:
  FailingSettings(ports::SettingsStore& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}
  std::int32_t CreateKey(std::string_view key) override;
  [[nodiscard]] std::optional<std::string> QueryValue(std::string_view key, std::string_view name) override;
  std::int32_t SetValue(std::string_view key, std::string_view name, std::string_view value) override;

 private:
  static constexpr std::int32_t kAccessDenied = 5;
  ports::SettingsStore& inner_;
  FaultPlan& plan_;
};

class FailingFiles final : public ports::FileSystem {
 public:
  FailingFiles(ports::FileSystem& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}
  [[nodiscard]] bool FileExists(std::string_view path) const override;
  [[nodiscard]] bool FolderExists(std::string_view path) const override;
  void CreateFolder(std::string_view path) override;
  void CopyFileTo(std::string_view source, std::string_view target, bool overwrite) override;
  [[nodiscard]] int FileAttributes(std::string_view path) const override;
  [[nodiscard]] std::string ReadTextLinesJoined(std::string_view path, std::size_t most_bytes) const override;
  [[nodiscard]] std::string ReadStart(std::string_view path, std::size_t most_bytes) const override;
  /// Reading from it fails like the other operations.
  [[nodiscard]] std::unique_ptr<ports::FileReader> OpenForReading(std::string_view path) const override;
  [[nodiscard]] std::string ProgramFolder() const override { return inner_.ProgramFolder(); }
  [[nodiscard]] std::string UserDataFolder() const override;

 private:
  ports::FileSystem& inner_;
  FaultPlan& plan_;
};

class FailingNotificationArea final : public ports::NotificationArea {
 public:
  FailingNotificationArea(ports::NotificationArea& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}
  [[nodiscard]] bool Available() override;
  ports::IconHandle LoadIconFile(std::string_view path) override;
  bool NotifyIcon(ports::NotificationMessage message, const ports::NotificationRecord& record) override;
  void SetCallback(ports::IconCallback callback) override { inner_.SetCallback(std::move(callback)); }

 private:
  ports::NotificationArea& inner_;
  FaultPlan& plan_;
};

class FailingMessageBoxes final : public ports::MessageBoxes {
 public:
  FailingMessageBoxes(ports::MessageBoxes& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}
  ports::BoxAnswer Show(std::string_view text, int style) override;

 private:
  ports::MessageBoxes& inner_;
  FaultPlan& plan_;
};

class FailingFileDialogs final : public ports::FileDialogs {
 public:
  FailingFileDialogs(ports::FileDialogs& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}
  std::optional<std::string> OpenFile(const ports::FileDialogRequest& request) override;

 private:
  ports::FileDialogs& inner_;
  FaultPlan& plan_;
};

class FailingDialling final : public ports::DiallingObjects {
 public:
  FailingDialling(ports::DiallingObjects& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}
  [[nodiscard]] std::unique_ptr<ports::DiallingObject> CreateDialCom() override;

 private:
  ports::DiallingObjects& inner_;
  FaultPlan& plan_;
};

class FailingClipboard final : public ports::Clipboard {
 public:
  FailingClipboard(ports::Clipboard& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}
  void SetText(std::string_view text) override;

 private:
  ports::Clipboard& inner_;
  FaultPlan& plan_;
};

class FailingShellExecute final : public ports::ShellExecute {
 public:
  FailingShellExecute(ports::ShellExecute& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}
  bool Open(std::string_view target) override;

 private:
  ports::ShellExecute& inner_;
  FaultPlan& plan_;
};

class FailingForeground final : public ports::ForegroundWindows {
 public:
  FailingForeground(ports::ForegroundWindows& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}
  bool SetForegroundWindow(ports::WindowHandle window) override;
  [[nodiscard]] ports::WindowHandle GetForegroundWindow() override;
  [[nodiscard]] std::uint32_t GetWindowThread(ports::WindowHandle window) override;
  void AttachThreadInput(std::uint32_t from, std::uint32_t to, bool attach) override;
  [[nodiscard]] bool IsIconic(ports::WindowHandle window) override;
  void ShowWindowCommand(ports::WindowHandle window, int command) override;
  std::int32_t SetWindowPos(ports::WindowHandle window, std::int32_t insert_after,
                            std::uint32_t flags) override;

 private:
  ports::ForegroundWindows& inner_;
  FaultPlan& plan_;
};

class FailingLog final : public ports::LoggingComponent {
 public:
  FailingLog(ports::LoggingComponent& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}
  void SetFileLogging(bool enabled) override;
  void SetLogDirectory(std::string_view directory) override;
  void ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) override;
  void LineEntry(const base::LogSource& source, std::string_view message) override;

 private:
  ports::LoggingComponent& inner_;
  FaultPlan& plan_;
};

}  // namespace kestro::faults
