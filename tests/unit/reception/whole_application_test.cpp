#include <algorithm>
#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "programs/cti-scenario/posix_machine.h"
#include "scenario/session.h"
#include "scenario/world.h"
#include "unit/support/temporary_folder.h"
#include "whole/headless_front_end.h"

namespace kestro {
namespace {

constexpr std::string_view kDatabase = "C:\\Data\\CTIDB.mdb";

/// The application with a call on its card. `meanwhile_` runs while one of its questions is on the screen.
class WholeApplication : public testing::Test {
 protected:
  WholeApplication() {
    machine_.Files().CopyFileTo("C:\\Program\\DBTemplate.tpl", kDatabase, true);
    scenario::LoadAddressBook(
        "contact Name=\"Jan\" Phone1=\"602111222\"\ncontact Name=\"Eva\" Phone1=\"602333444\"",
        machine_.Database(), scenario::ConnectionStringOf(kDatabase));
    session_.exchange.AddDevice({"EXT 101"});
    session_.SetSetting("PhoneLine", "EXT 101");
    session_.SetSetting("DatabasePath", kDatabase);
    session_.SetSetting("FirstStartDone", "1");
    session_.StartApplication();
    Ring("602111222");
  }

  void Ring(const std::string& number) {
    exchange::Call call;
    call.handle = session_.exchange.NewHandle();
    call.caller_id = number;
    session_.exchange.Offer(call);
  }
  forms::Form& Window(std::string_view name) { return *session_.application()->FindForm(name); }
  void Click(std::string_view window, std::string_view control) {
    ASSERT_TRUE(front_end_.Driver().Click(Window(window), *Window(window).FindControl(control)));
  }
  std::string Text(std::string_view control) {
    return dynamic_cast<const forms::TextBox&>(*Window("frmEditContact").FindControl(control)).text();
  }
  /// The editor holds something that is not stored, and asks about it.
  void LeaveEntriesInEditor() {
    Click("ContactDetail", "cmdNew");
    front_end_.Driver().Type(Window("frmEditContact"), *Window("frmEditContact").FindControl("txtName"),
                             "New");
  }

  test_support::TemporaryFolder folder_;
  programs::PosixMachine machine_{folder_.path(), KESTRO_PROGRAM_DIR};
  std::function<void()> meanwhile_;
  int questions_ = 0;
  test::HeadlessFrontEnd front_end_{[this](std::string_view, int, ports::BoxAnswer planned) {
    ++questions_;
    if (meanwhile_) meanwhile_();
    return planned;
  }};
  scenario::Transcript transcript_{[](std::string_view) {}};
  scenario::Session session_{machine_, front_end_, transcript_};
};

TEST_F(WholeApplication, TheEditorGetsWhatWasOnTheCardBeforeACallDuringTheQuestion) {
  LeaveEntriesInEditor();
  meanwhile_ = [this] { Ring("602333444"); };
  Click("ContactDetail", "cmdEdit");
  EXPECT_EQ(questions_, 1);
  EXPECT_EQ(Text("txtName"), "Jan");

  LeaveEntriesInEditor();  // beside Eva's card
  meanwhile_ = [this] { Ring("602111222"); };
  Click("ContactDetail", "cmdNew");
  EXPECT_EQ(questions_, 2);
  EXPECT_EQ(Text("txtPhone1"), "602333444");
}

TEST_F(WholeApplication, AListThatIsGoneMeanwhileIsNotRead) {
  session_.application()->Activate();
  auto& grid = dynamic_cast<forms::Grid&>(*Window("frmMainForm").FindControl("ContactsGrid"));
  ASSERT_TRUE(front_end_.Driver().PressRow(Window("frmMainForm"), grid, 0));
  front_end_.Post([this] {
    session_.database.SetFault(scenario::DatabaseFault::kReading);
    Click("frmMainForm", "btnSearch");
  });
  Click("frmMainForm", "mnuEditContact");
  EXPECT_FALSE(Window("frmEditContact").visible());
  EXPECT_EQ(questions_, 0);
}

/// A control that is made and not placed is one that the user never sees.
TEST_F(WholeApplication, EveryWindowHasAPlaceForEachOfItsControls) {
  int controls = 0;
  for (forms::Form* form : session_.application()->Forms()) {
    for (const forms::Control* control : form->controls()) {
      if (control->kind() == forms::ControlKind::kMenuItem) continue;
      const auto& placed = (control->parent() == nullptr ? form->body() : *control->parent()).placed();
      const auto times = std::ranges::count(placed, control, &forms::Container::Placed::control);
      EXPECT_EQ(times, 1) << form->name() << "." << control->name();
      ++controls;
    }
  }
  EXPECT_GT(controls, 100);
}

}  // namespace
}  // namespace kestro
