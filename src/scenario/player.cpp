#include "scenario/player.h"

#include <utility>

#include "base/runtime_error.h"
#include "scenario/dump_actions.h"
#include "scenario/line_actions.h"
#include "scenario/window_actions.h"

namespace kestro::scenario {
namespace {

/// An expectation that does not hold.
class Failure : public std::runtime_error {
 public:
  Failure(int line, const std::string& reason) : std::runtime_error(reason), line_(line) {}
  [[nodiscard]] int line() const { return line_; }

 private:
  int line_;
};

/// When an action makes sense. Bits, because some make sense at several times.
enum Time : unsigned { kBeforeStart = 1, kRunning = 2, kAfterEnd = 4 };

unsigned TimeOf(ActionKind kind) {
  switch (kind) {
    case ActionKind::kExpect:
    case ActionKind::kRefuse:
    case ActionKind::kDumpSettings:
      return kBeforeStart | kRunning | kAfterEnd;
    case ActionKind::kDumpSql:
      return kRunning | kAfterEnd;
    case ActionKind::kSetting:
    case ActionKind::kLineFunctionFails:
    case ActionKind::kLineFunctionWorks:
    case ActionKind::kLog:
    case ActionKind::kAnswer:
    case ActionKind::kFile:
    case ActionKind::kFileCancel:
    case ActionKind::kDialObject:
    case ActionKind::kDatabase:
    case ActionKind::kDuring:
      return kBeforeStart | kRunning;
    default:
      return kind <= ActionKind::kStart ? kBeforeStart : kRunning;
  }
}

bool OnlyLooks(const Action& action) {
  return action.kind == ActionKind::kExpect || action.kind == ActionKind::kRefuse;
}

}  // namespace

Player::Player(Machine& machine, FrontEnd& front_end, Transcript& transcript, WindowViewer viewer)
    : session_(machine, front_end, transcript), world_(session_), viewer_(std::move(viewer)) {
  session_.windows.SetModalHook([this](forms::Form& window) { RunBlockLater(window); });
  session_.windows.SetPauseHook([this] { GoOnLater(); });
}

Player::~Player() { session_.transcript.Close(); }

Verdict Player::Play(const std::vector<Action>& script) {
  try {
    PlayAll(script);
    return {};
  } catch (const ScriptError& error) {
    return {Verdict::kUnreadable, error.line(), error.what()};
  } catch (const Failure& failure) {
    return {Verdict::kFailed, failure.line(), failure.what()};
  } catch (const std::exception& error) {
    return {Verdict::kFailed, last_line_, error.what()};
  }
}

void Player::PlayAll(const std::vector<Action>& script) {
  for (const Action& action : script) Perform(action);
  CheckLeftOvers();
  ViewAll();
}

void Player::Perform(const Action& action) {
  last_line_ = action.line;
  session_.transcript.Begin(action.text, OnlyLooks(action));
  CheckTime(action);
  try {
    Dispatch(action);
    if (session_.application() != nullptr && !ended_) session_.front_end.Driver().Settle();
  } catch (const base::ProcessEnded&) {
    ended_ = true;
  } catch (const base::RuntimeError& error) {
    throw Failure(action.line, "the application let an error out: " + std::to_string(error.number()) + " " +
                                   error.source() + " " + error.description());
  }
  RaiseWhatWentWrong(action);
  ViewAppeared();
}

void Player::CheckTime(const Action& action) const {
  const unsigned times = TimeOf(action.kind);
  if (ended_) {
    if ((times & kAfterEnd) == 0) throw ScriptError(action.line, "the application has ended");
  } else if (session_.application() == nullptr) {
    if ((times & kBeforeStart) == 0) throw ScriptError(action.line, "the application has not been started");
  } else if ((times & kRunning) == 0) {
    throw ScriptError(action.line, "the application has been started already");
  }
}

void Player::Dispatch(const Action& action) {
  if (PerformOwnAction(action)) return;
  if (PerformLineAction(action, session_.exchange, session_.machine.CodePage())) return;
  if (session_.application() == nullptr) {
    world_.Take(action);
  } else if (!PerformWindowAction(action, session_)) {
    PerformDumpAction(action, session_);
    if (action.kind == ActionKind::kDumpWindow) View(FindWindow(action, action.Text(0), session_));
  }
}

bool Player::PerformOwnAction(const Action& action) {
  switch (action.kind) {
    case ActionKind::kExpect:
    case ActionKind::kRefuse:
      Expect(action);
      return true;
    case ActionKind::kStart:
      Start(action);
      return true;
    case ActionKind::kSetting:
      session_.SetSetting(action.Text(0), action.Text(1));
      return true;
    case ActionKind::kLog:
      session_.log.ShowLines(action.Text(0) == "on");
      return true;
    case ActionKind::kAnswer:
      QueueAnswer(action);
      return true;
    case ActionKind::kLater:
      throw ScriptError(action.line, R"("later" has its place between "during" and "end")");
    case ActionKind::kDuring:
      blocks_.push_back(&action);
      return true;
    case ActionKind::kFile:
      session_.file_dialogs.Queue(action.Text(0));
      return true;
    case ActionKind::kFileCancel:
      session_.file_dialogs.Queue(std::nullopt);
      return true;
    case ActionKind::kDialObject:
      session_.dialling.SetDialObject(DialObjectOfWord(action.Text(0)));
      return true;
    case ActionKind::kDatabase:
      session_.database.SetFault(DatabaseFaultOfWord(action.Text(0)));
      return true;
    case ActionKind::kDumpSettings:
      PerformDumpAction(action, session_);
      return true;
    default:
      return false;
  }
}

void Player::Start(const Action& action) {
  world_.Build(action.line);
  session_.StartApplication();
}

void Player::QueueAnswer(const Action& action) {
  if (const auto answer = AnswerOfWord(action.Text(0))) session_.boxes.Queue(*answer);
}

void Player::Expect(const Action& action) const {
  const std::string& text = action.Text(0);
  if (action.kind == ActionKind::kExpect && !session_.transcript.Contains(text)) {
    throw Failure(action.line, "no such line: " + text);
  }
  if (action.kind == ActionKind::kRefuse && session_.transcript.ContainsBeginning(text)) {
    throw Failure(action.line, "there is such a line: " + text);
  }
}

/// A box that the window opens as it comes up is answered first.
void Player::RunBlockLater(forms::Form& window) {
  session_.front_end.Post([this, &window] {
    if (session_.boxes.open()) {
      RunBlockLater(window);
    } else {
      RunBlock(window);
    }
  });
}

/// Runs inside the application's own call: nothing but the end of the process
/// may come out, or it would go through the application's error handlers.
void Player::RunBlock(forms::Form& window) {
  const bool ended_before = ended_;
  try {
    if (!block_error_) PerformBlock(TakeBlock(window));
  } catch (...) {
    block_error_ = std::current_exception();
  }
  if (ended_ && !ended_before) throw base::ProcessEnded{};
  if (window.visible() && !resting_) window.Hide();
}

Player::Block Player::TakeBlock(forms::Form& window) {
  if (resting_) return *std::exchange(resting_, std::nullopt);
  if (blocks_.empty()) throw Failure(last_line_, "no \"during\" tells what to do with " + window.name());
  const Action* during = blocks_.front();
  blocks_.pop_front();
  return {during, &window};
}

void Player::GoOnLater() {
  if (!resting_) return;
  session_.front_end.Post([this] {
    if (!resting_ || !resting_->window->visible()) return;
    if (session_.boxes.open()) {
      GoOnLater();
    } else {
      RunBlock(*resting_->window);
    }
  });
}

void Player::PerformBlock(Block block) {
  session_.transcript.EnterBlock();
  ViewAppeared();
  const std::vector<Action>& actions = block.during->block;
  while (block.next < actions.size()) {
    const Action& action = actions[block.next++];
    if (action.kind != ActionKind::kLater) {
      Perform(action);
    } else if (session_.windows.in_pause()) {
      session_.transcript.Begin(action.text, false);
      resting_ = block;
      break;
    }
  }
  session_.transcript.LeaveBlock();
  if (!resting_) EndBlock(block);
}

/// A window that works by itself may still be open: it is to close itself.
void Player::EndBlock(Block block) {
  if (!block.over) session_.transcript.Begin("end", true);
  block.over = true;
  if (ended_ || !block.window->visible()) return;
  if (!session_.windows.in_pause()) {
    throw Failure(block.during->end_line, "the window " + block.window->name() + " is still open");
  }
  resting_ = block;
}

void Player::RaiseWhatWentWrong(const Action& action) {
  if (block_error_) std::rethrow_exception(block_error_);
  if (const auto problem = session_.problems.Take()) throw Failure(action.line, *problem);
  if (!resting_ || resting_->window->visible()) return;
  const Block closed = *std::exchange(resting_, std::nullopt);
  if (!closed.over && !ended_) {
    throw Failure(closed.during->end_line, "the window " + closed.window->name() + " closed before the end");
  }
}

void Player::CheckLeftOvers() const {
  if (const auto unasked = session_.boxes.queued() + session_.file_dialogs.queued(); unasked > 0) {
    throw Failure(last_line_, std::to_string(unasked) + " answer(s) nobody asked for");
  }
  if (!blocks_.empty()) throw Failure(blocks_.front()->line, "no modal window opened for this");
}

void Player::ViewAppeared() {
  for (forms::Form* form : session_.windows.TakeAppeared()) {
    View(*form);
  }
}

void Player::ViewAll() {
  if (session_.application() == nullptr) return;
  for (forms::Form* form : session_.application()->Forms()) View(*form);
}

void Player::View(forms::Form& window) {
  if (viewer_ && !ended_ && window.visible()) viewer_(window);
}

}  // namespace kestro::scenario
