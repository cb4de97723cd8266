// What the contacts component costs on top of the database engine, with the ratios printed at the end:
//   bench_contacts_bench [--contacts=N] [Google Benchmark options]
//
// A search is timed until the list can be shown: its row count is known and the first screen is read. Beside
// it stands the same search with LIKE on a bare connection of the engine. That one steps through all it
// finds, as any program must that keeps no keys: the length of the list is known only at its end.

#include <memory>
#include <string>
#include <vector>

#include "support/address_book.h"
#include "support/ratios.h"

namespace {

using namespace kestro::bench;
using kestro::contacts::CTIContacts;

struct SearchCase {
  const char* name;
  const char* parts[4];  // name, company, city, note
};

constexpr SearchCase kSearches[] = {
    {"four fields", {"va", "comp", "r", "contract 1"}},
    {"four fields, few found", {"9", "77", "o", "contract 97"}},
    {"name only", {"svob", "", "", ""}},
    {"accented", {"íha", "", "", ""}},
    {"note only", {"", "", "", "contract 12"}},
};

std::string LikeQuery(const SearchCase& search) {
  constexpr const char* kColumns[] = {"Name", "Company", "City", "Note"};
  std::string query = "SELECT id_Contact, Name, Company, City, Phone1 FROM Contact WHERE 1";
  for (std::size_t i = 0; i < std::size(kColumns); ++i) {
    if (*search.parts[i] == '\0') continue;
    query += std::string(" AND ") + kColumns[i] + " LIKE '%" + search.parts[i] + "%'";
  }
  return query + " ORDER BY Name, id_Contact";
}

void RegisterLookUps(kestro::test_support::ContactsDatabase& contacts, BareAddressBook& bare, int count) {
  benchmark::RegisterBenchmark("FindContactsByPhone", [&contacts, count](benchmark::State& state) {
    PhoneSequence phones(count);
    for (auto step : state) {
      CTIContacts component(contacts.database());
      component.SetConnectionString(contacts.connection_string());
      benchmark::DoNotOptimize(component.FindContactsByPhone(phones.Next()));
    }
  });
  benchmark::RegisterBenchmark("prepared SELECT", [&bare, count](benchmark::State& state) {
    const auto statement = bare.Prepare(BareAddressBook::SelectByPhone());
    PhoneSequence phones(count);
    for (auto step : state) benchmark::DoNotOptimize(SelectByPhone(statement.get(), phones.Next()));
  });
}

void RegisterSearch(kestro::test_support::ContactsDatabase& contacts, BareAddressBook& bare,
                    const SearchCase& search) {
  const std::string name = search.name;
  benchmark::RegisterBenchmark(("SearchContacts, " + name).c_str(), [&](benchmark::State& state) {
    std::size_t found = 0;
    for (auto step : state) {
      CTIContacts component(contacts.database());
      component.SetConnectionString(contacts.connection_string());
      const auto& [part_name, company, city, note] = search.parts;
      const auto rows = component.SearchContacts(part_name, company, city, note);
      found = static_cast<std::size_t>(rows->RecordCount());
      ReadScreen(*rows);
    }
    state.counters["found"] = static_cast<double>(found);
  })->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark(("LIKE, " + name).c_str(), [&](benchmark::State& state) {
    const auto statement = bare.Prepare(LikeQuery(search));
    std::size_t found = 0;
    for (auto step : state) {
      for (found = 0; sqlite3_step(statement.get()) == SQLITE_ROW; ++found) {
        for (int i = 0; i < 5; ++i) benchmark::DoNotOptimize(Column(statement.get(), i));
      }
      sqlite3_reset(statement.get());
    }
    state.counters["found"] = static_cast<double>(found);
  })->Unit(benchmark::kMillisecond);
}

void RegisterPickLists(kestro::test_support::ContactsDatabase& contacts) {
  benchmark::RegisterBenchmark("positions and countries", [&](benchmark::State& state) {
    for (auto step : state) {
      kestro::contacts::PickListService lists(contacts.database());
      lists.SetConnectionString(contacts.connection_string());
      for (const auto& rows : {lists.GetPositions(), lists.GetCountries()}) {
        while (!rows->AtEnd()) rows->MoveNext();
      }
    }
  })->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argument_count, char** argument_values) {
  kestro::test_support::ContactsDatabase contacts;
  std::unique_ptr<BareAddressBook> bare;
  return RunBenchmarks(
      argument_count, argument_values,
      [&](int count) {
        Fill(contacts, count);
        bare = std::make_unique<BareAddressBook>(count);
        RegisterLookUps(contacts, *bare, count);
        for (const auto& search : kSearches) RegisterSearch(contacts, *bare, search);
        RegisterPickLists(contacts);
      },
      [](const BestTimes& times) {
        times.PrintRatio("FindContactsByPhone", "prepared SELECT", 3);
        for (const auto& search : kSearches) {
          // One field lets thousands pass, which are then put into the order of letters instead of bytes.
          const bool four_fields = *search.parts[0] != '\0' && *search.parts[1] != '\0';
          times.PrintRatio(std::string("SearchContacts, ") + search.name, std::string("LIKE, ") + search.name,
                           four_fields ? std::optional(1.2) : std::nullopt);
        }
      });
}
