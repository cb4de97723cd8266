#include <gtest/gtest.h>

#include "adapters/headless/headless_foreground_windows.h"
#include "adapters/headless/headless_form_host.h"
#include "adapters/headless/headless_front_end_driver.h"

namespace kestro::adapters {
namespace {

using forms::MenuItem;

/// A window with one control of each kind that can be acted on.
class SampleForm final : public forms::Form {
 public:
  SampleForm(forms::FormHost& host, std::string_view name) : Form(host, name, 1000, 1000) {
    button.on_click = [this] { ++clicks; };
    entry.on_click = [this] { ++clicks; };
    separator.on_click = [this] { ++clicks; };
  }

  forms::Label label{*this, nullptr, "label"};
  forms::Button button{*this, nullptr, "button"};
  forms::Frame frame{*this, nullptr, "frame"};
  forms::TextBox text{*this, &frame, "text"};
  forms::TabPages pages{*this, nullptr, "pages", 2};
  forms::ComboBox combo{*this, &pages.page(1), "combo"};
  forms::CheckBox check{*this, nullptr, "check"};
  forms::Picture picture{*this, nullptr, "picture"};
  MenuItem root{*this, nullptr, "root", MenuItem::Role::kPopup};
  MenuItem submenu{*this, &root, "submenu"};
  MenuItem entry{*this, &submenu, "entry"};
  MenuItem separator{*this, &root, "separator", MenuItem::Role::kSeparator};
  int clicks = 0;
  int activations = 0;

 private:
  void Form_Activate() override { ++activations; }
};

class HeadlessTest : public ::testing::Test {
 protected:
  HeadlessFormHost host;
  HeadlessFrontEndDriver driver{host, "tray"};
  HeadlessForegroundWindows foreground{host};
  SampleForm form{host, "window"};
  SampleForm other{host, "other"};
  SampleForm tray{host, "tray"};

