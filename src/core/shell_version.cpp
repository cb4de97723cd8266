#include "core/shell_version.h"

#include <vector>

namespace kestro::core::Functions {
namespace {

constexpr std::string_view kShellLibrary = "shell32.dll";
constexpr std::int32_t kSizeForShell6 = 504;
constexpr std::int32_t kSizeForShell5 = 488;
constexpr std::int32_t kSizeForOlderShells = 88;

int ByteOf(std::uint32_t word, unsigned shift) { return static_cast<int>((word >> shift) & 0xFFU); }

}  // namespace

bool ShellVersion::IsShell32VersionAtLeast(std::int16_t major) {
  const auto failed = [](const base::RuntimeError&) { return false; };
  return procedure_.Outermost(
      "IsShell32VersionAtLeast",
      [&] {
        const std::int32_t size = shell_.FileVersionInfoSize(kShellLibrary);
        if (size <= 0) return false;
        std::vector<std::uint8_t> information(static_cast<std::size_t>(size));
        if (!shell_.FileVersionInfo(kShellLibrary, information)) return false;
        const auto version = shell_.QueryRootBlock(information);
        return version && static_cast<std::int16_t>(*version >> 16U) >= major;
      },
      failed);
}

std::int32_t ShellVersion::NFStructureSize(bool /*balloon_support*/) {
  return procedure_.Outermost(
      "NFStructureSize",
      [&] {
        if (IsShell32VersionAtLeast(6)) return kSizeForShell6;
        return IsShell32VersionAtLeast(5) ? kSizeForShell5 : kSizeForOlderShells;
      },
      [](const base::RuntimeError&) { return kSizeForOlderShells; });
}

void ShellVersion::GetWindowsVersion(WindowsVersion& version) {
  procedure_.Outermost("GetWindowsVersion", [&] {
    const std::uint32_t word = shell_.GetVersionWord();
    version = {ByteOf(word, 0), ByteOf(word, 8), ByteOf(word, 16), ByteOf(word, 24), (word >> 31U) == 0};
  });
}

bool ShellVersion::DoSupportTrayBaloon() {
  return procedure_.Outermost(
      "DoSupportTrayBaloon",
      [&] {
        WindowsVersion version;
        GetWindowsVersion(version);
        if (version.is_nt) return version.major >= 5;
        return version.major == 4 && version.minor == 90;
      },
      [](const base::RuntimeError&) { return false; });
}

}  // namespace kestro::core::Functions
