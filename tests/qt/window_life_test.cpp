#include <QApplication>
#include <QScreen>

#include "adapters/qt/qt_foreground_windows.h"
#include "qt/qt_fixture.h"

namespace kestro::qt_tests {
namespace {

using WindowLife = QtFixture;
using Events = std::vector<std::string>;

TEST_F(WindowLife, ProcessEndedInAHandlerEndsTheProgramsLoop) {
  SampleForm form(host_);
  form.cmdOk.on_click = [] { throw base::ProcessEnded{}; };
  form.Show();
  post_([&] {
    EXPECT_THROW(driver_.Click(form, form.cmdOk), base::ProcessEnded);
    form.events.emplace_back("still running");
  });
  post_([&] { form.events.emplace_back("too late"); });
  EXPECT_EQ(boundary_.RunUntilEnded(), 0);
  EXPECT_EQ(form.events, (Events{"activate", "still running"}));
}

TEST_F(WindowLife, AnUnexpectedExceptionEndsTheProgramWithAFailure) {
  SampleForm form(host_);
  form.cmdOk.on_click = [] { throw std::out_of_range("sample"); };
  form.Show();
  testing::internal::CaptureStderr();
  post_([&] { EXPECT_THROW(driver_.Click(form, form.cmdOk), std::out_of_range); });
  EXPECT_EQ(boundary_.RunUntilEnded(), 1);
  EXPECT_NE(testing::internal::GetCapturedStderr().find("sample"), std::string::npos);
}

TEST_F(WindowLife, ProcessEndedComesThroughEveryModalWindow) {
  SampleForm outer(host_, "Outer");
  SampleForm inner(host_, "Inner");
  Events events;
  outer.cmdOk.on_click = [&] {
    try {
      inner.ShowModal(&outer);
      events.emplace_back("inner returned");
    } catch (const base::ProcessEnded&) {
      events.emplace_back("inner ended");
      throw;
    }
  };
  post_([&] { EXPECT_THROW(driver_.Click(outer, outer.cmdOk), base::ProcessEnded); });
  post_([] { throw base::ProcessEnded{}; });
  EXPECT_THROW(outer.ShowModal(), base::ProcessEnded);
  EXPECT_EQ(events, Events{"inner ended"});
  EXPECT_THROW(inner.ShowModal(), base::ProcessEnded) << "no loop starts any more";
  EXPECT_THROW(host_.DoEvents(), base::ProcessEnded);
}

TEST_F(WindowLife, UnloadingFromItsOwnHandlerIsSafe) {
  auto form = std::make_unique<SampleForm>(host_);
  form->cmdOk.on_click = [&] { form->RequestUnload(forms::kFromCode); };
  form->Show();
  EXPECT_TRUE(driver_.Click(*form, form->cmdOk));
  EXPECT_EQ(host_.Window(*form), nullptr);
  form.reset();
  QCoreApplication::processEvents();  // the widgets go now, without the form
  SUCCEED();
}

TEST_F(WindowLife, WindowsArePlacedInsideTheScreen) {
  const forms::ScreenSize screen = host_.Screen();
  struct Case {
    int left;
    int top;
  };
  for (const Case& test : {Case{1500, 300}, Case{screen.width - 100, 300}, Case{-5000, screen.height * 2}}) {
    SampleForm form(host_);
    form.Load();
    form.MoveTo(test.left, test.top);
    form.Show();
    const QRect frame = host_.Window(form)->frameGeometry();
    const QRect room = host_.Window(form)->screen()->availableGeometry();
    EXPECT_TRUE(room.contains(frame)) << test.left;
    if (test.left == 1500) {
      EXPECT_EQ(frame.topLeft() - room.topLeft(), QPoint(100, 20));
    }
  }
}

TEST_F(WindowLife, TheForegroundIsTheWindowThatAskedLast) {
  adapters::QtForegroundWindows foreground(host_);
  SampleForm first(host_);
  SampleForm second(host_);
  EXPECT_EQ(foreground.GetForegroundWindow(), 0u);
  first.Show();
  second.Load();
  EXPECT_FALSE(foreground.SetForegroundWindow(second.handle())) << "hidden";
  second.Show();
  EXPECT_EQ(foreground.GetForegroundWindow(), second.handle());
  EXPECT_TRUE(foreground.SetForegroundWindow(first.handle()));
  EXPECT_EQ(foreground.GetForegroundWindow(), first.handle());
  EXPECT_EQ(first.events.size(), 2u) << "activated again";
  first.Hide();
  EXPECT_EQ(foreground.GetForegroundWindow(), second.handle());
  EXPECT_EQ(foreground.GetWindowThread(second.handle()), 1u);
  EXPECT_EQ(foreground.GetWindowThread(99), 0u);
}

TEST_F(WindowLife, OnlyWhatTheUserDidTakesTheKeyboard) {
  SampleForm called(host_, "Called");
  SampleForm asked(host_, "Asked");
  post_([&] { called.Show(); });
  QCoreApplication::processEvents();
  EXPECT_TRUE(host_.Window(called)->testAttribute(Qt::WA_ShowWithoutActivating));
  called.cmdOk.on_click = [&] { asked.Show(); };
  driver_.Click(called, called.cmdOk);
  EXPECT_FALSE(host_.Window(asked)->testAttribute(Qt::WA_ShowWithoutActivating));
}

TEST_F(WindowLife, AccessibleNamesAndMnemonicsComeFromTheCaptions) {
  SampleForm form(host_);
  form.Load();
  const adapters::QtWindow& window = *host_.Window(form);
  const auto name = [&](const forms::Control& control) {
    return window.Binding(control)->widget().accessibleName().toStdString();
  };
  EXPECT_EQ(name(form.txtName), "Name:");
  EXPECT_EQ(name(form.chkLog), "Log into a file");
  EXPECT_EQ(name(form.cmbLine), "cmbLine");
  form.lblName.SetCaption("&Other:");
  EXPECT_EQ(name(form.txtName), "Other:") << "follows its label";
  EXPECT_EQ(window.Binding(form.txtName)->widget().objectName(), QStringLiteral("txtName"));
}

}  // namespace
}  // namespace kestro::qt_tests
