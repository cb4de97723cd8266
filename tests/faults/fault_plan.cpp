#include "faults/fault_plan.h"

#include <array>
#include <new>
#include <string>

#include "base/runtime_error.h"

namespace kestro::faults {
namespace {

struct Entry {
  std::string_view name;
  std::int32_t error;  // number of the run-time error that its failure is
};

/// In the order of Port.
constexpr std::array kEntries = {
    Entry{"line functions", base::kInternalError},    Entry{"settings", base::kPathAccessError},
    Entry{"files", base::kPathAccessError},           Entry{"notification area", base::kInvalidPicture},
    Entry{"message boxes", base::kOutOfMemory},       Entry{"file dialogs", base::kDialogCancelled},
    Entry{"dialling", base::kAutomationError},        Entry{"database", base::kDatabaseError},
    Entry{"clipboard", base::kOutOfMemory},           Entry{"shell execute", base::kFileNotFound},
    Entry{"foreground", base::kInvalidProcedureCall}, Entry{"log", base::kPathAccessError},
};

const Entry& EntryOf(Port port) { return kEntries.at(static_cast<std::size_t>(port)); }

}  // namespace

std::string_view NameOf(Port port) { return EntryOf(port).name; }

void FaultPlan::Pass(Port port) {
  if (!Fails(port)) return;
  if (raised_ == Raised::kBadAlloc) throw std::bad_alloc();
  throw base::RuntimeError(EntryOf(port).error, "Injected: " + std::string(NameOf(port)));
}

}  // namespace kestro::faults
