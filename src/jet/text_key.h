#pragma once

#include <string_view>

#include "jet/index_key.h"

namespace kestro::jet {

/// Appends the value part of a text key in the "General" order: upper and lower case are equal, accents count
/// after the letters. False when the text has a character whose weight is not known (outside Latin-1,
/// mostly), or the key becomes too long; then `key` is useless.
bool AppendTextKey(std::string_view text, IndexKey& key);

}  // namespace kestro::jet
