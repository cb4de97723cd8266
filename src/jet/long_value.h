#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "jet/bytes.h"
#include "jet/storage.h"
#include "jet/table_definition.h"
#include "jet/value.h"

namespace kestro::jet {

/// Memo and OLE values. The row holds 12 bytes: length with the kind in its top bits, a data pointer, unused.
/// Short values follow right behind, longer ones are a row of a page for long values, the longest a chain of
/// rows, each starting with the pointer to the next.
inline constexpr std::size_t kLongHeaderSize = 12;
inline constexpr std::size_t kLongestInline = 64;
inline constexpr std::size_t kLongestSingle = 4076;
inline constexpr std::size_t kLongestLongValue = std::size_t{64} << 20;

enum class LongKind : std::uint8_t { kChain = 0, kSingle = 1, kInline = 2 };

struct LongHeader {
  std::size_t length = 0;
  LongKind kind = LongKind::kInline;
  DataPointer where;
};

/// Throws kDamaged when the bytes are no such value.
LongHeader ParseLongHeader(ByteSpan stored);

/// The data, when it is in the row itself.
std::optional<ByteSpan> InlineLongValue(ByteSpan stored);

/// Replaces `data` by the value; memory and time are bounded by the size of the file.
void ReadLongValue(Pager& pager, ByteSpan stored, Blob& data);

/// The rows that make up the value outside of the row, in order.
std::vector<DataPointer> LongValueRows(Pager& pager, ByteSpan stored);

/// Stores values too long for the row, and removes them.
class LongValueStore {
 public:
  LongValueStore(Storage& storage, const LongColumnMaps& maps, PageHints& hints)
      : storage_(storage), maps_(maps), hints_(hints) {}

  /// Fills the 12 bytes of the row.
  void Write(ByteSpan data, MutableBytes header);

  /// Gives the space back, and pages without any other value.
  void Remove(ByteSpan stored);

 private:
  DataPointer AddRow(ByteSpan row);
  [[nodiscard]] bool Fits(PageNumber page, std::size_t size) const;
  DataPointer AddToPage(PageNumber page, ByteSpan row);
  [[nodiscard]] std::optional<PageNumber> FindPage(std::size_t size);
  void RemoveRow(DataPointer where);

  Storage& storage_;
  const LongColumnMaps& maps_;
  PageHints& hints_;
};

}  // namespace kestro::jet
