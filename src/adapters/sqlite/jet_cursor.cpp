#include "adapters/sqlite/jet_cursor.h"

#include <algorithm>

#include "adapters/sqlite/jet_values.h"

namespace kestro::adapters {

void JetCursor::Start(const JetPlan& plan, std::span<sqlite3_value*> values) {
  rows_.emplace<std::monostate>();
  keyed_ = false;
  jet::Table& table = table_.table();
  if (plan.access == JetPlan::Access::kScan) {
    rows_.emplace<jet::Cursor>(table.Scan());
  } else if (plan.access == JetPlan::Access::kIndex) {
    if (const auto range = plan.Range(values)) {
      rows_.emplace<jet::IndexCursor>(table.Search(plan.position, *range));
      keyed_ = table_.has_key() && plan.position == table_.key_index();
    }
  } else {
    JetSession& session = table_.session();
    rows_ = Ordered{session.orders().Get(table, plan.position, plan.descending, session.changes())};
    keyed_ = true;
  }
  contains_.clear();
  const auto parts = values.last(plan.containing.size());
  for (std::size_t i = 0; i < parts.size(); ++i) {
    contains_.push_back({plan.containing[i], TextMatcher(TextOf(parts[i]))});
  }
  Next();
}

void JetCursor::Next() {
  do {
    Move();
  } while (!at_end_ && !Passes());
}

bool JetCursor::Passes() {
  if (contains_.empty()) return true;
  const jet::RowView* const row = Row();
  if (row == nullptr) return false;
  return std::ranges::all_of(contains_,
                             [this, row](const Contains& condition) { return Fulfilled(condition, *row); });
}

// Most texts are looked at where they lie: to decode them took longer than the search.
bool JetCursor::Fulfilled(const Contains& condition, const jet::RowView& row) {
  using Form = jet::StoredText::Form;
  const auto text = row.TextInPlace(condition.column);
  if (text && text->form != Form::kMixed) {
    const std::string_view bytes{reinterpret_cast<const char*>(text->bytes.data()), text->bytes.size()};
    return text->form == Form::kLatin1 ? condition.matcher.FoundInLatin1(bytes)
                                       : condition.matcher.FoundInUtf16(bytes);
  }
  row.Text(condition.column, buffer_);
  return condition.matcher.FoundIn(buffer_);
}

void JetCursor::Move() {
  own_row_.reset();
  id_.reset();
  changes_ = table_.session().changes();
  if (auto* const scan = std::get_if<jet::Cursor>(&rows_)) {
    at_end_ = !scan->Next();
    if (!at_end_) id_ = scan->row().id();
  } else if (auto* const search = std::get_if<jet::IndexCursor>(&rows_)) {
    at_end_ = !search->Next();
    if (!at_end_) id_ = search->id();
  } else if (auto* const ordered = std::get_if<Ordered>(&rows_)) {
    at_end_ = ordered->position == ordered->keys->size();
    if (!at_end_) ++ordered->position;
  } else {
    at_end_ = true;
  }
}

std::optional<std::int64_t> JetCursor::KnownKey() {
  if (!keyed_) return std::nullopt;
  if (const auto* const ordered = std::get_if<Ordered>(&rows_)) {
    return (*ordered->keys)[ordered->position - 1];
  }
  return std::get<jet::IndexCursor>(rows_).key();
}

const jet::RowView* JetCursor::Row() {
  const bool current = changes_ == table_.session().changes();
  if (current && own_row_) return &*own_row_;
  if (current && id_) {
    if (auto* const scan = std::get_if<jet::Cursor>(&rows_)) return &scan->row();
    if (auto* const search = std::get_if<jet::IndexCursor>(&rows_)) return &search->row();
  }
  return ReadAgain();
}

const jet::RowView* JetCursor::ReadAgain() {
  if (!id_) id_ = table_.FindRow(KnownKey().value());
  changes_ = table_.session().changes();
  own_row_ = table_.table().MakeRowView();
  if (!id_ || !table_.table().Read(*id_, *own_row_)) {
    own_row_.reset();
    return nullptr;
  }
  return &*own_row_;
}

std::int64_t JetCursor::Rowid() {
  if (const auto key = KnownKey()) return *key;
  if (!table_.has_key()) return id_.value().ToNumber();
  const jet::RowView* const row = Row();
  return row == nullptr ? 0 : row->Integer(table_.key_column()).value_or(0);
}

void JetCursor::Column(sqlite3_context* context, std::size_t column) {
  if (keyed_ && column == table_.key_column()) {
    if (const auto key = KnownKey()) sqlite3_result_int64(context, *key);
    return;
  }
  const jet::RowView* const row = Row();
  if (row != nullptr) SetResult(context, *row, table_.table().columns()[column], column, buffer_);
}

}  // namespace kestro::adapters
