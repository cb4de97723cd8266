#include "core/database_location.h"
#include "fuzz/property.h"

// CTI.exe.config: the folder is cut out of whatever stands there.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = kestro::fuzz::TextOf(data, size);
  const std::string folder = kestro::core::Functions::ConfiguredFolderIn(text);
  kestro::fuzz::Require(folder.find('"') == std::string::npos, "a quote in the folder");
  kestro::fuzz::Require(text.find(folder) != std::string_view::npos,
                        "the folder does not come from the text");
  return 0;
}
