#pragma once

#include "ports/shell_information.h"

namespace kestro::scenario {

/// Version queries answered as a script says; Windows XP unless told otherwise.
class ScriptedShellInformation final : public ports::ShellInformation {
 public:
  /// `nt`: the NT family.
  void SetWindows(std::uint8_t major, std::uint8_t minor, bool nt) {
    version_word_ = major | static_cast<std::uint32_t>(minor) << 8U | (nt ? 0U : 0x80000000U);
  }
  /// 0 = the shell library has no version information.
  void SetShellMajor(std::uint16_t major) { shell_major_ = major; }

  [[nodiscard]] std::int32_t FileVersionInfoSize(std::string_view /*file*/) override {
    return shell_major_ == 0 ? 0 : kInformationSize;
  }
  bool FileVersionInfo(std::string_view /*file*/, std::span<std::uint8_t> information) override {
    if (shell_major_ == 0 || information.size() < kInformationSize) return false;
    information[0] = static_cast<std::uint8_t>(shell_major_ & 0xFFU);
    information[1] = static_cast<std::uint8_t>(shell_major_ >> 8U);
    return true;
  }
  [[nodiscard]] std::optional<std::uint32_t> QueryRootBlock(
      std::span<const std::uint8_t> information) override {
    if (information.size() < kInformationSize) return std::nullopt;
    const std::uint32_t major = information[0] | static_cast<std::uint32_t>(information[1]) << 8U;
    return major << 16U;
  }
  [[nodiscard]] std::uint32_t GetVersionWord() override { return version_word_; }

 private:
  static constexpr int kInformationSize = 2;  // the major version, low byte first

  std::uint32_t version_word_ = 0x0105;  // 5.1
  std::uint16_t shell_major_ = 6;
};

}  // namespace kestro::scenario
