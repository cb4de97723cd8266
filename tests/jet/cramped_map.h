#pragma once

#include <algorithm>
#include <vector>

#include "jet/data_page.h"
#include "jet/database.h"

namespace kestro::test {

/// Leaves the map of free pages no room on its page, as otherwise in a file of 125 MB: the next page that is
/// appended (after at most 31 others) makes it a map of the other kind.
inline void CrampMapOfFreePages(jet::Database& database) {
  jet::Transaction transaction(database);
  {
    jet::Pager& pager = database.storage().pager;
    const jet::PageEdit page = pager.Edit(1);
    jet::DataPageEdit data(page.edit());
    const jet::ByteSpan old = data.view().row(0);
    const std::size_t size = 5 + (pager.page_count() + 31) / 32 * 4;
    const std::vector<std::uint8_t> row(old.begin(), old.begin() + static_cast<std::ptrdiff_t>(size));
    jet::Copy(data.Resize(0, size), 0, row);
    const jet::MutableBytes other = data.Resize(1, data.view().row(1).size() + data.view().ComputeFree());
    std::fill(other.begin(), other.end(), std::uint8_t{0});
  }
  transaction.Commit();
}

}  // namespace kestro::test
