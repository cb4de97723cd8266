#pragma once

#include <memory>
#include <optional>
#include <string>

#include "adapters/jetfile/system_file_layer.h"
#include "adapters/sqlite/sqlite_database.h"
#include "adapters/win32/clipboard.h"
#include "adapters/win32/code_page.h"
#include "adapters/win32/com_dialling.h"
#include "adapters/win32/event_poster.h"
#include "adapters/win32/file_dialogs.h"
#include "adapters/win32/front_end/win32_event_boundary.h"
#include "adapters/win32/front_end/win32_foreground_windows.h"
#include "adapters/win32/front_end/win32_form_host.h"
#include "adapters/win32/front_end/win32_message_boxes.h"
#include "adapters/win32/hidden_window.h"
#include "adapters/win32/instance_mutex.h"
#include "adapters/win32/notification_area.h"
#include "adapters/win32/process_control.h"
#include "adapters/win32/registry_settings.h"
#include "adapters/win32/shell_information.h"
#include "adapters/win32/shell_open.h"
#include "adapters/win32/system_information.h"
#include "adapters/win32/tapi_line_functions.h"
#include "adapters/win32/win32_file_system.h"
#include "adapters/win32/win32_growing_file.h"
#include "app/application.h"
#include "core/log_file.h"
#include "core/system_clock.h"
#include "generated/version.h"

namespace kestro::programs {

/// The complete program on Windows: every port is the system's own interface.
class WindowsProgram {
 public:
  /// Raises base::RuntimeError when something that the program cannot do
  /// without is missing.
  WindowsProgram();
  ~WindowsProgram();
  WindowsProgram(const WindowsProgram&) = delete;
  WindowsProgram& operator=(const WindowsProgram&) = delete;

  /// Starts the application and runs until it ends; the exit status. With
  /// `end_after_start` it ends as soon as it waits for events. With the number of a
  /// link (core::NumberOfLink) it asks whether to dial that as soon as it is up.
  int Run(bool end_after_start, const std::optional<std::string>& link_number);

 private:
  using Boundary = adapters::Win32EventBoundary;
  using Runner = std::function<void(const std::function<void()>& task)>;

  [[nodiscard]] Runner RunAs(Boundary::Cause cause);
  void ListenToSystem();
  void ListenToSecondStarts();

  adapters::ComApartment com_;
  Boundary boundary_;
  adapters::HiddenWindow window_{adapters::InstanceMutex::kWindowClass};
  adapters::EventPoster poster_{window_, RunAs(Boundary::Cause::kSystem)};
  adapters::SystemCodePage code_page_;
  adapters::RegistrySettings settings_{code_page_};
  core::SystemClock clock_;
  adapters::Win32GrowingFile log_on_disk_;
  core::LogFile log_;
  adapters::Win32FileSystem files_;
  adapters::SystemFileLayer database_files_;
  adapters::SqliteDatabase database_;
  adapters::TapiLineFunctions line_;
  adapters::InstanceMutex instances_;
  adapters::Win32FormHost windows_;
  adapters::Win32NotificationArea notification_area_;
  adapters::Win32ShellInformation shell_;
  adapters::Win32ForegroundWindows foreground_{windows_};
  adapters::Win32MessageBoxes boxes_{boundary_, kProductName};
  adapters::Win32FileDialogs file_dialogs_{boundary_};
  adapters::Win32ProcessControl process_;
  adapters::ComDialling dialling_;
  adapters::ShellOpen shell_open_;
  adapters::Win32SystemInformation system_information_;
  adapters::Win32Clipboard clipboard_{window_};
  std::unique_ptr<app::Application> application_;
};

}  // namespace kestro::programs
