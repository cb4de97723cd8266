#include "jet/check_pages.h"

#include <algorithm>

#include "jet/data_page.h"
#include "jet/usage_map.h"

namespace kestro::jet {

void CheckDataPage(CheckReport& report, const std::string& where, ByteSpan bytes) {
  const DataPage page(bytes);
  if (page.slot_count() > kMostSlots) report.Find(where + ": too many slots");
  for (std::size_t i = 0; i < page.slot_count(); ++i) (void)page.slot(i);
  if (page.free() != page.ComputeFree()) {
    report.Find(where + ": the free-space word says " + std::to_string(page.free()) + " instead of " +
                std::to_string(page.ComputeFree()));
  }
}

void CheckDefinitionPages(CheckReport& report, Pager& pager, const std::string& table,
                          const TableDefinition& definition) {
  const PageRef first = pager.Read(definition.page);
  std::size_t left = Load32(first.bytes(), 8);
  for (std::size_t i = 0; i < definition.pages.size(); ++i) {
    report.Claim(definition.pages[i], table + " (definition)");
    const PageRef page = pager.Read(definition.pages[i]);
    const std::size_t start = i == 0 ? 0 : 8;
    const std::size_t count = std::min(kPageSize - start, left);
    left -= count;
    const std::size_t unused = kPageSize - start - count;
    if (Load16(page.bytes(), 2) != (unused < 8 ? 0 : unused - 8)) {
      report.Find(OnPage(table, definition.pages[i]) + ": wrong free-space word of a definition");
    }
  }
}

void ClaimMap(CheckReport& report, Pager& pager, const std::string& who, DataPointer where) {
  if (where.IsNone()) return;
  report.ClaimMapRow(where, who);
  for (const PageNumber page : UsageMap(pager, where).OwnPages()) {
    report.Claim(page, who + " (usage map)");
    if (page < pager.page_count() && !pager.Read(page).Is(PageType::kUsageMap)) {
      report.Find(OnPage(who, page) + ": not a page of a usage map");
    }
  }
}

std::vector<PageNumber> CheckDataMaps(CheckReport& report, Pager& pager, const std::string& who,
                                      DataPointer owned, DataPointer free, std::uint32_t owner) {
  std::vector<PageNumber> good;
  ClaimMap(report, pager, who, owned);
  ClaimMap(report, pager, who, free);
  const UsageMap owned_map(pager, owned);
  for (const PageNumber number : owned_map.All()) {
    if (!report.Claim(number, who)) continue;
    const PageRef page = pager.Read(number);
    if (!page.Is(PageType::kData) || DataPage(page.bytes()).owner() != owner) {
      report.Find(OnPage(who, number) + ": is in the map, but belongs to somebody else");
      continue;
    }
    report.Try(OnPage(who, number), [&] {
      CheckDataPage(report, OnPage(who, number), page.bytes());
      good.push_back(number);
    });
  }
  for (const PageNumber number : UsageMap(pager, free).All()) {
    if (!owned_map.Contains(number)) report.Find(OnPage(who, number) + ": has room, but is no page of this");
  }
  return good;
}

void CheckFreePages(CheckReport& report, const Storage& storage) {
  for (PageNumber page = 0; page < storage.pager.page_count(); ++page) {
    const bool free = storage.space.IsFree(page);
    const std::string& user = report.user(page);
    if (free && !user.empty()) report.Find("page " + std::to_string(page) + " is free, but used by " + user);
    if (!free && user.empty()) report.Find("page " + std::to_string(page) + " is neither used nor free");
  }
}

}  // namespace kestro::jet
