#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kestro::contacts {

/// The rows of a long list that were looked at last, read and kept page by page. Holds a bounded number of
/// rows, however long the list is.
class KeysetPages {
 public:
  static constexpr std::size_t kPageRows = 64;  // more than a screen shows: the first one takes one reading
  static constexpr std::size_t kPages = 64;

  struct Row {
    std::vector<std::string> texts;  // one a field
    bool exists = true;              // not deleted since the list was made
  };
  using Page = std::vector<Row>;
  /// Reads the rows from `first` on: kPageRows of them, or those up to the list's end.
  using Reader = std::function<Page(std::size_t first)>;

  /// The row, from its kept page or through `read`; valid until the next call. When `read` raises, what
  /// was kept stays.
  const Row& At(std::size_t row, const Reader& read);
  /// Forgets all rows.
  void Clear() { kept_.clear(); }

 private:
  struct Kept {
    std::size_t number;  // counted from 0
    std::uint64_t last_use;
    Page page;
  };

  Kept& Find(std::size_t number, const Reader& read);

  std::vector<Kept> kept_;
  std::uint64_t uses_ = 0;
};

}  // namespace kestro::contacts
