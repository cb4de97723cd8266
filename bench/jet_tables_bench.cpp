// SQL on the tables of a Jet file next to the same SQL on SQLite's own tables, both on a bare connection:
//   bench_jet_tables_bench [--contacts=N] [Google Benchmark options]

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "adapters/sqlite/sqlite_file_conversion.h"
#include "adapters/sqlite/sqlite_handle.h"
#include "adapters/sqlite/text_functions.h"
#include "contacts/search_hash.h"
#include "support/address_book.h"
#include "support/ratios.h"

namespace {

using namespace kestro;
using namespace kestro::bench;

constexpr int kGroup = 1000;

/// A database with the contacts, as a connection of SQLite.
struct Side {
  std::string name;
  sqlite3* connection = nullptr;
  std::string select_by_phone;
  std::string insert;
  bool hashed = false;  // the file keeps hashes of the numbers
};

adapters::StatementPointer Prepare(const Side& side, const std::string& text) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(side.connection, text.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(side.connection));
  }
  return adapters::StatementPointer(statement);
}

void Run(const Side& side, const char* text) {
  if (sqlite3_exec(side.connection, text, nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(side.connection));
  }
}

void RegisterLookUp(const Side& side, int count) {
  benchmark::RegisterBenchmark(("look-up, " + side.name).c_str(), [&side, count](benchmark::State& state) {
    const auto statement = Prepare(side, side.select_by_phone);
    PhoneSequence phones(count);
    for (auto step : state) {
      const std::string phone = phones.Next();
      if (side.hashed) {
        sqlite3_bind_int(statement.get(), 1, contacts::SearchHash(phone));
        sqlite3_bind_text(statement.get(), 2, phone.data(), static_cast<int>(phone.size()), nullptr);
        while (sqlite3_step(statement.get()) == SQLITE_ROW) {
          benchmark::DoNotOptimize(ReadBareContact(statement.get()));
        }
        sqlite3_reset(statement.get());
      } else {
        benchmark::DoNotOptimize(SelectByPhone(statement.get(), phone));
      }
    }
  });
}

/// New contacts go again after each group, so that the table keeps its size.
void RegisterInsert(const Side& side, int count) {
  benchmark::RegisterBenchmark(("insert 1000, " + side.name).c_str(),
                               [&side, count](benchmark::State& state) {
                                 const auto statement = Prepare(side, side.insert);
                                 const std::string remove =
                                     "DELETE FROM Contact WHERE id_Contact > " + std::to_string(count);
                                 for (auto step : state) {
                                   Run(side, "BEGIN");
                                   for (int i = 0; i < kGroup; ++i) {
                                     Contact contact = MakeContact(count + i);
                                     BindContact(statement.get(), contact);
                                     if (side.hashed) {
                                       for (int phone = 0; phone < contacts::kPhoneCount; ++phone) {
                                         const auto place = static_cast<std::size_t>(phone);
                                         sqlite3_bind_int(statement.get(), 27 + phone,
                                                          contacts::SearchHash(contact.SearchPhone[place]));
                                       }
                                     }
                                     sqlite3_step(statement.get());
                                     if (sqlite3_reset(statement.get()) != SQLITE_OK)
                                       throw std::runtime_error("The insertion failed");
                                   }
                                   Run(side, "COMMIT");
                                   state.PauseTiming();
                                   Run(side, remove.c_str());
                                   state.ResumeTiming();
                                 }
                               })
      ->Unit(benchmark::kMillisecond)
      ->UseRealTime();
}

void RegisterReading(const Side& side, const std::string& what, const std::string& query) {
  benchmark::RegisterBenchmark((what + ", " + side.name).c_str(), [&side, query](benchmark::State& state) {
    const auto statement = Prepare(side, query);
    std::size_t rows = 0;
    for (auto step : state) {
      for (rows = 0; sqlite3_step(statement.get()) == SQLITE_ROW; ++rows) {
        for (int i = 0; i < sqlite3_column_count(statement.get()); ++i) {
          benchmark::DoNotOptimize(Column(statement.get(), i));
        }
      }
      sqlite3_reset(statement.get());
    }
    state.counters["rows"] = static_cast<double>(rows);
  })->Unit(benchmark::kMillisecond);
}

void Register(const Side& side, int count) {
  RegisterLookUp(side, count);
  RegisterInsert(side, count);
  RegisterReading(side, "search", "SELECT id_Contact, Name FROM Contact WHERE ContainsText(Name, 'svob')");
  RegisterReading(side, "search notes",
                  "SELECT id_Contact FROM Contact WHERE ContainsText(Note, 'contract 12')");
  RegisterReading(side, "scan", "SELECT id_Contact, " + ContactColumns() + " FROM Contact");
  RegisterReading(side, "count", "SELECT COUNT(*) FROM Contact");
}

void TimeConversion(const BareAddressBook& bare, int count) {
  const test_support::TemporaryFolder folder;
  const auto path = folder.File("CTIDB.mdb");
  std::filesystem::copy_file(bare.path(), path);
  const auto start = std::chrono::steady_clock::now();
  adapters::ConvertSqliteFile(test_support::Files(), path);
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  std::cout << "conversion of " << count << " contacts: " << seconds.count() << " s; file "
            << static_cast<double>(std::filesystem::file_size(path)) / 1e6 << " MB instead of "
            << static_cast<double>(std::filesystem::file_size(bare.path())) / 1e6 << " MB\n";
}

}  // namespace

int main(int argument_count, char** argument_values) {
  test_support::ContactsDatabase book;
  std::unique_ptr<BareAddressBook> bare;
  std::unique_ptr<adapters::SqliteHandle> handle;
  Side sides[2];
  return RunBenchmarks(
      argument_count, argument_values,
      [&](int count) {
        Fill(book, count);
        bare = std::make_unique<BareAddressBook>(count);
        TimeConversion(*bare, count);
        adapters::RegisterTextFunctions(bare->file().get());
        const auto copy = book.folder().File("copy.mdb");  // the book has its own file open
        std::filesystem::copy_file(book.path(), copy);
        handle = std::make_unique<adapters::SqliteHandle>(test_support::Files(), copy);
        const auto& statements = contacts::GetContactStatements();
        sides[0] = {"Jet", handle->get(), statements.select_by_phone, statements.insert, true};
        sides[1] = {"SQLite", bare->file().get(), BareAddressBook::SelectByPhone(),
                    BareAddressBook::InsertStatement(), false};
        for (const Side& side : sides) Register(side, count);
      },
      [](const BestTimes& times) {
        // COUNT(*) has no goal: SQLite counts a table of its own by pages, a virtual one row by row.
        const std::pair<const char*, std::optional<double>> goals[] = {{"look-up", 2}, {"insert 1000", 2},
                                                                       {"search", 3},  {"search notes", 3},
                                                                       {"scan", 3},    {"count", {}}};
        for (const auto& [what, goal] : goals) {
          times.PrintRatio(std::string(what) + ", Jet", std::string(what) + ", SQLite", goal);
        }
      });
}
