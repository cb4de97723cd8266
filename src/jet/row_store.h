#pragma once

#include <optional>

#include "jet/data_page.h"
#include "jet/page_ref.h"
#include "jet/row_id.h"
#include "jet/storage.h"
#include "jet/table_definition.h"

namespace kestro::jet {

/// The bytes of a row, wherever they are.
struct StoredRow {
  PageRef page;
  ByteSpan bytes;
  DataPointer target;  // where the bytes are when the row has been moved; otherwise none
};

/// Nothing when there is no live row of this table; kDamaged when it leads nowhere.
std::optional<StoredRow> FindStoredRow(Pager& pager, const TableDefinition& definition, RowId id);

/// Follows a moved slot; kDamaged when it leads nowhere.
StoredRow FollowMoved(Pager& pager, const TableDefinition& definition, ByteSpan slot_bytes);

/// Puts rows onto the data pages of a table and takes them away. Knows nothing of indexes and long values.
class RowStore {
 public:
  RowStore(Storage& storage, const TableDefinition& definition, PageHints& hints)
      : storage_(storage), definition_(definition), hints_(hints) {}

  RowId Add(ByteSpan row) { return AddWithFlags(row, 0); }

  /// The row keeps its id, even when it has to go to another page.
  void Replace(RowId id, ByteSpan row);

  /// Pages without rows go back to the file.
  void Remove(RowId id);

 private:
  RowId AddWithFlags(ByteSpan row, std::uint16_t flags);
  [[nodiscard]] PageNumber FindPage(std::size_t size);
  [[nodiscard]] std::optional<PageNumber> FindFreePage(std::size_t size);
  [[nodiscard]] bool Fits(PageNumber number, std::size_t size);
  PageNumber NewPage();
  bool ReplaceInPlace(RowId place, ByteSpan row);
  void RemoveSlot(RowId place);
  void NoteRoom(PageNumber page);
  void PointTo(RowId header, RowId target);

  Storage& storage_;
  const TableDefinition& definition_;
  PageHints& hints_;
};

}  // namespace kestro::jet
