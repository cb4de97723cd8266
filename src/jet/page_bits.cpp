#include "jet/page_bits.h"

#include <bit>

#include "jet/error.h"
#include "jet/pager.h"

namespace kestro::jet {

std::optional<PageNumber> FindPageBit(ByteSpan bits, PageNumber from) {
  const auto end = static_cast<PageNumber>(bits.size() * 8);
  while (from < end) {
    const auto rest = static_cast<std::uint8_t>(bits[from / 8] >> (from % 8));
    if (rest != 0) return from + static_cast<PageNumber>(std::countr_zero(rest));
    from += 8 - from % 8;
    while (from + 64 <= end && Load64(bits, from / 8) == 0) from += 64;
  }
  return std::nullopt;
}

void SetPageBit(MutableBytes bits, PageNumber bit, bool value) {
  const std::uint8_t old = Load8(bits, bit / 8);
  const auto mask = static_cast<std::uint8_t>(1U << (bit % 8));
  Store8(bits, bit / 8, static_cast<std::uint8_t>(value ? old | mask : old & ~mask));
}

PageRef ReadBitsPage(Pager& pager, PageNumber page) {
  PageRef bits = pager.Read(page);
  if (!bits.Is(PageType::kUsageMap)) throw Error(ErrorKind::kDamaged, "A usage map has an unknown form");
  return bits;
}

}  // namespace kestro::jet
