#include <QClipboard>
#include <QGuiApplication>

#include "adapters/qt/qt_clipboard.h"
#include "adapters/qt/qt_text.h"
#include "qt/sample_form.h"
#include "screen_front_end.h"

namespace kestro::front_end_tests {
namespace {

using WindowLife = ScreenFrontEnd;

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

TEST(QtClipboard, TakesTextWithTheDesktopsLineBreaks) {
  adapters::QtClipboard clipboard;
  clipboard.SetText("Program: Š\r\nSystem: 2\r\n");
  EXPECT_EQ("Program: Š\nSystem: 2\n", adapters::ToUtf8(QGuiApplication::clipboard()->text()));
}

}  // namespace
}  // namespace kestro::front_end_tests
