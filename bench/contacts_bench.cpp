// What the contacts component costs on top of the database engine, with the ratios printed at the end:
//   bench_contacts_bench [--contacts=N] [Google Benchmark options]

#include <algorithm>
#include <iostream>
#include <limits>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include "base/text.h"
#include "contacts/contact_statements.h"
#include "contacts/cti_contacts.h"
#include "unit/support/contacts_database.h"

namespace {

using kestro::contacts::Contact;
using kestro::contacts::CTIContacts;
using kestro::contacts::DatabaseSession;

std::string Phone(int number) { return "+420" + std::to_string(600'000'000 + number * 7); }

Contact MakeContact(int number) {
  constexpr std::string_view kFirst[] = {"Jan", "Petr", "Eva", "Jiří", "Žofie", "Karel", "Tomáš", "Anna"};
  constexpr std::string_view kLast[] = {"Novák",  "Svoboda",   "Dvořák", "Říha",   "Kučera",
                                        "Veselý", "Procházka", "Němec",  "Pokorný"};
  constexpr std::string_view kCities[] = {"Praha", "Brno", "Ostrava", "Plzeň", "Liberec", "Zlín", "Olomouc"};
  const auto pick = [number](const auto& list, int step) {
    return std::string(list[static_cast<std::size_t>(number / step) % std::size(list)]);
  };
  Contact contact;
  contact.Name = pick(kLast, 3) + ' ' + pick(kFirst, 1) + ' ' + std::to_string(number * 37 % 9973);
  contact.Company = "Company " + std::to_string(number % 4001) + " s.r.o.";
  contact.Position = number % 3 == 0 ? "Technician" : "Owner";
  contact.Phone = {Phone(number).substr(4), "", "", ""};
  contact.SearchPhone = {Phone(number), "", "", ""};
  contact.PhoneType = {1, 2, 3, 4};
  contact.Street = "Dlouhá " + std::to_string(number % 211);
  contact.City = pick(kCities, 5);
  contact.ZIPCode = std::to_string(10'000 + number % 60'000);
  contact.Country = "Czech Republic";
  contact.Email = "contact" + std::to_string(number) + "@example.com";
  contact.Note =
      "Prefers to be called in the morning; contract " + std::to_string(number % 977) + " was renewed.";
  return contact;
}

void Fill(kestro::test_support::ContactsDatabase& contacts, int count) {
  DatabaseSession session(contacts.database(), contacts.connection_string());
  session.InTransaction([&] {
    for (int number = 0; number < count; ++number) {
      Contact contact = MakeContact(number);
      session.Run(kestro::contacts::GetContactStatements().insert, kestro::contacts::ContactValues(contact));
    }
  });
}

/// A connection and statements of the engine itself, as an application without any layers would use them.
class BareConnection {
 public:
  explicit BareConnection(const std::string& path) {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    database_.reset(opened);
    Check(result);
  }

  kestro::adapters::StatementPointer Prepare(std::string_view text) {
    sqlite3_stmt* statement = nullptr;
    Check(
        sqlite3_prepare_v2(database_.get(), text.data(), static_cast<int>(text.size()), &statement, nullptr));
    return kestro::adapters::StatementPointer(statement);
  }

  void Check(int result) {
    if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database_.get()));
  }

  void BindText(sqlite3_stmt* statement, int position, std::string_view text) {
    Check(sqlite3_bind_text(statement, position, text.data(), static_cast<int>(text.size()), nullptr));
  }

 private:
  kestro::adapters::HandlePointer database_;
};

std::string_view Column(sqlite3_stmt* row, int index) {
  const auto* const text =
      static_cast<const char*>(static_cast<const void*>(sqlite3_column_text(row, index)));
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(row, index))};
}

Contact ReadBareContact(sqlite3_stmt* row) {
  Contact contact;
  int column = 0;
  contact.id_Contact = sqlite3_column_int64(row, column++);
  for (const auto& property : kestro::contacts::TextProperties())
    property.of(contact) = Column(row, column++);
  for (auto& type : contact.PhoneType) type = sqlite3_column_int64(row, column++);
  return contact;
}

/// Numbers all over the table, the same ones in every run.
class PhoneSequence {
 public:
  explicit PhoneSequence(int count) : count_(count) {}
  std::string Next() {
    state_ = state_ * 1'103'515'245U + 12'345U;
    return Phone(static_cast<int>((state_ >> 8U) % static_cast<unsigned>(count_)));
  }

 private:
  int count_;
  unsigned state_ = 1;
};

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

void RegisterLookUps(kestro::test_support::ContactsDatabase& contacts, BareConnection& bare, int count) {
  benchmark::RegisterBenchmark("FindContactsByPhone", [&contacts, count](benchmark::State& state) {
    PhoneSequence phones(count);
    for (auto step : state) {
      CTIContacts component(contacts.database());
      component.SetConnectionString(contacts.connection_string());
      benchmark::DoNotOptimize(component.FindContactsByPhone(phones.Next()));
    }
  });
  benchmark::RegisterBenchmark("prepared SELECT", [&bare, count](benchmark::State& state) {
    const auto statement = bare.Prepare(kestro::contacts::GetContactStatements().select_by_phone);
    PhoneSequence phones(count);
    for (auto step : state) {
      const auto phone = phones.Next();
      for (int i = 1; i <= kestro::contacts::kPhoneCount; ++i) bare.BindText(statement.get(), i, phone);
      std::vector<Contact> found;
      while (sqlite3_step(statement.get()) == SQLITE_ROW) found.push_back(ReadBareContact(statement.get()));
      benchmark::DoNotOptimize(found);
      sqlite3_reset(statement.get());
    }
  });
}

