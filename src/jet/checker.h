#pragma once

#include <string>
#include <vector>

namespace kestro::jet {

class Database;

struct CheckResult {
  std::vector<std::string> findings;  // one violation each; at most kMostFindings
  std::size_t pages = 0;
  std::size_t tables = 0;
  std::size_t rows = 0;
  std::size_t index_entries = 0;
};

inline constexpr std::size_t kMostFindings = 1000;

/// Reads the whole file and compares everything that must agree: free-space words, slots, usage maps and
/// owners of pages, definitions, rows, long values, indexes and their keys. Changes nothing; never throws for
/// what it finds.
CheckResult CheckDatabase(Database& database);

}  // namespace kestro::jet
