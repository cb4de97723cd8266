#pragma once

#include "ports/shell_information.h"

namespace kestro::adapters {

/// Answers the version queries by what the desktop can do: a desktop that shows
/// notifications is like a system with balloons (5.1, NT family), one that does
/// not is like one without (4.0, NT family). The shell library is version 6: the
/// largest notification record is used.
class PosixShellInformation final : public ports::ShellInformation {
 public:
  explicit PosixShellInformation(bool shows_notifications) : shows_notifications_(shows_notifications) {}

  [[nodiscard]] std::int32_t FileVersionInfoSize(std::string_view file) override;
  bool FileVersionInfo(std::string_view file, std::span<std::uint8_t> information) override;
  [[nodiscard]] std::optional<std::uint32_t> QueryRootBlock(
      std::span<const std::uint8_t> information) override;
  [[nodiscard]] std::uint32_t GetVersionWord() override;

 private:
  bool shows_notifications_;
};

}  // namespace kestro::adapters
