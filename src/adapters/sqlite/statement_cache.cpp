#include "adapters/sqlite/statement_cache.h"

#include <limits>

#include "adapters/sqlite/sqlite_error.h"
#include "adapters/sqlite/unused_memory.h"

namespace kestro::adapters {

void StatementCache::Lease::GiveBack() {
  if (node_.empty()) return;
  sqlite3_reset(get());  // its result repeats an error that was raised before
  sqlite3_clear_bindings(get());
  if (cache_->idle_.size() < kCapacity) {
    cache_->idle_.insert(std::move(node_));  // keeps the node when the text is there already
  }
  node_ = {};
  ReturnUnusedMemory();
}

StatementCache::Lease StatementCache::Take(std::string_view text) {
  if (const auto found = idle_.find(text); found != idle_.end()) return {*this, idle_.extract(found)};
  Statements fresh;
  fresh.emplace(std::string(text), Prepare(text));
  return {*this, fresh.extract(fresh.begin())};
}

StatementPointer StatementCache::Prepare(std::string_view text) const {
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    RaiseDatabaseError("The statement is too long.");
  }
  sqlite3_stmt* prepared = nullptr;
  const char* rest = nullptr;
  const int result = sqlite3_prepare_v3(database_, text.data(), static_cast<int>(text.size()),
                                        SQLITE_PREPARE_PERSISTENT, &prepared, &rest);
  StatementPointer statement(prepared);
  CheckResult(result, database_, "The statement is not valid");
  const std::string_view behind = text.substr(static_cast<std::size_t>(rest - text.data()));
  if (!statement || behind.find_first_not_of(" \t\r\n;") != std::string_view::npos) {
    RaiseDatabaseError("The text is not exactly one statement.");
  }
  return statement;
}

}  // namespace kestro::adapters
