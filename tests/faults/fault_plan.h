#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "base/runtime_error.h"

namespace kestro::faults {

/// A port that can be told to fail.
enum class Port {
  kLineFunctions,
  kSettings,
  kFiles,
  kNotificationArea,
  kMessageBoxes,
  kFileDialogs,
  kDialling,
  kDatabase,
  kClipboard,
  kShellExecute,
  kForeground,
  kLog,
};

struct PortEntry {
  Port port;
  std::string_view name;
  std::int32_t error;           // number of the run-time error that its failure is
  bool has_many_steps = false;  // the stride of the run counts
};

/// All of them, in the order of Port.
inline constexpr std::array kPorts = {
    PortEntry{Port::kLineFunctions, "line functions", base::kInternalError},
    PortEntry{Port::kSettings, "settings", base::kPathAccessError},
    PortEntry{Port::kFiles, "files", base::kPathAccessError},
    PortEntry{Port::kNotificationArea, "notification area", base::kInvalidPicture, true},
    PortEntry{Port::kMessageBoxes, "message boxes", base::kOutOfMemory},
    PortEntry{Port::kFileDialogs, "file dialogs", base::kDialogCancelled},
    PortEntry{Port::kDialling, "dialling", base::kAutomationError},
    PortEntry{Port::kDatabase, "database", base::kDatabaseError, true},
    PortEntry{Port::kClipboard, "clipboard", base::kOutOfMemory},
    PortEntry{Port::kShellExecute, "shell execute", base::kFileNotFound},
    PortEntry{Port::kForeground, "foreground", base::kInvalidProcedureCall},
    PortEntry{Port::kLog, "log", base::kPathAccessError, true},
};

/// What is raised where a failure is raised: the port's own error, or the system's for want of memory.
enum class Raised { kError, kBadAlloc };

/// Counts the calls of one port and lets the n-th one fail.
class FaultPlan {
 public:
  /// `step` counts from 1; 0 = nothing fails.
  FaultPlan(Port port, std::int64_t step, Raised raised) : port_(port), step_(step), raised_(raised) {}

  /// A call of that port: whether it is the one that fails.
  [[nodiscard]] bool Fails(Port port) { return port == port_ && ++calls_ == step_; }
  /// The same, where a failure is raised.
  void Pass(Port port) {
    if (!Fails(port)) return;
    if (raised_ == Raised::kBadAlloc) throw std::bad_alloc();
    const PortEntry& entry = kPorts.at(static_cast<std::size_t>(port));
    throw base::RuntimeError(entry.error, "Injected: " + std::string(entry.name));
  }

  [[nodiscard]] bool fired() const { return step_ > 0 && calls_ >= step_; }
  [[nodiscard]] Port port() const { return port_; }

 private:
  Port port_;
  std::int64_t step_;
  Raised raised_;
  std::int64_t calls_ = 0;
};

/// Stands in front of another port and fails where the plan says so, the way that port's failures look: with
/// an error (Pass), or with a result (Fails). A call that fails does nothing else.
template <class Interface, Port kPort>
class Failing : public Interface {
 public:
  Failing(Interface& inner, FaultPlan& plan) : inner_(inner), plan_(plan) {}

 protected:
  [[nodiscard]] bool Fails() const { return plan_.Fails(kPort); }
  /// The port behind, unless it is its turn to fail.
  [[nodiscard]] Interface& Pass() const {
    plan_.Pass(kPort);
    return inner_;
  }

  Interface& inner_;
  FaultPlan& plan_;
};

/// The same in front of something that a port has made, which it owns.
template <class Interface, Port kPort>
class FailingOwner : public Failing<Interface, kPort> {
 public:
  FailingOwner(std::unique_ptr<Interface> inner, FaultPlan& plan)
      : Failing<Interface, kPort>(*inner, plan), owned_(std::move(inner)) {}

 private:
  std::unique_ptr<Interface> owned_;
};

}  // namespace kestro::faults
