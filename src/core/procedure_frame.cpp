#include "core/procedure_frame.h"

#include <string>

namespace kestro::core {

void ProcedureFrame::Enter(Spelling spelling, std::string_view name) const {
  log_.LogMessage({module_, name}, spelling == Spelling::kFullStop ? "Method started." : "Method started");
}

void ProcedureFrame::Leave(Spelling spelling, std::string_view name) const {
  log_.LogMessage({module_, name}, spelling == Spelling::kFullStop ? "Method finished." : "Method finished");
}

void ProcedureFrame::Failed(std::string_view name, base::RuntimeError& error) const {
  error.ExtendSource(base::LogSource{module_, name}.Text());
  const std::string text = "Error occurred: Number =" + std::to_string(error.number()) +
                           "  Source=" + error.source() + "  Description=" + error.description();
  log_.TraceMessage(error.source(), text);
  log_.LogError(error.number(), error.source(), error.description());
}

}  // namespace kestro::core
