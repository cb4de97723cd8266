#include "core/database_location.h"
#include "fuzz/property.h"

// CTI.exe.config: the folder is cut out of whatever stands there.

void kestro::fuzz::Check(std::string_view text) {
  const std::string folder = core::Functions::ConfiguredFolderIn(text);
  Require(folder.find('"') == std::string::npos, "a quote in the folder");
  Require(text.find(folder) != std::string_view::npos, "the folder does not come from the text");
}
