#include "adapters/sqlite/text_functions.h"

#include <memory>
#include <new>
#include <string_view>

#include "adapters/sqlite/sqlite_error.h"
#include "adapters/sqlite/text_matcher.h"
#include "adapters/sqlite/text_order.h"

namespace kestro::adapters {
namespace {

std::string_view TextOf(sqlite3_value* value) {
  const auto* const text = static_cast<const char*>(static_cast<const void*>(sqlite3_value_text(value)));
  if (text == nullptr) return {};
  return {text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

void DeleteMatcher(void* matcher) { delete static_cast<TextMatcher*>(matcher); }

int TextOrder(void*, int left_size, const void* left, int right_size, const void* right) {
  return CompareTextOrder({static_cast<const char*>(left), static_cast<std::size_t>(left_size)},
                          {static_cast<const char*>(right), static_cast<std::size_t>(right_size)});
}

}  // namespace

/// The matcher is made once for all rows of a run.
void ContainsText(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
  try {
    const std::string_view text = TextOf(arguments[0]);
    if (auto* const kept = static_cast<TextMatcher*>(sqlite3_get_auxdata(context, 1))) {
      sqlite3_result_int(context, kept->FoundIn(text) ? 1 : 0);
      return;
    }
    auto matcher = std::make_unique<TextMatcher>(TextOf(arguments[1]));
    sqlite3_result_int(context, matcher->FoundIn(text) ? 1 : 0);
    sqlite3_set_auxdata(context, 1, matcher.release(), DeleteMatcher);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);  // no exception may pass through the engine
  }
}

void RegisterTextFunctions(sqlite3* database) {
  constexpr std::string_view kAction = "The database functions cannot be set up";
  CheckResult(sqlite3_create_function_v2(database, "ContainsText", 2,
                                         SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                                         ContainsText, nullptr, nullptr, nullptr),
              database, kAction);
  CheckResult(sqlite3_create_collation_v2(database, "TextOrder", SQLITE_UTF8, nullptr, TextOrder, nullptr),
              database, kAction);
}

}  // namespace kestro::adapters
