#include "scenario/script.h"

#include <algorithm>
#include <optional>
#include <span>

#include "scenario/quoting.h"
#include "scenario/script_line.h"

namespace kestro::scenario {
namespace {

using Words = std::span<const Word>;

bool IsCapital(char character) { return character >= 'A' && character <= 'Z'; }

Argument ArgumentOf(const Word& word) {
  const auto number = word.kind == Word::Kind::kBare ? ParseNumber(word.text) : std::nullopt;
  return {word.text, number.value_or(0), number.has_value()};
}

/// Whether the word is what one alternative of a form asks for.
bool FitsAlternative(std::string_view alternative, const Word& word) {
  if (alternative == "TEXT") return word.kind == Word::Kind::kText;
  if (word.kind != Word::Kind::kBare) return false;
  if (alternative == "NUMBER") return ParseNumber(word.text).has_value();
  return IsCapital(alternative.front()) || alternative == word.text;
}

bool Fits(std::string_view pattern, const Word& word) {
  while (!pattern.empty()) {
    const auto bar = pattern.find('|');
    if (FitsAlternative(pattern.substr(0, bar), word)) return true;
    pattern.remove_prefix(bar == std::string_view::npos ? pattern.size() : bar + 1);
  }
  return false;
}

/// A word that stands for itself says nothing beyond the form's kind.
bool IsArgument(std::string_view pattern) {
  return IsCapital(pattern.front()) || pattern.find('|') != std::string_view::npos;
}

/// "keyword ARGUMENT", "keyword" or "ARGUMENT", without the brackets.
struct OptionalGroup {
  std::string_view keyword;
  std::string_view argument;
};

OptionalGroup GroupOf(std::string_view inside) {
  const auto [first, second] = TakeFirstWord(inside);
  if (second.empty() && IsArgument(first)) return {{}, first};
  return {first, second};
}

/// Takes one optional group off the words; false when they do not begin with it.
bool TakeGroup(const OptionalGroup& group, Words& words, Action& action) {
  Words rest = words;
  if (!group.keyword.empty()) {
    if (rest.empty() || !Fits(group.keyword, rest.front())) return false;
    rest = rest.subspan(1);
  }
  Argument argument;
  if (!group.argument.empty()) {
    if (rest.empty() || !Fits(group.argument, rest.front())) return false;
    argument = ArgumentOf(rest.front());
    rest = rest.subspan(1);
  }
  words = rest;
  return action.options.emplace(group.keyword, argument).second;
}

bool TakeGroups(std::string_view form, Words& words, Action& action) {
  std::vector<OptionalGroup> groups;
  while (form.starts_with('[')) {
    const auto end = form.find(']');
    groups.push_back(GroupOf(form.substr(1, end - 1)));
    form = form.substr(std::min(form.size(), end + 2));
  }
  while (!words.empty()) {
    const bool taken = std::any_of(groups.begin(), groups.end(),
                                   [&](const auto& group) { return TakeGroup(group, words, action); });
    if (!taken) return false;
  }
  return true;
}

bool TakePairs(Words words, Action& action) {
  return !words.empty() && std::all_of(words.begin(), words.end(), [&](const Word& word) {
    return word.kind == Word::Kind::kPair && action.options.emplace(word.key, ArgumentOf(word)).second;
  });
}

/// Fills the action when the words are written as the form says.
bool MatchForm(std::string_view form, Words words, Action& action) {
  while (!form.empty() && !form.starts_with('[')) {
    const auto [pattern, rest] = TakeFirstWord(form);
    if (pattern == "PAIRS") return TakePairs(words, action);
    if (words.empty() || !Fits(pattern, words.front())) return false;
    if (IsArgument(pattern)) action.arguments.push_back(ArgumentOf(words.front()));
    words = words.subspan(1);
    form = rest;
  }
  return TakeGroups(form, words, action);
}

bool IsFormOf(const ActionForm& form, std::string_view first_word) {
  return TakeFirstWord(form.form).word == first_word;
}

[[noreturn]] void RaiseNoFormFits(std::string_view first_word) {
  std::string reason;
  for (const ActionForm& form : ActionForms()) {
    if (!IsFormOf(form, first_word)) continue;
    reason.append(reason.empty() ? "expected: " : " | ").append(form.form);
  }
  throw LineError(reason.empty() ? "unknown action " + Quoted(first_word) : reason);
}

/// expect and refuse: the rest of the line belongs to them as it stands.
std::optional<Action> ParseRestOfLine(std::string_view line) {
  const auto [word, rest] = TakeFirstWord(line);
  for (const ActionForm& form : ActionForms()) {
    if (!IsFormOf(form, word) || !form.form.ends_with(" REST")) continue;
    if (rest.empty()) RaiseNoFormFits(word);
    Action action;
    action.kind = form.kind;
    action.text = std::string(word) + " " + std::string(rest);
    action.arguments.push_back({std::string(rest), 0, false});
    return action;
  }
  return std::nullopt;
}

/// Nothing for an empty line or a comment.
std::optional<Action> ParseLine(std::string_view line) {
  if (line.size() > kMaximumLineLength) throw LineError("the line is too long");
  CheckCharacters(line);
  if (auto action = ParseRestOfLine(line)) return action;
  const ScriptLine split = SplitLine(line);
  if (split.words.empty()) return std::nullopt;
  const Word& first = split.words.front();
  if (first.kind != Word::Kind::kBare) throw LineError("an action begins with its name");
  for (const ActionForm& form : ActionForms()) {
    Action action;
    if (!IsFormOf(form, first.text) || !MatchForm(form.form, split.words, action)) continue;
    action.kind = form.kind;
    action.text = split.written;
    return action;
  }
  RaiseNoFormFits(first.text);
}

class ScriptReader {
 public:
  explicit ScriptReader(std::string_view bytes) : rest_(bytes) {
    if (rest_.starts_with("\xEF\xBB\xBF")) rest_.remove_prefix(3);
  }

  std::vector<Action> ReadAll() {
    std::vector<Action> actions;
    if (ReadUntilEnd(actions, 0)) throw ScriptError(line_, R"("end" without "during")");
    return actions;
  }

 private:
  static constexpr int kMaximumDepth = 16;

  /// True when an `end` closed the list, false at the end of the script.
  bool ReadUntilEnd(std::vector<Action>& actions, int depth) {
    while (!rest_.empty()) {
      auto action = ReadLine();
      if (!action) continue;
      if (action->kind == ActionKind::kEnd) return true;
      if (action->kind == ActionKind::kDuring) ReadBlock(*action, depth + 1);
      actions.push_back(std::move(*action));
    }
    return false;
  }

  void ReadBlock(Action& during, int depth) {
    if (depth > kMaximumDepth) throw ScriptError(during.line, "too many nested blocks");
    if (!ReadUntilEnd(during.block, depth)) throw ScriptError(during.line, R"("during" without "end")");
    during.end_line = line_;
  }

  std::optional<Action> ReadLine() {
    ++line_;
    const auto end = rest_.find('\n');
    std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    try {
      auto action = ParseLine(line);
      if (action) action->line = line_;
      return action;
    } catch (const LineError& error) {
      throw ScriptError(line_, error.what());
    }
  }

  std::string_view rest_;
  int line_ = 0;
};

}  // namespace

std::int32_t Action::Number(std::size_t index) const {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(arguments.at(index).number));
}

const Argument* Action::Option(std::string_view name) const {
  const auto found = options.find(name);
  return found == options.end() ? nullptr : &found->second;
}

std::vector<Action> ParseScript(std::string_view bytes) { return ScriptReader(bytes).ReadAll(); }

}  // namespace kestro::scenario
