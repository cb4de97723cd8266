#pragma once

#include <optional>
#include <span>
#include <string>

#include "contacts/contact.h"

namespace kestro::import {

/// What a column of an import file is.
struct ImportColumn {
  enum class Kind { kText, kPhone, kPhoneType, kPicture };

  Kind kind = Kind::kText;
  std::string& (*text)(contacts::Contact&) = nullptr;  // property of a text
  std::optional<int> width = {};                       // of a text, in characters; nothing = uncut
  std::size_t number = 0;                              // which telephone or telephone type, from 0
};

/// The columns in their order.
[[nodiscard]] std::span<const ImportColumn> ImportColumns();

/// Most fields that a line may have: one behind the last column is left out.
inline constexpr int kMostFields = 23;

}  // namespace kestro::import
