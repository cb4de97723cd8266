#pragma once

#include <string>

#include "ports/system_information.h"

namespace kestro::adapters {

/// The system's own information tool, where its registry names one, and what the program can read itself.
class Win32SystemInformation final : public ports::SystemInformationTool {
 public:
  /// Name and version that only another adapter knows.
  explicit Win32SystemInformation(std::string database_engine)
      : database_engine_(std::move(database_engine)) {}

  bool StartTool() override;
  [[nodiscard]] ports::SystemInformation Read() override;

 private:
  std::string database_engine_;
};

}  // namespace kestro::adapters
