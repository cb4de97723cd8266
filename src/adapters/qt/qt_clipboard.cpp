#include "adapters/qt/qt_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

#include "adapters/qt/qt_text.h"
#include "base/text.h"

namespace kestro::adapters {

void QtClipboard::SetText(std::string_view text) {
  QGuiApplication::clipboard()->setText(ToQString(base::ReplaceAll(text, "\r\n", "\n")));
}

}  // namespace kestro::adapters
