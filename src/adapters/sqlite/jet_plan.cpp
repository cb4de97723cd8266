#include "adapters/sqlite/jet_plan.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <new>
#include <vector>

namespace kestro::adapters {
namespace {

using jet::IntegerRange;

/// Plans are made once for a statement and kept, also from the time when a table was empty: every table is
/// taken for a large one.
constexpr double kRows = 100'000;
constexpr double kLookUpCost = 3;        // of one row through an index, against 1 for the next row of a scan
constexpr double kIndexEntryCost = 0.3;  // of an entry of an index without its row
constexpr int kRowid = -1;

/// The places of the constraints that narrow a column down; -1: there is none.
struct Bounds {
  int equal = -1;
  int from = -1;
  int to = -1;
};

Bounds BoundsOf(const sqlite3_index_info& info, int column, bool is_key) {
  Bounds bounds;
  for (int i = 0; i < info.nConstraint; ++i) {
    const auto& constraint = info.aConstraint[i];
    const bool ours = constraint.iColumn == column || (is_key && constraint.iColumn == kRowid);
    if (constraint.usable == 0 || !ours) continue;
    switch (constraint.op) {
      case SQLITE_INDEX_CONSTRAINT_EQ:
        bounds.equal = i;
        break;
      case SQLITE_INDEX_CONSTRAINT_GT:
      case SQLITE_INDEX_CONSTRAINT_GE:
        bounds.from = i;
        break;
      case SQLITE_INDEX_CONSTRAINT_LT:
      case SQLITE_INDEX_CONSTRAINT_LE:
        bounds.to = i;
        break;
      default:
        break;
    }
  }
  return bounds;
}

struct Candidate {
  JetPlan plan;
  Bounds bounds;
  double rows = kRows;
  double cost = kRows;
  bool ordered = false;
  bool unique = false;
};

bool IsColumn(const JetTable& table, int asked, std::size_t column) {
  if (asked == kRowid) return table.has_key() && table.key_column() == column;
  return std::cmp_equal(asked, column);
}

bool OnlyOrder(const JetTable& table, const sqlite3_index_info& info, std::size_t column) {
  return info.nOrderBy == 1 && info.aOrderBy[0].desc == 0 &&
         IsColumn(table, info.aOrderBy[0].iColumn, column);
}

/// No row has to be read when nothing or only the key is asked for.
bool NeedsRows(const sqlite3_index_info& info, std::size_t column) {
  constexpr std::size_t kLastMaskedColumn = 62;
  if (info.colUsed == 0) return false;
  return column > kLastMaskedColumn || info.colUsed != sqlite3_uint64{1} << column;
}

std::optional<Candidate> ThroughIndex(const JetTable& table, const sqlite3_index_info& info,
                                      std::size_t number) {
  const jet::Index& index = table.table().indexes()[number];
  if (!index.searchable) return std::nullopt;
  const std::size_t column = index.columns.front().column;
  const bool is_key = table.has_key() && number == table.key_index();
  Candidate found;
  found.bounds = BoundsOf(info, static_cast<int>(column), is_key);
  found.plan.access = JetPlan::Access::kIndex;
  found.plan.position = number;
  found.plan.equal = found.bounds.equal >= 0;
  found.plan.from = !found.plan.equal && found.bounds.from >= 0;
  found.plan.to = !found.plan.equal && found.bounds.to >= 0;
  const bool bounded = found.plan.equal || found.plan.from || found.plan.to;
  // Without a bound it serves for the order or for counting; an index that lacks rows does not.
  if (!bounded && !is_key) return std::nullopt;
  found.unique = found.plan.equal && index.unique;
  found.ordered = found.unique || OnlyOrder(table, info, column);
  if (found.plan.equal) {
    found.rows = found.unique ? 1 : 4;
  } else if (bounded) {
    found.rows = found.plan.from && found.plan.to ? kRows / 16 : kRows / 4;
  }
  found.cost = found.rows * (is_key && !NeedsRows(info, column) ? kIndexEntryCost : kLookUpCost) + 1;
  return found;
}

/// "ORDER BY text" or "ORDER BY text, key".
std::optional<Candidate> InTextOrder(const JetTable& table, const sqlite3_index_info& info) {
  const bool form =
      info.nOrderBy == 1 || (info.nOrderBy == 2 && info.aOrderBy[1].desc == 0 && table.has_key() &&
                             IsColumn(table, info.aOrderBy[1].iColumn, table.key_column()));
  if (!form || !table.has_key() || info.aOrderBy[0].iColumn < 0) return std::nullopt;
  const auto column = static_cast<std::size_t>(info.aOrderBy[0].iColumn);
  if (!table.table().columns()[column].IsText()) return std::nullopt;
  Candidate found;
  found.plan.access = JetPlan::Access::kOrder;
  found.plan.position = column;
  found.plan.descending = info.aOrderBy[0].desc != 0;
  found.ordered = true;
  found.cost = NeedsRows(info, table.key_column()) ? kRows * kLookUpCost : kRows;
  return found;
}

void Answer(Candidate chosen, const JetTable& table, sqlite3_index_info& info) {
  int next = 0;
  for (const int place : {chosen.bounds.equal, chosen.plan.equal ? -1 : chosen.bounds.from,
                          chosen.plan.equal ? -1 : chosen.bounds.to}) {
    if (place >= 0) info.aConstraintUsage[place].argvIndex = ++next;
  }
  for (int i = 0; i < info.nConstraint; ++i) {
    const auto& constraint = info.aConstraint[i];
    if (constraint.usable == 0 || constraint.op != kContainsTextConstraint || constraint.iColumn < 0)
      continue;
    const auto column = static_cast<std::size_t>(constraint.iColumn);
    if (!table.table().columns()[column].IsText()) continue;
    info.aConstraintUsage[i].argvIndex = ++next;
    info.aConstraintUsage[i].omit = 1;
    chosen.plan.containing.push_back(column);
  }
  info.idxNum = chosen.plan.PackedNumber();
  if (!chosen.plan.containing.empty()) {
    info.idxStr = sqlite3_mprintf("%s", chosen.plan.PackedText().c_str());
    if (info.idxStr == nullptr) throw std::bad_alloc();
    info.needToFreeIdxStr = 1;
  }
  info.estimatedCost = chosen.cost;
  info.estimatedRows = static_cast<sqlite3_int64>(chosen.rows);
  info.orderByConsumed = chosen.ordered && info.nOrderBy > 0 ? 1 : 0;
  if (chosen.unique) info.idxFlags |= SQLITE_INDEX_SCAN_UNIQUE;
}

/// The whole number at or beside a real one, towards the inside of a range.
std::int64_t Rounded(double number, double (*round)(double)) {
  constexpr double kLimit = 9e18;
  return static_cast<std::int64_t>(std::clamp(round(number), -kLimit, kLimit));
}

/// Narrows `range` down to one side of the value; false when nothing is left.
bool Narrow(IntegerRange& range, sqlite3_value* value, bool from, bool to) {
  switch (sqlite3_value_numeric_type(value)) {
    case SQLITE_INTEGER:
      if (from) range.first = sqlite3_value_int64(value);
      if (to) range.last = sqlite3_value_int64(value);
      return true;
    case SQLITE_FLOAT: {
      const double number = sqlite3_value_double(value);
      if (from) range.first = Rounded(number, std::ceil);
      if (to) range.last = Rounded(number, std::floor);
      return true;
    }
    case SQLITE_NULL:
      return false;
    default:
      return !from;  // texts are above all numbers
  }
}

}  // namespace

int JetPlan::PackedNumber() const {
  return static_cast<int>(access) | (equal ? 4 : 0) | (from ? 8 : 0) | (to ? 16 : 0) | (descending ? 32 : 0) |
         static_cast<int>(position << 6U);
}

std::string JetPlan::PackedText() const {
  std::string text;
  for (const std::size_t column : containing) text += std::to_string(column) + ' ';
  return text;
}

JetPlan JetPlan::FromPacked(int packed, std::string_view text) {
  JetPlan plan;
  plan.access = static_cast<Access>(packed & 3);
  plan.position = static_cast<std::size_t>(packed) >> 6U;
  plan.equal = (packed & 4) != 0;
  plan.from = (packed & 8) != 0;
  plan.to = (packed & 16) != 0;
  plan.descending = (packed & 32) != 0;
  while (!text.empty()) {
    const std::size_t end = text.find(' ');
    std::from_chars(text.data(), text.data() + end, plan.containing.emplace_back());
    text.remove_prefix(end + 1);
  }
  return plan;
}

std::optional<IntegerRange> JetPlan::Range(std::span<sqlite3_value*> values) const {
  IntegerRange range;
  std::size_t next = 0;
  if (equal && !Narrow(range, values[next++], true, true)) return std::nullopt;
  if (from && !Narrow(range, values[next++], true, false)) return std::nullopt;
  if (to && !Narrow(range, values[next++], false, true)) return std::nullopt;
  if (range.first && range.last && *range.first > *range.last) return std::nullopt;
  return range;
}

void ChoosePlan(const JetTable& table, sqlite3_index_info& info) {
  std::vector<Candidate> candidates(1);  // the scan
  for (std::size_t index = 0; index < table.table().indexes().size(); ++index) {
    if (const auto found = ThroughIndex(table, info, index)) candidates.push_back(*found);
  }
  if (const auto found = InTextOrder(table, info)) candidates.push_back(*found);
  // What SQLite would add for sorting the rows.
  const auto whole_cost = [&info](const Candidate& candidate) {
    const bool sorted = candidate.ordered || info.nOrderBy == 0;
    return sorted ? candidate.cost : candidate.cost + 3 * candidate.rows * std::log2(candidate.rows + 1);
  };
  Answer(*std::ranges::min_element(candidates, {}, whole_cost), table, info);
}

}  // namespace kestro::adapters
