#pragma once

#include <cstdint>
#include <string_view>

namespace kestro::contacts {

/// What the columns SearchHash1 to SearchHash4 of the contact table hold of the search forms beside them: the
/// file indexes whole numbers only. The 32-bit FNV-1a hash of the UTF-8 bytes as a signed number, 1 where
/// that is 0; 0 for an empty text, which is stored as null. Files depend on it: it never changes.
[[nodiscard]] std::int32_t SearchHash(std::string_view search_phone);

}  // namespace kestro::contacts
