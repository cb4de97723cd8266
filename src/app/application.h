#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "app/ports.h"
#include "core/application_flags.h"
#include "forms/form.h"
#include "telephony/current_call.h"

namespace kestro::app {

/// The whole application: owns every module and every window and wires them to
/// each other. Knows ports only. One instance a process; user-interface thread.
class Application {
 public:
  /// The ports must outlive the application.
  explicit Application(const Ports& ports);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  /// The program's start-up, to the point where it waits for events; then the
  /// question about a link that came meanwhile.
  /// base::ProcessEnded comes through when the start ends the process.
  void Start();
  /// A second start of the program asks this one to come to the front.
  void Activate();
  /// A link that asks for a call was opened: its number (see core/dial_link.h), or
  /// nothing when it holds none. The user is asked first; before the start has come
  /// to its end the last link waits for that.
  void DialLink(std::string_view number);
  /// Ends the application in order (session end, SIGTERM): line closed, windows
  /// unloaded, icon removed. Ends in base::ProcessEnded.
  void End();

  // --- for the scenario player and for support ---
  /// Every window, in the order in which the system names them.
  [[nodiscard]] const std::vector<forms::Form*>& Forms() const;
  /// Nothing for an unknown name.
  [[nodiscard]] forms::Form* FindForm(std::string_view name) const;
  [[nodiscard]] const core::ApplicationFlags& Flags() const;
  [[nodiscard]] const telephony::CurrentCall& Call() const;
  [[nodiscard]] std::int32_t CurrentLineId() const;
  [[nodiscard]] bool LineIdSet() const;
  [[nodiscard]] const ports::NotificationRecord& TrayIconData() const;
  /// The tray menu (of SystemTrayForm).
  [[nodiscard]] const forms::MenuItem& TrayMenu() const;
  /// Path of the contacts database in use.
  [[nodiscard]] std::string DatabasePath() const;

 private:
  struct Modules;
  std::unique_ptr<Modules> modules_;
};

}  // namespace kestro::app
