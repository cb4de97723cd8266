#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "jet/page.h"
#include "jet/page_ref.h"
#include "jet/pager.h"

namespace kestro::jet {

/// Which pages of the file are free: the bits of the global map, one a page, set = free. A row of page 1
/// holds them; when they outgrow that page, they move to pages of their own and the row names these.
class PageSpace {
 public:
  explicit PageSpace(Pager& pager) : pager_(pager) {}

  /// The lowest free page, or a new one at the end of the file; all zeros. kFull at 2 GiB.
  [[nodiscard]] PageEdit Allocate();

  /// Its content stays until the page is used again.
  void Free(PageNumber page);

  [[nodiscard]] bool IsFree(PageNumber page) const;

  /// The pages that hold the bits, apart from page 1.
  [[nodiscard]] std::vector<PageNumber> OwnPages() const;

  /// Empty when this kind of global map can be changed.
  [[nodiscard]] const char* ReadOnlyReason() const;

  /// Writes page 1 of a new database (already appended): `used` pages are taken, the rest is free.
  static void FormatGlobalMap(MutableBytes page, std::size_t used);

  /// The free-page search starts anew: after a rollback.
  void Forget() { lowest_ = 0; }

 private:
  struct Map;
  struct Stretch;

  [[nodiscard]] Map ReadMap() const;
  [[nodiscard]] std::optional<Stretch> StretchFrom(PageNumber page) const;
  [[nodiscard]] bool Covers(PageNumber page) const;
  [[nodiscard]] PageNumber FindFree() const;
  void Extend();
  bool Lengthen();
  void MakeReferenced();
  void AddBitsPage(std::size_t position);
  void SetBit(PageNumber page, bool free);

  Pager& pager_;
  PageNumber lowest_ = 0;  // no page below is free
};

}  // namespace kestro::jet
