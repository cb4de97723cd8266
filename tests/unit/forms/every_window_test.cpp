#include <algorithm>

#include <gtest/gtest.h>

#include "forms/form.h"
#include "programs/cti-scenario/posix_machine.h"
#include "scenario/session.h"
#include "unit/support/temporary_folder.h"
#include "whole/headless_front_end.h"

namespace kestro {
namespace {

/// A control that is made and not placed is one that the user never sees.
TEST(EveryWindow, HasAPlaceForEachOfItsControls) {
  const test_support::TemporaryFolder folder;
  programs::PosixMachine machine(folder.path(), KESTRO_PROGRAM_DIR);
  test::HeadlessFrontEnd front_end([](std::string_view, int, ports::BoxAnswer planned) { return planned; });
  scenario::Transcript transcript([](std::string_view) {});
  scenario::Session session(machine, front_end, transcript);
  machine.Files().CopyFileTo("C:\\Program\\DBTemplate.tpl", "C:\\Data\\CTIDB.mdb", true);
  session.SetSetting("DatabasePath", "C:\\Data\\CTIDB.mdb");
  session.SetSetting("FirstStartDone", "1");
  session.exchange.AddDevice({"EXT 101"});
  session.SetSetting("PhoneLine", "EXT 101");
  session.StartApplication();
  int controls = 0;
  for (forms::Form* form : session.application()->Forms()) {
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
