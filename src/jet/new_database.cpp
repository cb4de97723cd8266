#include "jet/new_database.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "jet/catalog.h"
#include "jet/data_page.h"
#include "jet/header_page.h"
#include "jet/index_tree.h"
#include "jet/row_layout.h"
#include "jet/table_builder.h"
#include "jet/table_definition.h"
#include "jet/usage_map.h"

namespace kestro::jet {
namespace {

constexpr PageNumber kMapPage = 6;
constexpr PageNumber kFirstRoot = 7;
constexpr std::size_t kFixedPages = 14;  // before the first rows

struct SystemColumn {
  const char* name;
  ColumnType type;
  std::uint8_t extra_flags = 0;
};

struct SystemIndex {
  const char* name;
  std::vector<std::string_view> columns;
  std::uint8_t flags;
  bool primary = false;
};

struct SystemTable {
  std::vector<SystemColumn> columns;  // in the order of their numbers
  std::vector<SystemIndex> indexes;   // in the order of their trees
};

constexpr std::uint8_t kIdentityFlag = 0x20;

SystemTable Objects() {
  return {{{"Id", ColumnType::kInt32},
           {"ParentId", ColumnType::kInt32},
           {"Name", ColumnType::kText},
           {"Type", ColumnType::kInt16},
           {"DateCreate", ColumnType::kDate},
           {"DateUpdate", ColumnType::kDate},
           {"Owner", ColumnType::kBinary, kIdentityFlag},
           {"Flags", ColumnType::kInt32},
           {"Database", ColumnType::kMemo},
           {"Connect", ColumnType::kMemo},
           {"ForeignName", ColumnType::kText},
           {"RmtInfoShort", ColumnType::kBinary},
           {"RmtInfoLong", ColumnType::kOle},
           {"Lv", ColumnType::kOle},
           {"LvProp", ColumnType::kOle},
           {"LvModule", ColumnType::kOle},
           {"LvExtra", ColumnType::kOle}},
          {{"ParentIdName", {"ParentId", "Name"}, 0x81}, {"Id", {"Id"}, 0x81, true}}};
}

SystemTable Permissions() {
  return {{{"ObjectId", ColumnType::kInt32},
           {"SID", ColumnType::kBinary, kIdentityFlag},
           {"ACM", ColumnType::kInt32},
           {"FInheritable", ColumnType::kBool}},
          {{"ObjectId", {"ObjectId"}, 0x88}}};
}

SystemTable Queries() {
  return {{{"ObjectId", ColumnType::kInt32},
           {"Attribute", ColumnType::kByte},
           {"Order", ColumnType::kBinary},
           {"Name1", ColumnType::kText},
           {"Name2", ColumnType::kText},
           {"Expression", ColumnType::kMemo},
           {"Flag", ColumnType::kInt16},
           {"LvExtra", ColumnType::kInt32}},
          {{"ObjectIdAttribute", {"ObjectId", "Attribute", "Order"}, 0x81, true}}};
}

SystemTable Relationships() {
  return {{{"szRelationship", ColumnType::kText},
           {"grbit", ColumnType::kInt32},
           {"ccolumn", ColumnType::kInt32},
           {"icolumn", ColumnType::kInt32},
           {"szObject", ColumnType::kText},
           {"szColumn", ColumnType::kText},
           {"szReferencedObject", ColumnType::kText},
           {"szReferencedColumn", ColumnType::kText}},
          {{"szRelationship", {"szRelationship"}, 0x82},
           {"szObject", {"szObject"}, 0x82},
           {"szReferencedObject", {"szReferencedObject"}, 0x82}}};
}

Column MakeColumn(const SystemColumn& described) {
  Column column;
  column.name = described.name;
  column.type = described.type;
  column.fixed = described.type == ColumnType::kBool || FixedSize(described.type) > 0;
  column.flags = static_cast<std::uint8_t>((column.fixed ? 0x13 : 0x12) | described.extra_flags);
  column.compressed = column.IsText();
  const bool is_short = described.type == ColumnType::kText || described.type == ColumnType::kBinary;
  column.length = is_short ? 510 : described.type == ColumnType::kBool ? 1 : FixedSize(described.type);
  return column;
}

std::size_t PositionOf(const TableDefinition& definition, std::string_view name) {
  const auto found = std::ranges::find(definition.columns, name, &Column::name);
  return static_cast<std::size_t>(found - definition.columns.begin());
}

void AddIndexes(TableDefinition& definition, const SystemTable& table) {
  for (const SystemIndex& described : table.indexes) {
    RealIndex real;
    for (const std::string_view name : described.columns) {
      real.columns.push_back({PositionOf(definition, name), true});
    }
    real.flags = described.flags;
    Index index;
    index.name = described.name;
    index.primary = described.primary;
    index.real = definition.real_indexes.size();
    definition.real_indexes.push_back(std::move(real));
    definition.indexes.push_back(std::move(index));
  }
  std::ranges::sort(definition.indexes, {}, &Index::name);
}

// Gives out the maps and roots one after the other.
class Places {
 public:
  Places(Storage& storage, const PageEdit& map_page) : storage_(storage), maps_(map_page.edit()) {}

