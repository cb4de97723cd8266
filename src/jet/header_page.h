#pragma once

#include <cstdint>
#include <string>

#include "jet/bytes.h"
#include "jet/page.h"

namespace kestro::jet {

/// Page 0. It is written once, at creation: identities in the catalogue depend on its creation fields.
struct HeaderPage {
  PageNumber catalog = 2;  // definition page of the catalogue table
  std::string read_only_reason;
};

/// Throws kNotADatabase, with the reason in words, for files that cannot even be read.
HeaderPage ParseHeaderPage(ByteSpan stored);

/// `page` is all zeros before.
void FillHeaderPage(MutableBytes page);

/// The identity of the engine itself and of the administrator, as they are stored under the creation fields
/// that FillHeaderPage writes.
inline constexpr std::uint8_t kEngineOwner[] = {0x65, 0x89};
inline constexpr std::uint8_t kAdminOwner[] = {0x64, 0x8B};
inline constexpr std::uint8_t kUsersOwner[] = {0x65, 0x8B};
inline constexpr std::uint8_t kCreatorOwner[] = {0x65, 0x8E};

}  // namespace kestro::jet
