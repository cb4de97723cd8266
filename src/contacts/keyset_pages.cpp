#include "contacts/keyset_pages.h"

#include <algorithm>
#include <utility>

namespace kestro::contacts {

const KeysetPages::Row& KeysetPages::At(std::size_t row, const Reader& read) {
  Kept& kept = Find(row / kPageRows, read);
  kept.last_use = ++uses_;
  return kept.page.at(row % kPageRows);
}

KeysetPages::Kept& KeysetPages::Find(std::size_t number, const Reader& read) {
  const auto found = std::ranges::find(kept_, number, &Kept::number);
  if (found != kept_.end()) return *found;
  Kept fresh{number, 0, read(number * kPageRows)};
  if (kept_.size() < kPages) return kept_.emplace_back(std::move(fresh));
  return *std::ranges::min_element(kept_, {}, &Kept::last_use) = std::move(fresh);
}

}  // namespace kestro::contacts
