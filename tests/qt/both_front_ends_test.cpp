#include "support/both_front_ends.h"

#include <array>
#include <filesystem>
#include <fstream>

#include "qt/sample_form.h"

namespace kestro::front_end_tests {
namespace {

class BothFrontEnds : public OnBothFrontEnds<SampleForm> {
 protected:
  using F = SampleForm;
  /// An entry of the menu that grows.
  static Step ClickEntry(const char* name, int index) {
    return {name, [index](auto& driver, F& form) { return driver.Click(form, form.mnuList.at(index)); }};
  }
};

/// A bitmap file.
constexpr std::array<char, 58> kOneRedPixel{
    'B', 'M', 58, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0,  24,
    0,   0,   0,  0, 0, 4, 0, 0, 0, 0, 0,  0, 0, 0, 0,  0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, -1, 0};

TEST_F(BothFrontEnds, ActionsReachTheModelAndAreReadBack) {
  Expect({kShow, Click("click", &F::cmdOk), Type("type", &F::txtName, "Jan Novák"),
          Type("type over", &F::txtName, "Eva"), Type("type nothing", &F::txtName, ""),
          Choose("choose", &F::cmbLine, 1), Choose("choose again", &F::cmbLine, 1),
          Check("check", &F::chkLog), Check("check again", &F::chkLog),
          Click("click a check box", &F::chkLog), Choose("tab", &F::pages, 1),
          Type("type lines", &F::txtNote, "one\r\ntwo\xC2\xA0three"), Click("menu", &F::mnuNew),
          Click("pop-up menu", &F::mPopEnd), ClickEntry("array entry", 0)});
}

TEST_F(BothFrontEnds, WhatCannotBeReachedIsRefused) {
  Expect({Do("load", [](F& form) { form.Load(); }),
          Click("hidden window", &F::cmdOk),
          kShow,
          Type("another page", &F::txtNote, "x"),
          Do("disable", [](F& form) { form.cmdOk.SetEnabled(false); }),
          Click("disabled", &F::cmdOk),
          Do("hide", [](F& form) { form.cmdCancel.SetVisible(false); }),
          Click("hidden", &F::cmdCancel),
          Do("frame", [](F& form) { form.frmFirst.SetEnabled(false); }),
          Check("in a disabled frame", &F::chkLog),
          Do("lock", [](F& form) { form.txtName.SetReadOnly(true); }),
          Type("read only", &F::txtName, "x"),
          Choose("no such item", &F::cmbLine, 2),
          Choose("no item", &F::cmbLine, -1),
          Choose("no such page", &F::pages, 2),
          Click("a separator", &F::mnuSpacer),
          Click("a submenu", &F::mnuSwitch),
          Do("disable the submenu", [](F& form) { form.mnuSwitch.SetEnabled(false); }),
          ClickEntry("below a disabled entry", 0),
          Do("hide the menu", [](F& form) { form.mnuFile.SetVisible(false); }),
          Click("below a hidden menu", &F::mnuNew),
          Click("a label", &F::lblValue)});
}

TEST_F(BothFrontEnds, ChangesOfTheModelAreShownWithoutEcho) {
  const std::string file = (std::filesystem::temp_directory_path() / "face.bmp").string();
  std::ofstream(file, std::ios::binary).write(kOneRedPixel.data(), kOneRedPixel.size());
  const auto progress = [](const char* name, int minimum, int maximum, int value) {
    return Do(name, [=](F& form) {
      form.progress.SetRange(minimum, maximum);
      form.progress.SetValue(value);
    });
  };
  Expect({Do("load", [](F& form) { form.Load(); }),
          kShow,
          progress("progress", 0, 200, 150),
          progress("more than 16 bits", 50, 70000, 65535),
          progress("no range", 0, 0, 0),
          progress("the end", 0, 10, 10),
          Do("text", [](F& form) { form.txtName.SetText("set by the program"); }),
          Do("many lines", [](F& form) { form.txtNote.SetText("a\r\nb"); }),
          Do("lines of another system", [](F& form) { form.txtNote.SetText("a\nb"); }),
          Do("index", [](F& form) { form.cmbLine.SetListIndex(1); }),
          Do("no items", [](F& form) { form.cmbLine.Clear(); }),
          Do("an item", [](F& form) { form.cmbLine.AddItem("new"); }),
          Do("its index", [](F& form) { form.cmbLine.SetListIndex(0); }),
          Do("check", [](F& form) { form.chkLog.SetValue(2); }),
          Do("title", [](F& form) { form.SetCaption("Other"); }),
          Do("label", [](F& form) { form.lblValue.SetCaption("line 1\r\nline 2"); }),
          Do("button", [](F& form) { form.cmdOk.SetCaption("&Done && gone"); }),
          Do("tab", [](F& form) { form.pages.SetTab(1); }),
          Do("picture", [&](F& form) { form.picture.SetFile(file); }),
          Do("no picture", [](F& form) { form.picture.SetFile(""); }),
          Do("checked entry", [](F& form) { form.mnuNew.SetChecked(true); }),
          Do("disabled entry", [](F& form) { form.mPopEnd.SetEnabled(false); }),
          Do("hidden entry", [](F& form) { form.mnuSpacer.SetVisible(false); }),
          Click("the checked entry", &F::mnuNew),
          Do("hide", [](F& form) { form.Hide(); }),
          kShow});
  std::filesystem::remove(file);
}

TEST_F(BothFrontEnds, MenuArraysGrowAndShrink) {
  Expect({Do("grow while loaded",
             [](F& form) {
               form.Load();
               form.mnuList.LoadNext().SetCaption("21 - Reception");
               form.mnuList.LoadNext().SetCaption("22 - Store");
               form.mnuList.at(0).SetVisible(false);
             }),
          kShow, ClickEntry("new entry", 2), ClickEntry("hidden entry", 0),
          Do("shrink", [](F& form) { form.mnuList.UnloadAllButFirst(); }),
          Do("grow again", [](F& form) { form.mnuList.LoadNext().SetCaption("23"); }),
          ClickEntry("again", 1)});
}

TEST_F(BothFrontEnds, TheKeyboardGoesWhereTheRulesSay) {
  Expect({kShow, Do("its control is disabled", [](F& form) { form.txtName.SetEnabled(false); }),
          Do("it does not come back", [](F& form) { form.txtName.SetEnabled(true); }),
          Do("asked for", [](F& form) { form.chkLog.SetFocus(); }), Choose("its page is left", &F::pages, 1),
          Do("asked for out of reach", [](F& form) { form.chkLog.SetFocus(); }),
          Do("asked for on the page", [](F& form) { form.txtNote.SetFocus(); }),
          Choose("back, where a control before it is", &F::pages, 0), Click("an action", &F::cmdCancel),
          Do("past the end", [](F& form) { form.cmdCancel.SetVisible(false); }),
          Do("nothing is left",
             [](F& form) {
               for (forms::Control* control : form.controls()) control->SetEnabled(false);
             }),
          Do("hidden", [](F& form) { form.Hide(); }), kShow});
}

TEST_F(BothFrontEnds, FocusAskedForBeforeTheFirstShowStays) {
  Expect(
      {Do("load", [](F& form) { form.Load(); }), Do("ask", [](F& form) { form.cmbLine.SetFocus(); }), kShow});
}

TEST_F(BothFrontEnds, TypingStopsAtTheLimit) {
  Expect({kShow, Do("limit", [](F& form) { form.txtName.SetMaxLength(4); }),
          Type("type", &F::txtName, "\u010Dbcdef"),
          Type("beyond the first plane", &F::txtName, "\U0001F600\U0001F600xyz"),
          Do("the program is not limited", [](F& form) { form.txtName.SetText("longer than four"); }),
          Choose("page", &F::pages, 1), Do("limit of lines", [](F& form) { form.txtNote.SetMaxLength(5); }),
          Type("type lines", &F::txtNote, "123456789")});
}

TEST_F(BothFrontEnds, ClosingAsksTheForm) {
  const auto close = [](const char* name, bool refused, int mode) {
    return Step{name, [refused, mode](auto& driver, F& form) {
                  form.refuse_to_close = refused;
                  driver.Close(form, mode);
                  return form.visible() && form.loaded();
                }};
  };
  Expect({kShow, close("refused", true, forms::kControlMenu),
          close("by the session", true, forms::kSessionEnding), close("closed", false, forms::kControlMenu),
          kShow});
}

TEST_F(BothFrontEnds, WindowStates) {
  Expect({kShow, Do("minimise", [](F& form) { form.SetWindowState(forms::WindowState::kMinimized); }),
          Do("back", [](F& form) { form.SetWindowState(forms::WindowState::kNormal); })});
}

}  // namespace
}  // namespace kestro::front_end_tests
