#include "jet/catalog.h"

#include <algorithm>
#include <utility>

#include "jet/error.h"
#include "jet/table_definition.h"

namespace kestro::jet {
namespace {

constexpr std::int64_t kSystemFlag = 0x80000002;
constexpr std::size_t kShortIdentity = 2;  // bytes; others belong to groups of the file
// Stored identities differ from the true ones by a mask; what tells engine from creator survives it.
constexpr std::uint8_t kEngineToCreator = 0x07;

bool EqualNames(std::string_view left, std::string_view right) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c; };
  return std::ranges::equal(left, right, {}, lower, lower);
}

bool IsTableType(std::int64_t type) { return type == kTableObject || type == 4 || type == 6; }

std::unique_ptr<Table> OpenSystemTable(Storage& storage, PageNumber page, const char* name) {
  auto table = std::make_unique<Table>(storage, name, ReadTableDefinition(storage.pager, page));
  table->AllowSystemChanges();
  return table;
}

}  // namespace

Catalog::Catalog(Storage& storage, PageNumber page)
    : storage_(storage), objects_(OpenSystemTable(storage, page, "MSysObjects")) {
  for (const char* name :
       {"Id", "ParentId", "Name", "Type", "Flags", "Owner", "LvProp", "DateCreate", "DateUpdate"}) {
    (void)Column(*objects_, name);
  }
  const std::optional<CatalogEntry> permissions = Find("MSysACEs");
  if (permissions) permissions_ = OpenSystemTable(storage, permissions->page, "MSysACEs");
}

std::size_t Catalog::Column(const Table& table, std::string_view name) {
  const std::optional<std::size_t> column = table.FindColumn(name);
  if (!column) throw Error(ErrorKind::kDamaged, "The catalogue lacks the column " + std::string(name));
  return *column;
}

std::vector<CatalogEntry> Catalog::Entries() const {
  const std::size_t id = Column(*objects_, "Id");
  const std::size_t name = Column(*objects_, "Name");
  const std::size_t type = Column(*objects_, "Type");
  const std::size_t flags = Column(*objects_, "Flags");
  std::vector<CatalogEntry> entries;
  for (Cursor cursor = objects_->Scan(); cursor.Next();) {
    const RowView& row = cursor.row();
    const std::int64_t kind = row.Integer(type).value_or(0);
    if (!IsTableType(kind)) continue;
    CatalogEntry entry;
    entry.page = static_cast<PageNumber>(row.Integer(id).value_or(0)) & 0x00FFFFFF;
    row.Text(name, entry.name);
    entry.system = (row.Integer(flags).value_or(0) & kSystemFlag) != 0;
    entry.linked = kind != kTableObject;
    entry.row = row.id();
    entries.push_back(std::move(entry));
  }
  return entries;
}

std::optional<CatalogEntry> Catalog::Find(std::string_view name) const {
  for (CatalogEntry& entry : Entries()) {
    if (EqualNames(entry.name, name)) return std::move(entry);
  }
  return std::nullopt;
}

Blob Catalog::Properties(const CatalogEntry& entry) const {
  RowView row = objects_->MakeRowView();
  if (!objects_->Read(entry.row, row)) return {};
  Value value = row.Get(Column(*objects_, "LvProp"));
  Blob* block = std::get_if<Blob>(&value);
  return block != nullptr ? std::move(*block) : Blob();
}

std::string Catalog::ReadOnlyReason() const {
  if (permissions_ == nullptr) return "The catalogue of permissions is missing";
  const std::string& objects = objects_->ReadOnlyReason();
  return objects.empty() ? permissions_->ReadOnlyReason() : objects;
}

Blob Catalog::OwnerOf(std::string_view name) const {
  const std::size_t name_column = Column(*objects_, "Name");
  std::string found;
  for (Cursor cursor = objects_->Scan(); cursor.Next();) {
    cursor.row().Text(name_column, found);
    if (!EqualNames(found, name)) continue;
    Value owner = cursor.row().Get(Column(*objects_, "Owner"));
    Blob* bytes = std::get_if<Blob>(&owner);
    if (bytes != nullptr && bytes->size() == kShortIdentity) return *bytes;
  }
  throw Error(ErrorKind::kReadOnly, "The owner of \"" + std::string(name) + "\" is not in the catalogue");
}

void Catalog::AddObject(std::int64_t id, std::int64_t parent, std::string_view name, std::int64_t type,
                        const Blob& owner, std::int64_t flags, const Blob& properties, double now) {
  std::vector<Value> row(objects_->columns().size());
  row[Column(*objects_, "Id")] = id;
  row[Column(*objects_, "ParentId")] = parent;
  row[Column(*objects_, "Name")] = std::string(name);
  row[Column(*objects_, "Type")] = type;
  row[Column(*objects_, "DateCreate")] = now;
  row[Column(*objects_, "DateUpdate")] = now;
  row[Column(*objects_, "Owner")] = owner;
  row[Column(*objects_, "Flags")] = flags;
  if (!properties.empty()) row[Column(*objects_, "LvProp")] = properties;
  objects_->Insert(row);
}

void Catalog::AddPermission(std::int64_t object, const Blob& user, std::int64_t rights, bool inheritable) {
  std::vector<Value> row(permissions_->columns().size());
  row[Column(*permissions_, "ObjectId")] = object;
  row[Column(*permissions_, "SID")] = user;
  row[Column(*permissions_, "ACM")] = rights;
  row[Column(*permissions_, "FInheritable")] = inheritable;
  permissions_->Insert(row);
}

// A new table gets what its parent hands on; the creator there is the administrator here.
void Catalog::CopyPermissions(PageNumber page) {
  const Blob admin = OwnerOf("MSysDb");
  Blob creator = OwnerOf("Tables");
  creator[1] = static_cast<std::uint8_t>(creator[1] ^ kEngineToCreator);
  const std::size_t object = Column(*permissions_, "ObjectId");
  const std::size_t inheritable = Column(*permissions_, "FInheritable");
  std::vector<std::pair<Blob, std::int64_t>> inherited;
  for (Cursor cursor = permissions_->Scan(); cursor.Next();) {
    const RowView& row = cursor.row();
    if (row.Integer(object) != kTablesParent || row.Integer(inheritable) == 0) continue;
    const Value user = row.Get(Column(*permissions_, "SID"));
    const Blob* bytes = std::get_if<Blob>(&user);
    if (bytes == nullptr || *bytes == admin) continue;
    const std::int64_t rights = row.Integer(Column(*permissions_, "ACM")).value_or(0);
    inherited.emplace_back(*bytes == creator ? admin : *bytes, rights);
  }
  for (const auto& [user, rights] : inherited) AddPermission(page, user, rights, false);
}

void Catalog::Add(PageNumber page, std::string_view name, const Blob& properties, double now) {
  AddObject(page, kTablesParent, name, kTableObject, OwnerOf("MSysDb"), 0, properties, now);
  CopyPermissions(page);
}

void Catalog::Remove(const CatalogEntry& entry) {
  const std::size_t object = Column(*permissions_, "ObjectId");
  for (Cursor cursor = permissions_->Scan(); cursor.Next();) {
    if (cursor.row().Integer(object) == static_cast<std::int64_t>(entry.page)) {
      permissions_->Delete(cursor.row().id());
    }
  }
  objects_->Delete(entry.row);
}

}  // namespace kestro::jet
