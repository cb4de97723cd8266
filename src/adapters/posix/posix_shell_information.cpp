#include "adapters/posix/posix_shell_information.h"

#include "base/text.h"
#include "ports/byte_buffer.h"

namespace kestro::adapters {
namespace {

constexpr std::uint32_t kVersion51 = 0x0105;
constexpr std::uint32_t kVersion40 = 0x0004;

// The version block of this adapter, made and read here only: a signature and the
// most significant double word of the file version.
constexpr std::size_t kSignature = 0;
constexpr std::size_t kFileVersion = 4;
constexpr std::size_t kBlockBytes = 8;
constexpr std::uint32_t kSignatureValue = 0xFEEF04BD;
constexpr std::uint32_t kShellVersion6 = 6U << 16U;

bool IsShellLibrary(std::string_view file) { return base::EqualIgnoringCase(file, "shell32.dll"); }

}  // namespace

std::int32_t PosixShellInformation::FileVersionInfoSize(std::string_view file) {
  return IsShellLibrary(file) ? static_cast<std::int32_t>(kBlockBytes) : 0;
}

bool PosixShellInformation::FileVersionInfo(std::string_view file, std::span<std::uint8_t> information) {
  if (!IsShellLibrary(file) || information.size() < kBlockBytes) return false;
  ports::WriteDword(information, kSignature, kSignatureValue);
  ports::WriteDword(information, kFileVersion, kShellVersion6);
  return true;
}

std::optional<std::uint32_t> PosixShellInformation::QueryRootBlock(
    std::span<const std::uint8_t> information) {
  if (information.size() < kBlockBytes) return std::nullopt;
  if (ports::ReadDword(information, kSignature) != kSignatureValue) return std::nullopt;
  return ports::ReadDword(information, kFileVersion);
}

std::uint32_t PosixShellInformation::GetVersionWord() {
  return shows_notifications_ ? kVersion51 : kVersion40;
}

}  // namespace kestro::adapters
