#include <gtest/gtest.h>

#include "adapters/headless/headless_foreground_windows.h"
#include "adapters/headless/headless_form_host.h"

namespace kestro::adapters {
namespace {

class SampleForm final : public forms::Form {
 public:
  SampleForm(forms::FormHost& host, std::string_view name) : Form(host, name, 1000, 1000) {}

  int activations = 0;

 private:
  void Form_Activate() override { ++activations; }
};

class HeadlessTest : public ::testing::Test {
 protected:
  HeadlessFormHost host;
  HeadlessForegroundWindows foreground{host};
  SampleForm form{host, "window"};
  SampleForm other{host, "other"};
};

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
