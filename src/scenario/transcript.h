#pragma once

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kestro::scenario {

/// What left the application, line by line, in order. Every line goes to the
/// sink at once; those since the last action are remembered for expectations.
class Transcript {
 public:
  using Sink = std::function<void(std::string_view line)>;

  explicit Transcript(Sink sink) : sink_(std::move(sink)) {}

  /// An action begins: prints it behind "> ". Unless it only looks at lines
  /// (`looking`), the lines of the action before it are forgotten.
  void Begin(std::string_view action, bool looking);
  /// Between the two, actions run inside another one: they begin with its lines, and it keeps theirs.
  void EnterBlock() { first_of_action_.push_back(first_of_action_.back()); }
  void LeaveBlock() { first_of_action_.pop_back(); }

  void Add(std::string line);
  /// Lines that come from now on are dropped: the scenario is over.
  void Close() { closed_ = true; }

  /// Since the last action: a line equals the text (blanks in front of it ignored) / begins with it.
  [[nodiscard]] bool Contains(std::string_view text) const;
  [[nodiscard]] bool ContainsBeginning(std::string_view text) const;

  /// The last lines printed, at most kTailLength, oldest first.
  [[nodiscard]] const std::deque<std::string>& Tail() const { return tail_; }
  static constexpr std::size_t kTailLength = 20;

 private:
  void Print(std::string line);
  template <class Predicate>
  bool AnyOfAction(Predicate predicate) const;

  Sink sink_;
  bool closed_ = false;
  std::vector<std::string> lines_;
  std::vector<std::size_t> first_of_action_ = {0};
  std::deque<std::string> tail_;
};

}  // namespace kestro::scenario
