#include "core/application_ending.h"

namespace kestro::core::Functions {
namespace {

constexpr std::string_view kEnding = "IsApplicationShutdown";

}  // namespace

ApplicationEnding::ApplicationEnding(LogModule& log, Messages& messages, LineMonitor& line,
                                     forms::FormHost& windows, ports::ProcessControl& process,
                                     ApplicationFlags& flags)
    : procedure_(log, "KESTROCTI.Functions", Spelling::kFullStop),
      messages_(messages),
      line_(line),
      windows_(windows),
      process_(process),
      flags_(flags) {}

void ApplicationEnding::OnApplicationEnd() {
  procedure_("OnApplicationEnd", [&] { line_.ShutDownLine(); });
}

bool ApplicationEnding::IsApplicationShutdown(int unload_mode) {
  return procedure_(kEnding, [&] {
    return unload_mode == forms::kFromCode || unload_mode == forms::kSessionEnding ||
           unload_mode == forms::kTaskManager;
  });
}

void ApplicationEnding::IsApplicationShutdown() {
  procedure_.Outermost(kEnding, [&] {
    if (flags_.ShuttingDown) return;
    flags_.ShuttingDown = true;
    CloseLine();
    windows_.DoEvents();
    UnloadForms();
    procedure_.Log(kEnding, "THE END");
    process_.EndProcess();
  });
}

void ApplicationEnding::CloseLine() {
  try {
    OnApplicationEnd();
  } catch (const base::RuntimeError&) {
    // Logged on its way; a line that cannot be closed must not keep the application alive.
  }
}

void ApplicationEnding::UnloadForms() {
  for (forms::Form* form : forms_) {
    form->RequestUnload(forms::kFromCode);
    windows_.DoEvents();
  }
}

void ApplicationEnding::ShutDownApplication(const base::RuntimeError& /*error*/) {
  procedure_.Outermost("ShutDownApplication", [&] {
    if (flags_.ShuttingDown) return;
    messages_.Show(ports::kCritical, "106");
    IsApplicationShutdown();
  });
}

}  // namespace kestro::core::Functions