void RegisterSearch(kestro::test_support::ContactsDatabase& contacts, BareConnection& bare,
                    const SearchCase& search) {
  const std::string name = search.name;
  benchmark::RegisterBenchmark(("SearchContacts, " + name).c_str(), [&](benchmark::State& state) {
    std::size_t found = 0;
    for (auto step : state) {
      CTIContacts component(contacts.database());
      component.SetConnectionString(contacts.connection_string());
      const auto& [part_name, company, city, note] = search.parts;
      const auto rows = component.SearchContacts(part_name, company, city, note);
      for (found = 0; !rows->AtEnd(); rows->MoveNext(), ++found) {
        for (int i = 0; i < 5; ++i) benchmark::DoNotOptimize(rows->Text(i));
      }
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

void RegisterLists(kestro::test_support::ContactsDatabase& contacts) {
  benchmark::RegisterBenchmark("display all", [&](benchmark::State& state) {
    for (auto step : state) {
      CTIContacts component(contacts.database());
      component.SetConnectionString(contacts.connection_string());
      const auto rows = component.SearchContacts({}, {}, {}, {});
      for (; !rows->AtEnd(); rows->MoveNext()) {
        for (int i = 0; i < 5; ++i) benchmark::DoNotOptimize(rows->Text(i));
      }
    }
  })->Unit(benchmark::kMillisecond);
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

/// Prints as usual and keeps each benchmark's best processor time: the machine may be busy with other things.
class BestTimes : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const auto& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      const auto [entry, first] =
          seconds_.try_emplace(run.run_name.function_name, std::numeric_limits<double>::max());
      const double seconds = run.cpu_accumulated_time / static_cast<double>(run.iterations);
      entry->second = std::min(entry->second, seconds);
    }
    ConsoleReporter::ReportRuns(runs);
  }

  void PrintRatio(const std::string& of, const std::string& to, std::string_view remark) const {
    const auto one = seconds_.find(of);
    const auto other = seconds_.find(to);
    if (one == seconds_.end() || other == seconds_.end()) return;  // filtered out
    std::cout << "ratio " << of << " / " << to << " = " << one->second / other->second << ' ' << remark
              << '\n';
  }

 private:
  std::map<std::string, double> seconds_;
};

/// The arguments behind this program's own settings, which they may overrule: runs that are compared take
/// turns, so that a busy machine slows both down.
std::vector<char*> WithDefaults(std::vector<std::string>& arguments) {
  arguments.insert(arguments.begin() + 1, {"--benchmark_repetitions=9", "--benchmark_min_time=0.1",
                                           "--benchmark_enable_random_interleaving=true",
                                           "--benchmark_report_aggregates_only=false"});
  std::vector<char*> pointers;
  for (auto& argument : arguments) pointers.push_back(argument.data());
  return pointers;
}

/// Takes the option out of the arguments.
int TakeContactCount(std::vector<std::string>& arguments) {
  constexpr std::string_view kOption = "--contacts=";
  const auto found =
      std::ranges::find_if(arguments, [&](const auto& text) { return text.starts_with(kOption); });
  if (found == arguments.end()) return 100'000;
  const int count = kestro::base::ToInt32(found->substr(kOption.size()));
  arguments.erase(found);
  return std::max(1, count);
}

}  // namespace

int main(int argument_count, char** argument_values) {
  std::vector<std::string> arguments(argument_values, argument_values + argument_count);
  const int count = TakeContactCount(arguments);
  auto pointers = WithDefaults(arguments);
  argument_count = static_cast<int>(pointers.size());
  benchmark::Initialize(&argument_count, pointers.data());
  if (benchmark::ReportUnrecognizedArguments(argument_count, pointers.data())) return 2;

  kestro::test_support::ContactsDatabase contacts;
  Fill(contacts, count);
  BareConnection bare(contacts.path().string());
  RegisterLookUps(contacts, bare, count);
  for (const auto& search : kSearches) RegisterSearch(contacts, bare, search);
  RegisterLists(contacts);

  BestTimes times;
  benchmark::RunSpecifiedBenchmarks(&times);
  std::cout << count << " contacts\n";
  times.PrintRatio("FindContactsByPhone", "prepared SELECT", "(goal <= 3)");
  for (const auto& search : kSearches) {
    const bool four_fields = *search.parts[0] != '\0' && *search.parts[1] != '\0';
    // One field lets thousands pass, which are then put into the order of letters instead of bytes.
    const std::string_view remark = four_fields ? "(goal <= 1.2)" : "(no goal)";
    times.PrintRatio(std::string("SearchContacts, ") + search.name, std::string("LIKE, ") + search.name,
                     remark);
  }
  return 0;
}
