#pragma once

#include <cstddef>
#include <optional>

#include "jet/bytes.h"
#include "jet/page.h"
#include "jet/page_ref.h"

namespace kestro::jet {

class Pager;

/// Sets of pages as bits, the first page in the lowest bit of the first byte: part of a row, or a page of
/// their own when there are many.
inline constexpr std::size_t kPageBitsAt = 4;  // on a page full of bits
inline constexpr PageNumber kBitsPerPage = (kPageSize - kPageBitsAt) * 8;

/// The first set bit at or behind `from`.
std::optional<PageNumber> FindPageBit(ByteSpan bits, PageNumber from);

/// Throws kDamaged for a bit outside.
void SetPageBit(MutableBytes bits, PageNumber bit, bool value);

/// Reads a page full of bits; kDamaged when it is something else.
PageRef ReadBitsPage(Pager& pager, PageNumber page);

}  // namespace kestro::jet
