#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace kestro::adapters {

/// Which file a path leads to at the moment, and who may write to it.
struct DatabaseFileIdentity {
  std::uint64_t device = 0;
  std::uint64_t file = 0;
  std::uint32_t mode = 0;  // kind and permissions

  friend bool operator==(const DatabaseFileIdentity&, const DatabaseFileIdentity&) = default;
};

/// Nothing when the path leads to no file. One system call. Where the system forbids to replace an open
/// file, device and file may stay 0.
[[nodiscard]] std::optional<DatabaseFileIdentity> IdentityOf(const std::filesystem::path& path);

}  // namespace kestro::adapters
