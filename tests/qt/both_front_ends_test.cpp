#include "support/both_front_ends.h"

#include <array>
#include <filesystem>
#include <fstream>

#include "qt/sample_form.h"

namespace kestro::qt_tests {
namespace {

using BothFrontEnds = OnBothFrontEnds<SampleForm>;

/// A bitmap file.
constexpr std::array<char, 58> kOneRedPixel{
    'B', 'M', 58, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0,  24,
    0,   0,   0,  0, 0, 4, 0, 0, 0, 0, 0,  0, 0, 0, 0,  0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, -1, 0};

TEST_F(BothFrontEnds, ActionsReachTheModelAndAreReadBack) {
  Expect(
      {kShow,
       {"click", [](auto& driver, auto& form) { return driver.Click(form, form.cmdOk); }},
       {"type", [](auto& driver, auto& form) { return driver.Type(form, form.txtName, "Jan Novák"); }},
       {"type over", [](auto& driver, auto& form) { return driver.Type(form, form.txtName, "Eva"); }},
       {"type nothing", [](auto& driver, auto& form) { return driver.Type(form, form.txtName, ""); }},
       {"choose", [](auto& driver, auto& form) { return driver.Choose(form, form.cmbLine, 1); }},
       {"choose again", [](auto& driver, auto& form) { return driver.Choose(form, form.cmbLine, 1); }},
       {"check", [](auto& driver, auto& form) { return driver.Check(form, form.chkLog, true); }},
       {"check again", [](auto& driver, auto& form) { return driver.Check(form, form.chkLog, true); }},
       {"click a check box", [](auto& driver, auto& form) { return driver.Click(form, form.chkLog); }},
       {"tab", [](auto& driver, auto& form) { return driver.Choose(form, form.pages, 1); }},
       {"type lines",
        [](auto& driver, auto& form) { return driver.Type(form, form.txtNote, "one\r\ntwo\xC2\xA0three"); }},
       {"menu", [](auto& driver, auto& form) { return driver.Click(form, form.mnuOpen); }},
       {"pop-up menu", [](auto& driver, auto& form) { return driver.Click(form, form.mPopEnd); }},
       {"array entry", [](auto& driver, auto& form) { return driver.Click(form, form.mnuList.at(0)); }}});
}

TEST_F(BothFrontEnds, WhatCannotBeReachedIsRefused) {
  Expect({{"hidden window",
           [](auto& driver, auto& form) {
             form.Load();
             return driver.Click(form, form.cmdOk);
           }},
          kShow,
          {"another page", [](auto& driver, auto& form) { return driver.Type(form, form.txtNote, "x"); }},
          {"disabled",
           [](auto& driver, auto& form) {
             form.cmdOk.SetEnabled(false);
             return driver.Click(form, form.cmdOk);
           }},
          {"hidden",
           [](auto& driver, auto& form) {
             form.cmdCancel.SetVisible(false);
             return driver.Click(form, form.cmdCancel);
           }},
          {"in a disabled frame",
           [](auto& driver, auto& form) {
             form.frmFirst.SetEnabled(false);
             return driver.Check(form, form.chkLog, true);
           }},
          {"read only",
           [](auto& driver, auto& form) {
             form.txtName.SetReadOnly(true);
             return driver.Type(form, form.txtName, "x");
           }},
          {"no such item", [](auto& driver, auto& form) { return driver.Choose(form, form.cmbLine, 2); }},
          {"no item", [](auto& driver, auto& form) { return driver.Choose(form, form.cmbLine, -1); }},
          {"no such page", [](auto& driver, auto& form) { return driver.Choose(form, form.pages, 2); }},
          {"a separator", [](auto& driver, auto& form) { return driver.Click(form, form.mnuSpacer); }},
          {"a submenu", [](auto& driver, auto& form) { return driver.Click(form, form.mnuSwitch); }},
          {"below a disabled entry",
           [](auto& driver, auto& form) {
             form.mnuSwitch.SetEnabled(false);
             return driver.Click(form, form.mnuList.at(0));
           }},
          {"below a hidden menu",
           [](auto& driver, auto& form) {
             form.mnuFile.SetVisible(false);
             return driver.Click(form, form.mnuOpen);
           }},
          {"a label", [](auto& driver, auto& form) { return driver.Click(form, form.lblValue); }}});
}

TEST_F(BothFrontEnds, ChangesOfTheModelAreShownWithoutEcho) {
  const std::string file = (std::filesystem::temp_directory_path() / "face.bmp").string();
  std::ofstream(file, std::ios::binary).write(kOneRedPixel.data(), kOneRedPixel.size());
  Expect({Do("load", [](SampleForm& form) { form.Load(); }),
          kShow,
          Do("text", [](SampleForm& form) { form.txtName.SetText("set by the program"); }),
          Do("many lines", [](SampleForm& form) { form.txtNote.SetText("a\r\nb"); }),
          Do("lines of another system", [](SampleForm& form) { form.txtNote.SetText("a\nb"); }),
          Do("index", [](SampleForm& form) { form.cmbLine.SetListIndex(1); }),
          Do("items",
             [](SampleForm& form) {
               form.cmbLine.Clear();
               form.cmbLine.AddItem("new");
               form.cmbLine.SetListIndex(0);
             }),
          Do("check", [](SampleForm& form) { form.chkLog.SetValue(2); }),
          Do("captions",
             [](SampleForm& form) {
               form.SetCaption("Other");
               form.lblValue.SetCaption("line 1\r\nline 2");
               form.cmdOk.SetCaption("&Done && gone");
             }),
          Do("tab", [](SampleForm& form) { form.pages.SetTab(1); }),
          Do("picture", [&](SampleForm& form) { form.picture.SetFile(file); }),
          Do("no picture", [](SampleForm& form) { form.picture.SetFile(""); }),
          Do("menu",
             [](SampleForm& form) {
               form.mnuOpen.SetChecked(true);
               form.mPopEnd.SetEnabled(false);
               form.mnuSpacer.SetVisible(false);
             }),
          {"a checked entry", [](auto& driver, auto& form) { return driver.Click(form, form.mnuOpen); }},
          Do("hide", [](SampleForm& form) { form.Hide(); }),
          kShow});
}

TEST_F(BothFrontEnds, MenuArraysGrowAndShrink) {
  Expect({Do("grow while loaded",
             [](SampleForm& form) {
               form.Load();
               form.mnuList.LoadNext().SetCaption("21 - Reception");
               form.mnuList.LoadNext().SetCaption("22 - Store");
               form.mnuList.at(0).SetVisible(false);
             }),
          kShow,
          {"new entry", [](auto& driver, auto& form) { return driver.Click(form, form.mnuList.at(2)); }},
          {"hidden entry", [](auto& driver, auto& form) { return driver.Click(form, form.mnuList.at(0)); }},
          Do("shrink", [](SampleForm& form) { form.mnuList.UnloadAllButFirst(); }),
          Do("grow again", [](SampleForm& form) { form.mnuList.LoadNext().SetCaption("23"); }),
          {"again", [](auto& driver, auto& form) { return driver.Click(form, form.mnuList.at(1)); }}});
}

TEST_F(BothFrontEnds, TheKeyboardGoesWhereTheRulesSay) {
  Expect({kShow,
          Do("its control is disabled", [](SampleForm& form) { form.txtName.SetEnabled(false); }),
          Do("it does not come back", [](SampleForm& form) { form.txtName.SetEnabled(true); }),
          Do("asked for", [](SampleForm& form) { form.chkLog.SetFocus(); }),
          {"its page is left", [](auto& driver, auto& form) { return driver.Choose(form, form.pages, 1); }},
          Do("asked for out of reach", [](SampleForm& form) { form.chkLog.SetFocus(); }),
          Do("asked for on the page", [](SampleForm& form) { form.txtNote.SetFocus(); }),
          {"back, where a control before it is",
           [](auto& driver, auto& form) { return driver.Choose(form, form.pages, 0); }},
          {"an action", [](auto& driver, auto& form) { return driver.Click(form, form.cmdCancel); }},
          Do("past the end", [](SampleForm& form) { form.cmdCancel.SetVisible(false); }),
          Do("nothing is left",
             [](SampleForm& form) {
               form.txtName.SetEnabled(false);
               form.cmbLine.SetEnabled(false);
               form.pages.SetVisible(false);
               form.cmdOk.SetEnabled(false);
             }),
          Do("hidden and shown", [](SampleForm& form) {
            form.Hide();
            form.Show();
          })});
}

TEST_F(BothFrontEnds, FocusAskedForBeforeTheFirstShowStays) {
  Expect({Do("load and ask",
             [](SampleForm& form) {
               form.Load();
               form.cmbLine.SetFocus();
             }),
          kShow});
}

TEST_F(BothFrontEnds, TypingStopsAtTheLimit) {
  Expect(
      {kShow,
       Do("limit", [](SampleForm& form) { form.txtName.SetMaxLength(4); }),
       {"type",
        [](auto& driver, auto& form) {
          return driver.Type(form, form.txtName,
                             "\xC4\x8D"
                             "bcdef");
        }},
       {"beyond the first plane",
        [](auto& driver, auto& form) {
          return driver.Type(form, form.txtName, "\xF0\x9F\x98\x80\xF0\x9F\x98\x80xyz");
        }},
       Do("the program is not limited", [](SampleForm& form) { form.txtName.SetText("longer than four"); }),
       {"page", [](auto& driver, auto& form) { return driver.Choose(form, form.pages, 1); }},
       Do("limit of lines", [](SampleForm& form) { form.txtNote.SetMaxLength(5); }),
       {"type lines",
        [](auto& driver, auto& form) { return driver.Type(form, form.txtNote, "123456789"); }}});
}

TEST_F(BothFrontEnds, ClosingAsksTheForm) {
  Expect({kShow,
          {"refused",
           [](auto& driver, auto& form) {
             form.refuse_to_close = true;
             driver.Close(form, forms::kControlMenu);
             return form.visible() && form.loaded();
           }},
          {"by the session",
           [](auto& driver, auto& form) {
             driver.Close(form, forms::kSessionEnding);
             return form.visible();
           }},
          {"closed",
           [](auto& driver, auto& form) {
             form.refuse_to_close = false;
             driver.Close(form, forms::kControlMenu);
             return form.loaded();
           }},
          kShow});
}

TEST_F(BothFrontEnds, WindowStates) {
  Expect({kShow,
          Do("minimise", [](SampleForm& form) { form.SetWindowState(forms::WindowState::kMinimized); }),
          Do("back", [](SampleForm& form) { form.SetWindowState(forms::WindowState::kNormal); })});
}

}  // namespace
}  // namespace kestro::qt_tests
