#pragma once

#include <deque>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "scenario/script.h"
#include "scenario/session.h"
#include "scenario/world.h"

namespace kestro::scenario {

/// How a scenario ended.
struct Verdict {
  enum Status : int { kHeld = 0, kFailed = 1, kUnreadable = 2 };

  Status status = kHeld;
  int line = 0;        // of the action at fault
  std::string reason;  // empty when all expectations held
};

/// Called with a window that has just appeared, is dumped, or is there at the end.
using WindowViewer = std::function<void(forms::Form& window)>;

/// Plays one script against one complete application. User-interface thread only.
class Player {
 public:
  /// `viewer` may be empty. All of them must outlive the player.
  Player(Machine& machine, FrontEnd& front_end, Transcript& transcript, WindowViewer viewer = {});
  /// Closes the transcript: what the application does while it is torn down is no part of the scenario.
  ~Player();
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  /// Once. Does not throw for anything that a script or the application does.
  [[nodiscard]] Verdict Play(const std::vector<Action>& script);

 private:
  /// A block on its way.
  struct Block {
    const Action* during;
    forms::Form* window;
    std::size_t next = 0;  // of its actions
    bool over = false;     // its `end` has been reached; the window still works
  };

  void PlayAll(const std::vector<Action>& script);
  void Perform(const Action& action);
  void CheckTime(const Action& action) const;
  /// The application may end (base::ProcessEnded) on the way.
  void Dispatch(const Action& action);
  bool PerformOwnAction(const Action& action);
  void Start(const Action& action);
  void QueueAnswer(const Action& action);
  void Expect(const Action& action) const;
  void RunBlockLater(forms::Form& window);
  void RunBlock(forms::Form& window);
  /// A block that rests goes on in the next pause of its window's work.
  void GoOnLater();
  [[nodiscard]] Block TakeBlock(forms::Form& window);
  void PerformBlock(Block block);
  void EndBlock(Block block);
  void RaiseWhatWentWrong(const Action& action);
  void CheckLeftOvers() const;
  void ViewAppeared();
  void ViewAll();
  void View(forms::Form& window);

  Session session_;
  World world_;
  WindowViewer viewer_;
  std::deque<const Action*> blocks_;  // of `during`, in the order in which they are used
  std::optional<Block> resting_;      // waits for the next pause of its window's work
  std::exception_ptr block_error_;    // what ended a block, on its way out of the application
  int last_line_ = 0;
  bool ended_ = false;
};

}  // namespace kestro::scenario
