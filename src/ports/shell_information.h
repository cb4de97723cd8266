#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace kestro::ports {

/// Version queries of the shell library and the operating system.
class ShellInformation {
 public:
  virtual ~ShellInformation() = default;
  /// Size in bytes of the file's version information; 0 or less: there is none.
  [[nodiscard]] virtual std::int32_t FileVersionInfoSize(std::string_view file) = 0;
  /// Fills the buffer of that size.
  virtual bool FileVersionInfo(std::string_view file, std::span<std::uint8_t> information) = 0;
  /// Most significant double word of the file version in the root block; nothing
  /// when the query fails.
  [[nodiscard]] virtual std::optional<std::uint32_t> QueryRootBlock(
      std::span<const std::uint8_t> information) = 0;
  /// The version double word: major in bits 0-7, minor in 8-15, bit 31 clear on the NT family.
  [[nodiscard]] virtual std::uint32_t GetVersionWord() = 0;
};

}  // namespace kestro::ports
