#include <QClipboard>
#include <QGuiApplication>
#include <gtest/gtest.h>

#include "adapters/qt/qt_clipboard.h"
#include "adapters/qt/qt_text.h"

namespace kestro::qt_tests {
namespace {

TEST(QtClipboard, TakesTextWithTheDesktopsLineBreaks) {
  adapters::QtClipboard clipboard;
  clipboard.SetText("Program: Š\r\nSystem: 2\r\n");
  EXPECT_EQ("Program: Š\nSystem: 2\n", adapters::ToUtf8(QGuiApplication::clipboard()->text()));
}

}  // namespace
}  // namespace kestro::qt_tests
