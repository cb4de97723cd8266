#pragma once

#include "ports/shell_execute.h"

namespace kestro::adapters {

/// ShellExecute with the verb "open". An address of another kind than http,
/// https and mailto is refused, and so are programs and scripts: what a contact's
/// fields hold came from outside.
class ShellOpen final : public ports::ShellExecute {
 public:
  bool Open(std::string_view target) override;
};

}  // namespace kestro::adapters
