#pragma once

#include <memory>
#include <optional>
#include <string>

#include "adapters/jetfile/system_file_layer.h"
#include "adapters/posix/activation_socket.h"
#include "adapters/posix/control_socket.h"
#include "adapters/posix/desktop_open.h"
#include "adapters/posix/detached_processes.h"
#include "adapters/posix/iconv_code_page.h"
#include "adapters/posix/instance_lock.h"
#include "adapters/posix/path_map.h"
#include "adapters/posix/posix_file_system.h"
#include "adapters/posix/posix_growing_file.h"
#include "adapters/posix/posix_shell_information.h"
#include "adapters/posix/runtime_folder.h"
#include "adapters/posix/system_information.h"
#include "adapters/qt/desktop_tray.h"
#include "adapters/qt/event_boundary.h"
#include "adapters/qt/qt_clipboard.h"
#include "adapters/qt/qt_descriptor_watcher.h"
#include "adapters/qt/qt_event_poster.h"
#include "adapters/qt/qt_file_dialogs.h"
#include "adapters/qt/qt_foreground_windows.h"
#include "adapters/qt/qt_form_host.h"
#include "adapters/qt/qt_message_boxes.h"
#include "adapters/qt/qt_notification_area.h"
#include "adapters/qt/qt_process_control.h"
#include "adapters/sqlite/sqlite_database.h"
#include "app/application.h"
#include "core/log_file.h"
#include "core/system_clock.h"
#include "exchange/exchange.h"
#include "exchange/exchange_commands.h"
#include "programs/kestro-cti/chosen_dialling.h"
#include "programs/kestro-cti/ending_signals.h"
#include "programs/kestro-cti/user_world.h"

namespace kestro::programs {

/// The complete program on a Linux desktop, with the software exchange in place
/// of a telephone line. Needs a QApplication, which must outlive it.
class DesktopProgram {
 public:
  enum class World { kOwn, kDemo };
  /// The number of a link that was opened, empty for a link without one; nothing = no link.
  using Link = std::optional<std::string>;

  /// Raises base::RuntimeError when something that the program cannot do
  /// without is missing.
  /// The lock may have been asked already. With a link the user is asked, once
  /// the program has come up, whether its number is to be dialled.
  DesktopProgram(World world, adapters::InstanceLock instances, const Link& link);
  ~DesktopProgram();
  DesktopProgram(const DesktopProgram&) = delete;
  DesktopProgram& operator=(const DesktopProgram&) = delete;

  /// Starts the application and runs until it ends; the exit status. With
  /// `end_after_start` it ends as soon as it waits for events.
  int Run(bool end_after_start);

 private:
  /// The event loop as the control socket knows it.
  class SocketEvents final : public adapters::DescriptorWatcher {
   public:
    explicit SocketEvents(adapters::QtDescriptorWatcher& watcher) : watcher_(watcher) {}
    void Watch(int descriptor, std::function<void()> on_readable) override {
      watcher_.Watch(descriptor, std::move(on_readable));
    }
    void Unwatch(int descriptor) override { watcher_.Unwatch(descriptor); }

   private:
    adapters::QtDescriptorWatcher& watcher_;
  };

  [[nodiscard]] UserWorld MakeWorld(World world);
  void SetUpExchange();
  void OpenSockets();
  void MakeApplication();
  void OnRequest(const adapters::ActivationSocket::Request& request);
  void Report(const std::string& text);
  [[nodiscard]] std::string NativePath(std::string_view path) const { return paths_.ToNative(path); }

  adapters::EventBoundary boundary_;
  adapters::QtEventPoster poster_{boundary_};
  adapters::QtDescriptorWatcher descriptors_{boundary_};
  SocketEvents socket_events_{descriptors_};

  adapters::PathMap paths_;
  std::string program_folder_;
  adapters::SystemFileLayer database_files_;
  adapters::SqliteDatabase database_;
  adapters::IconvCodePage code_page_;
  core::SystemClock clock_;
  adapters::PosixGrowingFile log_on_disk_{paths_};
  core::LogFile log_;
  UserWorld world_;
  adapters::PosixFileSystem files_;

  exchange::Exchange exchange_;
  exchange::ExchangeCommands commands_{exchange_, code_page_};
  adapters::RuntimeFolder runtime_folder_;
  adapters::InstanceLock instances_;
  std::unique_ptr<adapters::ActivationSocket> activation_;
  std::unique_ptr<adapters::ControlSocketServer> control_socket_;

  adapters::DesktopTray tray_;
  adapters::QtFormHost windows_;
  adapters::QtNotificationArea notification_area_;
  std::unique_ptr<adapters::PosixShellInformation> shell_;
  adapters::QtForegroundWindows foreground_{windows_};
  adapters::QtMessageBoxes boxes_;
  adapters::QtFileDialogs file_dialogs_;
  adapters::QtProcessControl process_;
  adapters::QtClipboard clipboard_;
  adapters::DetachedProcesses processes_{socket_events_};
  adapters::DesktopOpen desktop_open_{[this](std::string_view path) { return NativePath(path); }, processes_};
  adapters::PosixSystemInformation system_information_;
  ChosenDialling dialling_;
  std::unique_ptr<app::Application> application_;
  std::unique_ptr<EndingSignals> signals_;
};

}  // namespace kestro::programs
