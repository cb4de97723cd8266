#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "scenario/machine.h"

namespace kestro::programs {

/// Native path of one of the application's paths.
using PathTranslator = std::function<std::string(std::string_view system_path)>;

/// Makes front ends of one kind, each for one scenario. Lives as long as the program.
class FrontEndFactory {
 public:
  virtual ~FrontEndFactory() = default;
  [[nodiscard]] virtual std::unique_ptr<scenario::FrontEnd> Make(PathTranslator native_path) = 0;
};

[[nodiscard]] std::unique_ptr<FrontEndFactory> HeadlessFrontEnds();
#ifdef KESTRO_WITH_QT
/// Uses the offscreen platform unless the environment names another one.
[[nodiscard]] std::unique_ptr<FrontEndFactory> QtFrontEnds();
#endif

/// nullptr for a name that this program was not built with.
[[nodiscard]] std::unique_ptr<FrontEndFactory> FrontEndsNamed(std::string_view name);
/// The names, separated by "|".
[[nodiscard]] std::string_view FrontEndNames();

}  // namespace kestro::programs
