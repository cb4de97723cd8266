#include "jet/table_storage.h"

#include <array>

#include "jet/data_page.h"
#include "jet/error.h"
#include "jet/index_tree.h"
#include "jet/usage_map.h"

namespace kestro::jet {
namespace {

constexpr std::size_t kMostMaps = (kPageSize - kDataHeaderSize) / (UsageMap::kFreshSize + 2);

// The maps of a table are the rows of one page: rows, room, each index, two for each long column.
void CreateMaps(Storage& storage, TableDefinition& definition) {
  const std::size_t count = 2 + definition.real_indexes.size() + 2 * definition.long_columns.size();
  if (count > kMostMaps) throw Error(ErrorKind::kValue, "The table has too many indexes and long columns");
  const PageEdit page = storage.space.Allocate();
  DataPageEdit::Format(page.edit(), 0);
  DataPageEdit data(page.edit());
  const auto add = [&] {
    const std::array<std::uint8_t, UsageMap::kFreshSize> empty{};
    return DataPointer{page.number(), static_cast<std::uint8_t>(data.Add(empty, 0))};
  };
  definition.owned = add();
  definition.free = add();
  for (RealIndex& index : definition.real_indexes) index.map = add();
  for (LongColumnMaps& maps : definition.long_columns) {
    maps.owned = add();
    maps.free = add();
  }
}

void CreateRoots(Storage& storage, TableDefinition& definition) {
  for (RealIndex& index : definition.real_indexes) {
    {
      const PageEdit root = storage.space.Allocate();
      IndexTree::FormatRoot(root.edit(), definition.page);
      index.root = root.number();
    }
    UsageMap(storage.pager, index.map).Add(storage.space, index.root);
  }
}

void DropMap(Storage& storage, DataPointer where) {
  if (where.IsNone()) return;
  for (const PageNumber page : UsageMap(storage.pager, where).OwnPages()) storage.space.Free(page);
  const PageEdit edit = storage.pager.Edit(where.page);
  DataPageEdit data(edit.edit());
  data.Remove(where.slot);
  if (data.view().IsEmpty()) storage.space.Free(where.page);
}

void DropPages(Storage& storage, DataPointer map) {
  for (const PageNumber page : UsageMap(storage.pager, map).All()) storage.space.Free(page);
  DropMap(storage, map);
}

}  // namespace

void CreateTableStorage(Storage& storage, TableDefinition& definition) {
  // Its length does not depend on the numbers that are still missing.
  const std::size_t length = EncodeTableDefinition(definition).size();
  for (std::size_t i = 0; i < DefinitionPageCount(length); ++i) {
    definition.pages.push_back(storage.space.Allocate().number());
  }
  definition.page = definition.pages.front();
  CreateMaps(storage, definition);
  CreateRoots(storage, definition);
  WriteTableDefinition(storage.pager, definition, EncodeTableDefinition(definition));
}

void DropTableStorage(Storage& storage, const TableDefinition& definition) {
  if (!definition.read_only_reason.empty()) throw Error(ErrorKind::kReadOnly, definition.read_only_reason);
  DropPages(storage, definition.owned);
  DropMap(storage, definition.free);
  for (const LongColumnMaps& maps : definition.long_columns) {
    DropPages(storage, maps.owned);
    DropMap(storage, maps.free);
  }
  for (const RealIndex& index : definition.real_indexes) DropPages(storage, index.map);
  for (const PageNumber page : definition.pages) storage.space.Free(page);
}

}  // namespace kestro::jet