  void SetUp() override {
    form.combo.AddItem("one");
    form.combo.AddItem("two");
  }
  std::string Focus(SampleForm& of) {
    const forms::Control* control = host.Focus(of);
    return control == nullptr ? "" : control->name();
  }
};

TEST_F(HeadlessTest, RefusesWhatTheUserCannotReach) {
  EXPECT_FALSE(driver.Click(form, form.button));  // not loaded
  form.Load();
  EXPECT_FALSE(driver.Click(form, form.button));  // not shown
  form.Show();
  EXPECT_TRUE(driver.Click(form, form.button));
  form.button.SetEnabled(false);
  EXPECT_FALSE(driver.Click(form, form.button));
  form.button.SetEnabled(true);
  form.button.SetVisible(false);
  EXPECT_FALSE(driver.Click(form, form.button));
  EXPECT_EQ(form.clicks, 1);

  form.frame.SetEnabled(false);
  EXPECT_FALSE(driver.Type(form, form.text, "a"));
  form.frame.SetEnabled(true);
  form.text.SetReadOnly(true);
  EXPECT_FALSE(driver.Type(form, form.text, "a"));
  form.text.SetReadOnly(false);
  form.text.SetMaxLength(3);
  EXPECT_TRUE(driver.Type(form, form.text,
                          "\xC5\x99"
                          "bcd"));
  EXPECT_EQ(form.text.text(),
            "\xC5\x99"
            "bc");

  EXPECT_FALSE(driver.Choose(form, form.combo, 1));  // on the other tab page
  EXPECT_FALSE(driver.Choose(form, form.pages, 2));
  EXPECT_TRUE(driver.Choose(form, form.pages, 1));
  EXPECT_FALSE(driver.Choose(form, form.combo, 2));
  EXPECT_FALSE(driver.Choose(form, form.combo, -1));
  EXPECT_TRUE(driver.Choose(form, form.combo, 1));
  EXPECT_EQ(form.combo.text(), "two");

  EXPECT_TRUE(driver.Check(form, form.check, true));
  EXPECT_TRUE(driver.Check(form, form.check, true));
  EXPECT_EQ(form.check.value(), 1);
  EXPECT_TRUE(driver.Click(form, form.check));
  EXPECT_EQ(form.check.value(), 0);
}

TEST_F(HeadlessTest, MenusAreUsedThroughTheirEntries) {
  tray.Load();
  EXPECT_TRUE(driver.Click(tray, tray.entry));
  EXPECT_FALSE(driver.Click(tray, tray.separator));
  EXPECT_FALSE(driver.Click(tray, tray.submenu));
  EXPECT_FALSE(driver.Click(tray, tray.root));
  tray.submenu.SetEnabled(false);
  EXPECT_FALSE(driver.Click(tray, tray.entry));
  EXPECT_EQ(tray.clicks, 1);
}

TEST_F(HeadlessTest, AModalWindowBlocksTheOthersButNotTheTray) {
  tray.Load();
  other.Show();
  bool ran = false;
  host.Post([&] {
    ran = true;
    EXPECT_EQ(host.modal_window(), &form);
    EXPECT_FALSE(driver.Click(other, other.button));
    driver.Close(other, forms::kControlMenu);
    EXPECT_TRUE(other.loaded());
    EXPECT_TRUE(driver.Click(tray, tray.button));
    EXPECT_TRUE(driver.Click(form, form.button));
    form.Hide();
  });
  form.ShowModal();
  EXPECT_TRUE(ran);
  EXPECT_EQ(host.modal_window(), nullptr);
  EXPECT_TRUE(driver.Click(other, other.button));
  driver.Close(other, forms::kControlMenu);
  EXPECT_FALSE(other.loaded());
  EXPECT_THROW(form.ShowModal(), std::logic_error);
  EXPECT_EQ(host.modal_window(), nullptr);
}

TEST_F(HeadlessTest, FocusFollowsTheUserAndLeavesWhatCannotKeepIt) {
  form.button.SetEnabled(false);
  form.Show();
  EXPECT_EQ(Focus(form), "text");  // the first that can have it
  driver.Choose(form, form.pages, 1);
  EXPECT_EQ(Focus(form), "text");  // tab pages do not take the keyboard
  driver.Choose(form, form.combo, 0);
  EXPECT_EQ(Focus(form), "combo");
  driver.Choose(form, form.pages, 0);
  EXPECT_EQ(Focus(form), "check");  // its page went out of sight
  form.button.SetEnabled(true);
  EXPECT_EQ(Focus(form), "check");
  form.check.SetEnabled(false);
  EXPECT_EQ(Focus(form), "button");  // from the end to the beginning
  form.button.SetVisible(false);
  EXPECT_EQ(Focus(form), "text");
  form.frame.SetVisible(false);
  EXPECT_EQ(Focus(form), "");
  form.frame.SetVisible(true);
  form.text.SetFocus();
  EXPECT_EQ(Focus(form), "text");
  form.label.SetFocus();
  form.check.SetFocus();
  EXPECT_EQ(Focus(form), "text");  // neither can have it
}

TEST_F(HeadlessTest, AFocusGivenBeforeTheFirstShowingStays) {
  form.Load();
  form.check.SetFocus();
  form.Show();
  EXPECT_EQ(Focus(form), "check");
}

TEST_F(HeadlessTest, ReadsWhatAWindowShows) {
  form.SetCaption("Caption");
  form.Show();
  form.label.SetCaption("La&bel");
  form.check.SetValue(5);
  form.picture.SetFile("C:\\a.bmp");
  form.entry.SetEnabled(false);
  form.entry.SetChecked(true);
  const forms::WindowReading reading = driver.Read(form);
  EXPECT_EQ(reading.caption, "Caption");
  EXPECT_TRUE(reading.visible);
  const auto control = [&](std::string_view name) {
    for (const auto& entry : reading.controls) {
      if (entry.name == name) return entry;
    }
    return forms::ControlReading{};
  };
  using Reading = forms::ControlReading;
  EXPECT_EQ(control("label"), (Reading{"label", {"La&bel"}, {}, {}, false, false, false, false}));
  EXPECT_EQ(control("button"), (Reading{"button", {""}, {}, {}, false, false, false, true}));
  EXPECT_EQ(control("pages"), (Reading{"pages", {"", ""}, {}, 0, false, false, false, false}));
  EXPECT_EQ(control("combo"), (Reading{"combo", {"one", "two"}, {}, -1, false, false, false, false}));
  EXPECT_EQ(control("check"), (Reading{"check", {""}, {}, {}, false, false, true, false}));
  EXPECT_EQ(control("picture"), (Reading{"picture", {}, "C:\\a.bmp", {}, false, false, false, false}));
  EXPECT_EQ(control("entry"), (Reading{"entry", {""}, {}, {}, false, true, true, false}));
  EXPECT_EQ(control("separator"), (Reading{"separator", {}, {}, {}, false, false, false, false}));
}

TEST_F(HeadlessTest, TheForegroundGoesToShownWindows) {
  form.Show();
  other.Show();
  EXPECT_EQ(foreground.GetForegroundWindow(), other.handle());
  EXPECT_TRUE(foreground.SetForegroundWindow(form.handle()));
  EXPECT_EQ(foreground.GetForegroundWindow(), form.handle());
  EXPECT_EQ(form.activations, 2);
  EXPECT_TRUE(foreground.SetForegroundWindow(form.handle()));
  EXPECT_EQ(form.activations, 2);  // it was active already
  form.Hide();
  EXPECT_FALSE(foreground.SetForegroundWindow(form.handle()));
  EXPECT_EQ(foreground.GetForegroundWindow(), other.handle());
  EXPECT_EQ(other.activations, 2);
  other.SetWindowState(forms::WindowState::kMinimized);
  EXPECT_TRUE(foreground.IsIconic(other.handle()));
  foreground.ShowWindowCommand(other.handle(), ports::ForegroundWindows::kRestore);
  EXPECT_FALSE(foreground.IsIconic(other.handle()));
  EXPECT_FALSE(foreground.SetForegroundWindow(99));
}

}  // namespace
}  // namespace kestro::adapters