  DataPointer Map() {
    const std::array<std::uint8_t, UsageMap::kFreshSize> empty{};
    return {kMapPage, static_cast<std::uint8_t>(maps_.Add(empty, 0))};
  }

  void Root(RealIndex& index, PageNumber owner) {
    index.root = next_root_++;
    index.map = Map();
    IndexTree::FormatRoot(storage_.pager.Edit(index.root).edit(), owner);
    UsageMap(storage_.pager, index.map).Add(storage_.space, index.root);
  }

 private:
  Storage& storage_;
  DataPageEdit maps_;
  PageNumber next_root_ = kFirstRoot;
};

void WriteSystemTable(Storage& storage, PageNumber page, const SystemTable& table, Places& places) {
  TableDefinition definition;
  definition.page = page;
  definition.pages = {page};
  definition.system = true;
  for (const SystemColumn& column : table.columns) definition.columns.push_back(MakeColumn(column));
  PlaceColumns(definition);
  definition.owned = places.Map();
  definition.free = places.Map();
  ListLongColumns(definition);
  for (LongColumnMaps& maps : definition.long_columns) {
    maps.owned = places.Map();
    maps.free = places.Map();
  }
  // The maps go by number, the records by name.
  std::vector<LongColumnMaps> maps_by_number = std::move(definition.long_columns);
  std::vector<std::string> names;
  names.reserve(maps_by_number.size());
  for (const LongColumnMaps& maps : maps_by_number) names.push_back(definition.columns[maps.column].name);
  std::ranges::sort(definition.columns, {}, &Column::name);
  for (std::size_t i = 0; i < names.size(); ++i) {
    maps_by_number[i].column = PositionOf(definition, names[i]);
  }
  std::ranges::sort(maps_by_number, {}, &LongColumnMaps::column);
  definition.long_columns = std::move(maps_by_number);
  AddIndexes(definition, table);
  for (RealIndex& index : definition.real_indexes) places.Root(index, page);
  WriteTableDefinition(storage.pager, definition, EncodeTableDefinition(definition));
}

Blob Identity(const std::uint8_t (&bytes)[2]) { return {bytes, bytes + 2}; }

void AddObjects(Catalog& catalog, double now) {
  constexpr auto kSystem = std::int64_t{INT32_MIN};
  constexpr std::int64_t kRoot = 0x0F000000;
  const Blob engine = Identity(kEngineOwner);
  const auto add = [&](std::int64_t id, std::int64_t parent, const char* name, std::int64_t type,
                       const Blob& owner) {
    catalog.AddObject(id, parent, name, type, owner, kSystem, {}, now);
  };
  add(kTablesParent, kRoot, "Tables", 3, engine);
  add(0x0F000002, kRoot, "Databases", 3, engine);
  add(0x0F000003, kRoot, "Relationships", 3, engine);
  add(0x10000000, 0x0F000002, "MSysDb", 2, Identity(kAdminOwner));
  std::int64_t page = 2;
  for (const char* name : {"MSysObjects", "MSysACEs", "MSysQueries", "MSysRelationships"}) {
    add(page++, kTablesParent, name, kTableObject, engine);
  }
}

void AddPermissions(Catalog& catalog) {
  const Blob admin = Identity(kAdminOwner);
  const Blob users = Identity(kUsersOwner);
  const Blob creator = Identity(kCreatorOwner);
  const auto add = [&](std::int64_t object, const Blob& user, std::int64_t rights, bool inheritable = false) {
    catalog.AddPermission(object, user, rights, inheritable);
  };
  add(2, admin, 0x60000);
  add(3, admin, 0x60000);
  add(4, admin, 0x60000);
  add(5, admin, 0xE0000);
  add(kTablesParent, creator, 0xF00FE, true);
  add(kTablesParent, admin, 0x60001);
  add(0x0F000003, creator, 0xF00FE, true);
  add(0x0F000003, admin, 0x60001);
  add(0x0F000002, admin, 0x60000);
  add(0x10000000, admin, 0x6000E);
  add(0x10000000, users, 0x0E);
  add(4, users, 0x14);
  add(5, users, 0x14);
  add(2, users, 0x14);
  add(kTablesParent, users, 0xFFEFF, true);
  add(0x0F000003, users, 0xFFFFF, true);
}

}  // namespace

void FillNewDatabase(Storage& storage, double now) {
  for (std::size_t i = 0; i < kFixedPages; ++i) (void)storage.pager.Append();
  // The last two of the used pages come with the first rows.
  PageSpace::FormatGlobalMap(storage.pager.Edit(1).edit(), kFixedPages);
  FillHeaderPage(storage.pager.Edit(0).edit());
  {
    const PageEdit map_page = storage.pager.Edit(kMapPage);
    DataPageEdit::Format(map_page.edit(), 0);
    Places places(storage, map_page);
    WriteSystemTable(storage, 2, Objects(), places);
    WriteSystemTable(storage, 3, Permissions(), places);
    WriteSystemTable(storage, 4, Queries(), places);
    WriteSystemTable(storage, 5, Relationships(), places);
  }
  Catalog catalog(storage, 2);
  AddObjects(catalog, now);
  Catalog complete(storage, 2);  // now it finds the table of permissions
  AddPermissions(complete);
}

}  // namespace kestro::jet
