#include "forms/event_door.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "base/runtime_error.h"

namespace kestro::forms {
namespace {

class Door final : public EventDoor {
 public:
  using EventDoor::exit_status;
  using EventDoor::handles_event;
  int left = 0;

 private:
  void LeaveLoops() noexcept override { ++left; }
};

using Cause = EventDoor::Cause;

TEST(EventDoor, KnowsWhatCausedTheInnermostEvent) {
  Door door;
  std::vector<bool> by_user;
  const auto look = [&] { by_user.push_back(door.user_action()); };
  door.Run(Cause::kSystem, [&] {
    look();
    door.Run(Cause::kUser, look);
    look();
    EXPECT_TRUE(door.handles_event());
  });
  look();
  EXPECT_EQ((std::vector<bool>{false, true, false, false}), by_user);
  EXPECT_FALSE(door.handles_event());
}

TEST(EventDoor, NothingThrownComesThroughAndTheEndIsKept) {
  const struct {
    std::function<void()> handler;
    int exit_status;
    int rethrown;  // which of the catch clauses below
  } cases[] = {{[] { throw base::ProcessEnded{}; }, 0, 1},
               {[] { throw std::runtime_error("broken"); }, 1, 2},
               {[] { throw 7; }, 1, 7}};
  for (const auto& one : cases) {
    Door door;
    EXPECT_NO_THROW(door.RethrowEnd());
    door.Run(Cause::kUser, one.handler);
    EXPECT_EQ(1, door.left);
    EXPECT_EQ(one.exit_status, door.exit_status());
    EXPECT_THROW(door.ThrowIfEnded(), base::ProcessEnded);
    door.Run(Cause::kUser, [] { ADD_FAILURE() << "a handler after the end"; });
    int number = 0;
    try {
      door.RethrowEnd();
    } catch (const base::ProcessEnded&) {
      number = 1;
    } catch (const std::runtime_error&) {
      number = 2;
    } catch (int thrown) {
      number = thrown;
    }
    EXPECT_EQ(one.rethrown, number);
  }
}

}  // namespace
}  // namespace kestro::forms
