#include "adapters/sqlite/jet_design.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "base/text.h"
#include "jet/error.h"

namespace kestro::adapters {
namespace {

struct Word {
  std::string text;
  bool quoted = false;
};

[[noreturn]] void Refuse(std::string_view definition) {
  throw jet::Error(jet::ErrorKind::kValue,
                   std::string("'").append(definition).append("' defines no column and no index."));
}

/// The words of one definition: names, quoted names, and each of "(", ")" and "," by itself.
class Words {
 public:
  explicit Words(std::string_view definition) : definition_(definition) {
    constexpr std::string_view kSpace = " \t\r\n";
    constexpr std::string_view kSigns = "(),";
    for (std::size_t at = definition.find_first_not_of(kSpace); at != std::string_view::npos;
         at = definition.find_first_not_of(kSpace, at)) {
      if (definition[at] == '"') {
        at = TakeQuoted(at);
      } else if (kSigns.find(definition[at]) != std::string_view::npos) {
        words_.push_back({std::string(1, definition[at++]), false});
      } else {
        const std::size_t end = std::min(definition.find_first_of(" \t\r\n(),\"", at), definition.size());
        words_.push_back({std::string(definition.substr(at, end - at)), false});
        at = end;
      }
    }
  }

  [[nodiscard]] bool at_end() const { return next_ == words_.size(); }
  /// Takes the word when it is the next one.
  bool Take(std::string_view word) {
    if (at_end() || words_[next_].quoted || !base::EqualIgnoringCase(words_[next_].text, word)) return false;
    ++next_;
    return true;
  }
  void Require(std::string_view word) {
    if (!Take(word)) Refuse(definition_);
  }
  std::string TakeName() {
    if (at_end()) Refuse(definition_);
    return words_[next_++].text;
  }
  std::size_t TakeLength() {
    Require("(");
    const auto number = base::ParseInt32(TakeName());
    Require(")");
    if (!number || *number < 1) Refuse(definition_);
    return static_cast<std::size_t>(*number);
  }
  void RequireEnd() const {
    if (!at_end()) Refuse(definition_);
  }
  [[nodiscard]] std::string_view definition() const { return definition_; }

 private:
  /// Returns the position behind the closing quote.
  std::size_t TakeQuoted(std::size_t at) {
    Word word{{}, true};
    for (++at; at < definition_.size(); ++at) {
      if (definition_[at] == '"' && definition_.substr(at, 2) != "\"\"") {
        words_.push_back(std::move(word));
        return at + 1;
      }
      if (definition_[at] == '"') ++at;
      word.text.push_back(definition_[at]);
    }
    Refuse(definition_);
  }

  std::string_view definition_;
  std::vector<Word> words_;
  std::size_t next_ = 0;
};

struct TypeName {
  std::string_view name;
  jet::ColumnType type;
};

constexpr TypeName kTypes[] = {
    {"AUTONUMBER", jet::ColumnType::kInt32}, {"INTEGER", jet::ColumnType::kInt32},
    {"TEXT", jet::ColumnType::kText},        {"MEMO", jet::ColumnType::kMemo},
    {"BOOLEAN", jet::ColumnType::kBool},     {"DOUBLE", jet::ColumnType::kDouble},
    {"MONEY", jet::ColumnType::kMoney},      {"DATETIME", jet::ColumnType::kDate},
    {"OLE", jet::ColumnType::kOle},
};

void AddColumn(Words& words, jet::TableDesign& design) {
  jet::ColumnDesign column;
  column.name = words.TakeName();
  const std::string type = words.TakeName();
  const auto* const found = std::ranges::find_if(
      kTypes, [&type](const TypeName& known) { return base::EqualIgnoringCase(known.name, type); });
  if (found == std::end(kTypes)) Refuse(words.definition());
  column.type = found->type;
  column.auto_number = found == std::begin(kTypes);
  if (column.type == jet::ColumnType::kText) column.characters = words.TakeLength();
  if (words.Take("PRIMARY")) {
    words.Require("KEY");
    design.indexes.push_back(
        {.name = "PrimaryKey", .columns = {column.name}, .unique = true, .primary = true});
  }
  if (words.Take("NOT")) {
    words.Require("NULL");
    column.required = true;
  }
  design.columns.push_back(std::move(column));
}

void AddIndex(Words& words, jet::TableDesign& design) {
  jet::IndexDesign index;
  index.name = words.TakeName();
  words.Require("(");
  do {
    index.columns.push_back(words.TakeName());
  } while (words.Take(","));
  words.Require(")");
  if (words.Take("IGNORE")) {
    words.Require("NULL");
    index.ignore_nulls = true;
  }
  design.indexes.push_back(std::move(index));
}

}  // namespace

jet::TableDesign ParseTableDesign(std::string_view table, std::span<const std::string_view> definitions) {
  jet::TableDesign design;
  design.name = table;
  for (const std::string_view definition : definitions) {
    Words words(definition);
    if (words.Take("INDEX")) {
      AddIndex(words, design);
    } else {
      AddColumn(words, design);
    }
    words.RequireEnd();
  }
  return design;
}

}  // namespace kestro::adapters
