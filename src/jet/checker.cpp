#include "jet/checker.h"

#include "jet/check_pages.h"
#include "jet/check_report.h"
#include "jet/check_rows.h"
#include "jet/database.h"

namespace kestro::jet {
namespace {

void CheckTable(CheckReport& report, Storage& storage, const std::string& name, PageNumber page) {
  const TableDefinition definition = ReadTableDefinition(storage.pager, page);
  ++report.result().tables;
  CheckDefinitionPages(report, storage.pager, name, definition);
  std::vector<ExpectedEntries> expected = CheckRows(report, storage.pager, name, definition);
  for (std::size_t i = 0; i < definition.real_indexes.size(); ++i) {
    const std::string who = name + ", index " + std::to_string(i);
    report.Try(
        who, [&] { CheckIndex(report, storage, who, definition, definition.real_indexes[i], expected[i]); });
  }
}

}  // namespace

CheckResult CheckDatabase(Database& database) {
  Storage& storage = database.storage();
  CheckReport report(storage.pager.page_count());
  report.Claim(0, "the header");
  report.ClaimMapRow({1, 0}, "the map of free pages");
  report.Try("the map of free pages", [&] {
    for (const PageNumber page : storage.space.OwnPages()) report.Claim(page, "the map of free pages");
  });
  report.Try("the catalogue", [&] {
    for (const CatalogEntry& entry : database.catalog().Entries()) {
      if (entry.linked) continue;
      report.Try(entry.name, [&] { CheckTable(report, storage, entry.name, entry.page); });
    }
  });
  for (const PageNumber page : report.map_pages()) {
    if (page >= storage.pager.page_count()) continue;
    const std::string where = OnPage("usage maps", page);
    report.Try(where, [&] { CheckDataPage(report, where, storage.pager.Read(page).bytes()); });
  }
  report.Try("the map of free pages", [&] { CheckFreePages(report, storage); });
  return report.result();
}

}  // namespace kestro::jet
