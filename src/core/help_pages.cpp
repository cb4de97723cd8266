#include "core/help_pages.h"

#include "ports/file_system.h"

namespace kestro::core {

std::string HelpPages::GetStartPagePath() const {
  return procedure_("GetStartPagePath", [&] {
    return ports::BuildPath(shared_.GetCurrentApplicationPath(), "Help\\index.html");
  });
}

void HelpPages::Open() {
  procedure_("Open", [&] {
    const std::string page = GetStartPagePath();
    if (!shell_.Open(page)) throw base::RuntimeError(base::kFileNotFound, "Cannot open " + page);
  });
}

}  // namespace kestro::core
