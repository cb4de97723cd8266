#include <gtest/gtest.h>

#include "adapters/headless/headless_foreground_windows.h"
#include "adapters/headless/headless_form_host.h"
#include "adapters/headless/headless_front_end_driver.h"

namespace kestro::adapters {
namespace {

class SampleForm final : public forms::Form {
 public:
  SampleForm(forms::FormHost& host, std::string_view name) : Form(host, name, 1000, 1000) {}

  forms::Button button{*this, nullptr, "button"};
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
};

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
