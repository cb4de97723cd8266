#pragma once

#include "forms/form_host.h"
#include "ports/ansi_code_page.h"
#include "ports/clipboard.h"
#include "ports/clock.h"
#include "ports/database.h"
#include "ports/dialling_object.h"
#include "ports/file_system.h"
#include "ports/foreground_windows.h"
#include "ports/instance_guard.h"
#include "ports/line_functions.h"
#include "ports/logging_component.h"
#include "ports/message_boxes.h"
#include "ports/notification_area.h"
#include "ports/process_control.h"
#include "ports/settings_store.h"
#include "ports/shell_execute.h"
#include "ports/shell_information.h"
#include "ports/system_information.h"

namespace kestro::app {

/// Everything that the application asks of the outside world.
struct Ports {
  ports::LineFunctions& line;
  ports::AnsiCodePage& code_page;
  ports::SettingsStore& settings;
  ports::FileSystem& files;
  ports::NotificationArea& notification_area;
  ports::ShellInformation& shell;
  ports::ForegroundWindows& foreground;
  ports::MessageBoxes& boxes;
  ports::FileDialogs& file_dialogs;
  ports::Database& database;
  ports::LoggingComponent& log;
  ports::ProcessControl& process;
  ports::InstanceGuard& instances;
  forms::FormHost& windows;
  ports::DiallingObjects& dialling;
  ports::ShellExecute& shell_execute;
  ports::SystemInformationTool& system_information;
  ports::Clipboard& clipboard;
  const ports::Clock& clock;
};

}  // namespace kestro::app
