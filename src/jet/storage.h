#pragma once

#include <memory>
#include <string>

#include "jet/page.h"
#include "jet/page_space.h"
#include "jet/pager.h"

namespace kestro::jet {

/// What all parts of an open database share.
struct Storage {
  explicit Storage(std::unique_ptr<Pager> own)
      : pager_owner(std::move(own)), pager(*pager_owner), space(pager) {}

  std::unique_ptr<Pager> pager_owner;
  Pager& pager;
  PageSpace space;
  std::string read_only_reason;
};

/// Where the last row of a table went: the next one probably fits there as well. Verified at every use.
struct PageHints {
  PageNumber rows = 0;
  PageNumber long_values = 0;
};

}  // namespace kestro::jet
