// What every front end with windows on a screen does, each by its own means.

#include "qt/sample_form.h"
#include "support/both_front_ends.h"

namespace kestro::front_end_tests {
namespace {

using WindowsOnScreen = ScreenFrontEnd;

TEST_F(WindowsOnScreen, TheEndOfTheProcessComesThroughHandlersWindowsAndBoxes) {
  SampleForm outer(host_, "Outer");
  SampleForm inner(host_, "Inner");
  Boxes boxes(boundary_, "Title");
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
  inner.cmdOk.on_click = [&] {
    post_([] { throw base::ProcessEnded{}; });
    boxes.Show("A box that nobody answers", ports::kOkOnly);
    events.emplace_back("the box has returned");
  };
  post_([&] { EXPECT_THROW(driver_.Click(outer, outer.cmdOk), base::ProcessEnded); });
  post_([&] {
    EXPECT_THROW(driver_.Click(inner, inner.cmdOk), base::ProcessEnded);
    events.emplace_back("still running");
  });
  EXPECT_THROW(outer.ShowModal(), base::ProcessEnded);
  EXPECT_EQ(events, (Events{"still running", "inner ended"}));
  EXPECT_TRUE(boundary_.ended());
  EXPECT_EQ(boundary_.RunUntilEnded(), 0);
  EXPECT_THROW(inner.ShowModal(), base::ProcessEnded) << "no loop starts any more";
  EXPECT_THROW(boxes.Show("text", ports::kOkOnly), base::ProcessEnded);
  EXPECT_THROW(host_.DoEvents(), base::ProcessEnded);
}

TEST_F(WindowsOnScreen, AnAnswerThatABoxHasNoButtonForPressesItsFirstOne) {
  AnsweringBoxes boxes(boundary_, "Title", [](std::string_view, int) { return ports::BoxAnswer::kCancel; });
  EXPECT_EQ(boxes.Show("text", ports::kYesNo), ports::BoxAnswer::kYes);
  EXPECT_EQ(boxes.Show("text", ports::kOkOnly), ports::BoxAnswer::kOk);
}

TEST_F(WindowsOnScreen, AnUnexpectedErrorEndsTheProcessAndComesOut) {
  SampleForm form(host_);
  form.Show();
  form.cmdOk.on_click = [] { throw std::out_of_range("broken handler"); };
  testing::internal::CaptureStderr();
  EXPECT_THROW(driver_.Click(form, form.cmdOk), std::out_of_range);
  EXPECT_EQ(boundary_.RunUntilEnded(), 1);
  EXPECT_NE(testing::internal::GetCapturedStderr().find("broken handler"), std::string::npos);
}

TEST_F(WindowsOnScreen, AWindowCanGoInsideItsOwnHandlers) {
  auto form = std::make_unique<SampleForm>(host_);
  const auto unload = [&] { form->RequestUnload(forms::kFromCode); };
  form->txtName.on_change = unload;
  form->mnuNew.on_click = unload;
  form->cmdOk.on_click = unload;
  form->Show();
  EXPECT_TRUE(driver_.Type(*form, form->txtName, "x"));
  EXPECT_FALSE(form->loaded());
  form->Show();
  EXPECT_EQ(form->txtName.text(), "x");
  EXPECT_TRUE(driver_.Click(*form, form->mnuNew));
  EXPECT_FALSE(form->loaded());
  form->Show();
  EXPECT_TRUE(driver_.Click(*form, form->cmdOk));
  EXPECT_EQ(host_.Window(*form), nullptr);
  form.reset();
  driver_.Settle();  // what is native goes now, without the form
}

TEST_F(WindowsOnScreen, WindowsArePlacedInsideTheScreen) {
  const forms::ScreenSize screen = host_.Screen();
  const std::pair<int, int> places[] = {{1500, 300}, {screen.width - 100, 300}, {-5000, screen.height * 2}};
  for (const auto& [left, top] : places) {
    SampleForm form(host_);
    form.Load();
    form.MoveTo(left, top);
    form.Show();
    const auto [at_left, at_top, to_right, to_bottom] = DistancesFromTheScreensEdges(form);
    EXPECT_GE(std::min({at_left, at_top, to_right, to_bottom}), 0) << left;
    if (left == 1500) {
      EXPECT_EQ(at_left, 100);
      EXPECT_EQ(at_top, 20);
    }
  }
}

TEST_F(WindowsOnScreen, TheForegroundIsTheWindowThatAskedLast) {
  ForegroundWindows foreground(host_);
  SampleForm first(host_);
  SampleForm second(host_);
  EXPECT_EQ(foreground.GetForegroundWindow(), 0U);
  first.Show();
  second.Load();
  EXPECT_FALSE(foreground.SetForegroundWindow(second.handle())) << "hidden";
  second.Show();
  EXPECT_EQ(foreground.GetForegroundWindow(), second.handle());
  EXPECT_TRUE(foreground.SetForegroundWindow(first.handle()));
  EXPECT_EQ(foreground.GetForegroundWindow(), first.handle());
  EXPECT_EQ(first.events, (Events{"activate", "activate"}));
  first.Hide();
  EXPECT_EQ(foreground.GetForegroundWindow(), second.handle());
  EXPECT_EQ(foreground.GetWindowThread(second.handle()), 1U);
  EXPECT_EQ(foreground.GetWindowThread(99), 0U);
}

TEST_F(WindowsOnScreen, AMillionRowsAreAskedForOnlyWhereTheyAreSeen) {
  SampleForm form(host_);
  form.Show();
  form.grid.SetRows(&form.many);
  Paint(form);
  EXPECT_GT(form.many.cells_asked, 0);
  EXPECT_LT(form.many.cells_asked, 300);
  form.many.cells_asked = 0;
  EXPECT_TRUE(driver_.PressRow(form, form.grid, 999'000));
  Paint(form);
  driver_.PressKey(form, *forms::ParseKey("Up"));
  TypeLetter(form.grid, 'c');  // no search for rows that begin with it
  EXPECT_EQ(form.events, (Events{"activate", "row 999000", "row 998999"}));
  EXPECT_LT(form.many.cells_asked, 400);
}

TEST_F(WindowsOnScreen, WhatIsThereStaysAndWhatIsInsertedIsCut) {
  const struct {
    const char16_t* before;
    const char16_t* after;
    int most;
    const char16_t* text;
    int cursor;
  } cases[] = {
      {u"abc", u"abxxc", 4, u"abxc", 3},         // in the middle: the tail stays
      {u"abcd", u"abcde", 4, u"abcd", 4},        // full
      {u"abcd", u"abXYcd", 4, u"abcd", 2},       // full, in the middle
      {u"abcd", u"x", 4, u"x", 1},               // over a selection
      {u"", u"12345678", 5, u"12345", 5},        //
      {u"toolong", u"toolon", 4, u"toolon", 6},  // deleting from a text that was too long already
      {u"long text", u"long Xtext", 4, u"long text", 5},
      {u"ab", u"aXb", 0, u"aXb", 2},  // no limit
      {u"aaa", u"aaaa", 3, u"aaa", 3},
      {u"", u"\U0001F600\U0001F600", 1, u"\U0001F600", 2},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(LimitTyping(one.before, one.after, one.most), std::pair(std::u16string(one.text), one.cursor))
        << one.most;
  }
}

}  // namespace
}  // namespace kestro::front_end_tests
