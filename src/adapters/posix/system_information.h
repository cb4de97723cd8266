#pragma once

#include <string>

#include "ports/system_information.h"

namespace kestro::adapters {

/// What a Linux system tells about itself. There is no tool of the system's own to start.
class PosixSystemInformation final : public ports::SystemInformationTool {
 public:
  /// Names and versions that only other adapters know. `release_file` describes the distribution.
  PosixSystemInformation(std::string toolkit, std::string database_engine,
                         std::string release_file = "/etc/os-release")
      : toolkit_(std::move(toolkit)),
        database_engine_(std::move(database_engine)),
        release_file_(std::move(release_file)) {}

  bool StartTool() override { return false; }
  /// The system: distribution, kernel, machine. The desktop: its name and the kind of session.
  [[nodiscard]] ports::SystemInformation Read() override;

 private:
  std::string toolkit_;
  std::string database_engine_;
  std::string release_file_;
};

}  // namespace kestro::adapters
