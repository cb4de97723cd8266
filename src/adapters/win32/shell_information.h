#pragma once

#include "ports/shell_information.h"

namespace kestro::adapters {

/// The version functions of the system.
class Win32ShellInformation final : public ports::ShellInformation {
 public:
  [[nodiscard]] std::int32_t FileVersionInfoSize(std::string_view file) override;
  bool FileVersionInfo(std::string_view file, std::span<std::uint8_t> information) override;
  [[nodiscard]] std::optional<std::uint32_t> QueryRootBlock(
      std::span<const std::uint8_t> information) override;
  [[nodiscard]] std::uint32_t GetVersionWord() override;
};

}  // namespace kestro::adapters
