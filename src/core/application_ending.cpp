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
    // Whatever cannot be closed any more must not keep the application alive. Errors
    // have been logged on their way.
    base::IgnoringErrors([&] { OnApplicationEnd(); });
    base::IgnoringErrors([&] { windows_.DoEvents(); });
    for (forms::Form* form : forms_) {
      base::IgnoringErrors([&] { form->RequestUnload(forms::kFromCode); });
      base::IgnoringErrors([&] { windows_.DoEvents(); });
    }
    base::IgnoringErrors([&] { procedure_.Log(kEnding, "THE END"); });
    process_.EndProcess();
  });
}

void ApplicationEnding::ShutDownApplication(const base::RuntimeError& /*error*/) {
  procedure_.Outermost("ShutDownApplication", [&] {
    if (flags_.ShuttingDown) return;
    messages_.Show(ports::kCritical, "106");
    IsApplicationShutdown();
  });
}

}  // namespace kestro::core::Functions
