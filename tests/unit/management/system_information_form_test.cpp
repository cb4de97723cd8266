#include "management/system_information_form.h"

#include <gtest/gtest.h>

#include "adapters/headless/headless_clipboard.h"
#include "adapters/headless/headless_foreground_windows.h"
#include "adapters/headless/headless_form_host.h"
#include "support/log_capture.h"

namespace kestro {
namespace {

TEST(SystemInformationForm, CopiesWhatItShows) {
  test::LogCapture capture;
  core::LogModule log(capture);
  core::Localization texts(log);
  adapters::HeadlessFormHost host;
  adapters::HeadlessForegroundWindows windows(host);
  core::ForceFore foreground(log, windows);
  adapters::HeadlessClipboard clipboard;
  management::frmSystemInformation form(host, {log, texts, foreground, clipboard});

  form.ShowInformation("KESTRO CTI 1.2.3", {"Qt 6", "", "Debian", ""});
  EXPECT_FALSE(form.lblDatabaseEngine.visible());
  EXPECT_FALSE(form.lblDesktopLabel.visible());
  form.cmdCopy.Click();
  EXPECT_EQ("Program: KESTRO CTI 1.2.3\r\nToolkit: Qt 6\r\nSystem: Debian\r\n", clipboard.text());

  form.ShowInformation("KESTRO CTI 1.2.3", {"Qt 6", "SQLite 3", "Debian", ""});
  EXPECT_TRUE(form.lblDatabaseEngine.visible());
}

}  // namespace
}  // namespace kestro
