// The contact list: how soon it is there, how fast it sorts and scrolls, and what it occupies:
//   bench_contact_list_bench [--contacts=N] [Google Benchmark options]
//
// "Display all" is timed until the list can be shown: its row count is known and the first screen is read.
// Beside it stands the same selection on a bare connection of the engine, stepped through to its end, where
// the row count is known.

#include <cstdint>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string>

#include "support/address_book.h"
#include "support/memory.h"
#include "support/ratios.h"

namespace {

using namespace kestro::bench;
using kestro::test_support::ContactsDatabase;

constexpr int kScrolledRows = 1000;

/// Rows all over the list, the same ones in every run.
class RowSequence {
 public:
  explicit RowSequence(std::int64_t count) : count_(static_cast<std::uint64_t>(count)) {}
  std::int64_t Next() {
    state_ = state_ * 6'364'136'223'846'793'005U + 1'442'695'040'888'963'407U;
    return static_cast<std::int64_t>((state_ >> 33U) % count_);
  }

 private:
  std::uint64_t count_;
  std::uint64_t state_ = 1;
};

void RegisterDisplayAll(ContactsDatabase& contacts, BareAddressBook& bare) {
  benchmark::RegisterBenchmark("display all", [&](benchmark::State& state) {
    for (auto step : state) ReadScreen(*DisplayAll(contacts));
  })->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("bare selection of all", [&](benchmark::State& state) {
    const auto statement =
        bare.Prepare("SELECT id_Contact, Name, Company, City, Phone1 FROM Contact ORDER BY Name, id_Contact");
    for (auto step : state) {
      while (sqlite3_step(statement.get()) == SQLITE_ROW) {
        for (int i = 0; i < 5; ++i) benchmark::DoNotOptimize(Column(statement.get(), i));
      }
      sqlite3_reset(statement.get());
    }
  })->Unit(benchmark::kMillisecond);
}

void RegisterSorting(ContactsDatabase& contacts) {
  for (const char* const sort : {"Name", "Name DESC", "Company", "City DESC", "Phone1"}) {
    const auto name = std::string("sort by ") + sort;
    benchmark::RegisterBenchmark(name.c_str(), [&contacts, sort](benchmark::State& state) {
      const auto rows = DisplayAll(contacts);
      for (auto step : state) {
        rows->SetSort(sort);
        ReadScreen(*rows);
      }
    })->Unit(benchmark::kMillisecond);
  }
}

void RegisterScrolling(ContactsDatabase& contacts) {
  benchmark::RegisterBenchmark("1000 rows all over the list", [&](benchmark::State& state) {
    const auto rows = DisplayAll(contacts);
    RowSequence sequence(rows->RecordCount());
    for (auto step : state) {
      for (int i = 0; i < kScrolledRows; ++i) {
        rows->MoveTo(sequence.Next());
        ReadRow(*rows);
      }
    }
  })->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("1000 rows from the top down", [&](benchmark::State& state) {
    const auto rows = DisplayAll(contacts);
    for (auto step : state) {
      for (int i = 0; i < kScrolledRows; ++i, rows->MoveNext()) {
        if (rows->AtEnd()) rows->MoveTo(0);
        ReadRow(*rows);
      }
    }
  })->Unit(benchmark::kMillisecond);
}

void PrintMegabytes(const char* name, std::int64_t bytes) {
  std::cout << name << ": " << std::fixed << std::setprecision(1) << static_cast<double>(bytes) / 1e6
            << " MB\n";
}

/// Every row of the list is read, then the list is sorted and every row is read again.
void PrintMemory(ContactsDatabase& contacts) {
  const auto read_all = [](kestro::ports::Recordset& rows) {
    for (; !rows.AtEnd(); rows.MoveNext()) ReadRow(rows);
  };
  static_cast<void>(DisplayAll(contacts)->RecordCount());  // the engine's own page cache is full from here on
  const MemoryGrowth growth;
  const auto rows = DisplayAll(contacts);
  read_all(*rows);
  PrintMegabytes("memory of the list after every row was read (goal < 50 MB)", growth.Now());
  PrintMegabytes("at its peak", growth.Peak());
  const MemoryGrowth sorting;
  rows->SetSort("Company");
  read_all(*rows);
  PrintMegabytes("more after a sort", sorting.Now());
  PrintMegabytes("at the peak of the sort", sorting.Peak());
}

}  // namespace

int main(int argument_count, char** argument_values) {
  ContactsDatabase contacts;
  std::unique_ptr<BareAddressBook> bare;
  return RunBenchmarks(
      argument_count, argument_values,
      [&](int count) {
        Fill(contacts, count);
        PrintMemory(contacts);
        bare = std::make_unique<BareAddressBook>(count);
        RegisterDisplayAll(contacts, *bare);
        RegisterSorting(contacts);
        RegisterScrolling(contacts);
      },
      [](const BestTimes& times) { times.PrintRatio("display all", "bare selection of all"); });
}
