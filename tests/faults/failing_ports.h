#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "app/ports.h"
#include "faults/fault_plan.h"

namespace kestro::faults {

class FailingSettings final : public Failing<ports::SettingsStore, Port::kSettings> {
 public:
  using Failing::Failing;
  std::int32_t CreateKey(std::string_view key) override {
    return Fails() ? kAccessDenied : inner_.CreateKey(key);
  }
  std::optional<std::string> QueryValue(std::string_view key, std::string_view name) override {
    return Fails() ? std::nullopt : inner_.QueryValue(key, name);
  }
  std::int32_t SetValue(std::string_view key, std::string_view name, std::string_view value) override {
    return Fails() ? kAccessDenied : inner_.SetValue(key, name, value);
  }

 private:
  static constexpr std::int32_t kAccessDenied = 5;
};

class FailingFiles final : public Failing<ports::FileSystem, Port::kFiles> {
 public:
  using Failing::Failing;
  bool FileExists(std::string_view path) const override { return !Fails() && inner_.FileExists(path); }
  bool FolderExists(std::string_view path) const override { return !Fails() && inner_.FolderExists(path); }
  void CreateFolder(std::string_view path) override { Pass().CreateFolder(path); }
  void CopyFileTo(std::string_view source, std::string_view target, bool overwrite) override {
    Pass().CopyFileTo(source, target, overwrite);
  }
  int FileAttributes(std::string_view path) const override { return Pass().FileAttributes(path); }
  std::string ReadTextLinesJoined(std::string_view path, std::size_t most_bytes) const override {
    return Pass().ReadTextLinesJoined(path, most_bytes);
  }
  std::string ReadStart(std::string_view path, std::size_t most_bytes) const override {
    return Pass().ReadStart(path, most_bytes);
  }
  std::unique_ptr<ports::FileReader> OpenForReading(std::string_view path) const override {
    return std::make_unique<Reader>(Pass().OpenForReading(path), plan_);
  }
  std::string ProgramFolder() const override { return inner_.ProgramFolder(); }
  std::string UserDataFolder() const override { return Pass().UserDataFolder(); }

 private:
  class Reader final : public FailingOwner<ports::FileReader, Port::kFiles> {
   public:
    using FailingOwner::FailingOwner;
    std::size_t Read(std::span<char> block) override { return Pass().Read(block); }
  };
};

class FailingNotificationArea final : public Failing<ports::NotificationArea, Port::kNotificationArea> {
 public:
  using Failing::Failing;
  bool Available() override { return !Fails() && inner_.Available(); }
  ports::IconHandle LoadIconFile(std::string_view path) override { return Pass().LoadIconFile(path); }
  bool NotifyIcon(ports::NotificationMessage message, const ports::NotificationRecord& record) override {
    return !Fails() && inner_.NotifyIcon(message, record);
  }
  void SetCallback(ports::IconCallback callback) override { inner_.SetCallback(std::move(callback)); }
};

class FailingMessageBoxes final : public Failing<ports::MessageBoxes, Port::kMessageBoxes> {
 public:
  using Failing::Failing;
  ports::BoxAnswer Show(std::string_view text, int style) override { return Pass().Show(text, style); }
};

class FailingFileDialogs final : public Failing<ports::FileDialogs, Port::kFileDialogs> {
 public:
  using Failing::Failing;
  std::optional<std::string> OpenFile(const ports::FileDialogRequest& request) override {
    return Pass().OpenFile(request);
  }
};

class FailingDialling final : public Failing<ports::DiallingObjects, Port::kDialling> {
 public:
  using Failing::Failing;
  std::unique_ptr<ports::DiallingObject> CreateDialCom() override {
    return std::make_unique<DialCom>(Pass().CreateDialCom(), plan_);
  }

 private:
  class DialCom final : public FailingOwner<ports::DiallingObject, Port::kDialling> {
   public:
    using FailingOwner::FailingOwner;
    std::int32_t Dial(std::string_view number) override { return Pass().Dial(number); }
  };
};

class FailingClipboard final : public Failing<ports::Clipboard, Port::kClipboard> {
 public:
  using Failing::Failing;
  void SetText(std::string_view text) override { Pass().SetText(text); }
};

class FailingShellExecute final : public Failing<ports::ShellExecute, Port::kShellExecute> {
 public:
  using Failing::Failing;
  bool Open(std::string_view target) override { return !Fails() && inner_.Open(target); }
};

class FailingForeground final : public Failing<ports::ForegroundWindows, Port::kForeground> {
 public:
  using Failing::Failing;
  bool SetForegroundWindow(ports::WindowHandle window) override {
    return !Fails() && inner_.SetForegroundWindow(window);
  }
  ports::WindowHandle GetForegroundWindow() override { return Fails() ? 0 : inner_.GetForegroundWindow(); }
  std::uint32_t GetWindowThread(ports::WindowHandle window) override {
    return Fails() ? 0 : inner_.GetWindowThread(window);
  }
  void AttachThreadInput(std::uint32_t from, std::uint32_t to, bool attach) override {
    if (!Fails()) inner_.AttachThreadInput(from, to, attach);
  }
  bool IsIconic(ports::WindowHandle window) override { return !Fails() && inner_.IsIconic(window); }
  void ShowWindowCommand(ports::WindowHandle window, int command) override {
    if (!Fails()) inner_.ShowWindowCommand(window, command);
  }
  std::int32_t SetWindowPos(ports::WindowHandle window, std::int32_t after, std::uint32_t flags) override {
    return Fails() ? 0 : inner_.SetWindowPos(window, after, flags);
  }
};

class FailingLog final : public Failing<ports::LoggingComponent, Port::kLog> {
 public:
  using Failing::Failing;
  void SetFileLogging(bool enabled) override { Pass().SetFileLogging(enabled); }
  void SetLogDirectory(std::string_view directory) override { Pass().SetLogDirectory(directory); }
  void ErrorEntry(std::int32_t number, std::string_view source, std::string_view description) override {
    Pass().ErrorEntry(number, source, description);
  }
  void LineEntry(const base::LogSource& source, std::string_view message) override {
    Pass().LineEntry(source, message);
  }
};

}  // namespace kestro::faults
