#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "forms/front_end_driver.h"
#include "ports/ansi_code_page.h"
#include "ports/clipboard.h"
#include "ports/database.h"
#include "ports/file_system.h"
#include "ports/foreground_windows.h"
#include "ports/message_boxes.h"

namespace kestro::scenario {

/// The front end that a scenario is played on; a fresh one for every scenario.
class FrontEnd {
 public:
  virtual ~FrontEnd() = default;
  [[nodiscard]] virtual forms::FormHost& Host() = 0;
  [[nodiscard]] virtual forms::FrontEndDriver& Driver() = 0;
  [[nodiscard]] virtual ports::ForegroundWindows& Foreground() = 0;
  [[nodiscard]] virtual ports::Clipboard& Clipboard() = 0;
  /// Runs the task from the event loop, also from that of a modal window.
  /// base::ProcessEnded coming out of it ends the loop and comes out there.
  virtual void Post(std::function<void()> task) = 0;
  /// Shows a message box, answers it as planned and returns what it answered.
  virtual ports::BoxAnswer ShowBox(std::string_view text, int style, ports::BoxAnswer planned) = 0;
};

/// The files and the database that a scenario is played on: a fresh temporary
/// folder that the application sees as kProgramFolder (with the database
/// template and the icons in it) and kUserDataFolder. Paths are system paths.
/// Failures are raised as base::RuntimeError.
class Machine {
 public:
  static constexpr std::string_view kProgramFolder = "C:\\Program";
  static constexpr std::string_view kUserDataFolder = "C:\\Data";

  virtual ~Machine() = default;
  [[nodiscard]] virtual ports::FileSystem& Files() = 0;
  [[nodiscard]] virtual ports::Database& Database() = 0;
  [[nodiscard]] virtual ports::AnsiCodePage& CodePage() = 0;
  /// Makes the folders on the way when they are missing.
  virtual void WriteFile(std::string_view path, std::string_view bytes) = 0;
  /// A missing file is none to remove.
  virtual void RemoveFile(std::string_view path) = 0;
  virtual void SetReadOnly(std::string_view path) = 0;
};

}  // namespace kestro::scenario
