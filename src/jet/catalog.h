#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "jet/page.h"
#include "jet/row_id.h"
#include "jet/storage.h"
#include "jet/table.h"
#include "jet/value.h"

namespace kestro::jet {

struct CatalogEntry {
  PageNumber page = 0;  // first definition page; the entry's id
  std::string name;
  bool system = false;
  bool linked = false;  // the rows are in another file
  RowId row;
};

/// The tables that list the tables: their names, and who may use them.
class Catalog {
 public:
  /// `page`: definition page of the list itself. Throws kDamaged.
  Catalog(Storage& storage, PageNumber page);

  /// In the order of their storage.
  [[nodiscard]] std::vector<CatalogEntry> Entries() const;
  [[nodiscard]] std::optional<CatalogEntry> Find(std::string_view name) const;
  [[nodiscard]] Blob Properties(const CatalogEntry& entry) const;

  /// Why no table can be created or dropped; empty when that is possible.
  [[nodiscard]] std::string ReadOnlyReason() const;

  void Add(PageNumber page, std::string_view name, const Blob& properties, double now);
  void Remove(const CatalogEntry& entry);

  // --- for the creation of a database, and the checker ---
  [[nodiscard]] Table& objects() const { return *objects_; }
  [[nodiscard]] Table* permissions() const { return permissions_.get(); }
  void AddObject(std::int64_t id, std::int64_t parent, std::string_view name, std::int64_t type,
                 const Blob& owner, std::int64_t flags, const Blob& properties, double now);
  void AddPermission(std::int64_t object, const Blob& user, std::int64_t rights, bool inheritable);

 private:
  [[nodiscard]] Blob OwnerOf(std::string_view name) const;
  void CopyPermissions(PageNumber page);
  [[nodiscard]] static std::size_t Column(const Table& table, std::string_view name);

  Storage& storage_;
  std::unique_ptr<Table> objects_;
  std::unique_ptr<Table> permissions_;
};

/// Numbers of the catalogue.
inline constexpr std::int64_t kTablesParent = 0x0F000001;
inline constexpr std::int64_t kTableObject = 1;

}  // namespace kestro::jet
