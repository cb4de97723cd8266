#include "adapters/qt/qt_keys.h"

#include <QKeyEvent>

#include "adapters/qt/qt_text.h"

namespace kestro::adapters {

QKeySequence ShortcutKeys(std::string_view written) {
  const auto key = forms::ParseKey(written);
  if (!key || IsEnterShortcut(written)) return {};
  return {QKeyCombination(Modifiers(*key), static_cast<Qt::Key>(KeyCode(*key)))};
}

bool IsEnterShortcut(std::string_view written) { return written == "Enter"; }

bool IsEnter(const QKeyEvent& event) {
  const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
  return modifiers == Qt::NoModifier && (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter);
}

int KeyCode(const forms::Key& key) {
  if (key.name == "Enter") return Qt::Key_Return;
  return QKeySequence::fromString(ToQString(key.name), QKeySequence::PortableText)[0].key();
}

Qt::KeyboardModifiers Modifiers(const forms::Key& key) {
  Qt::KeyboardModifiers modifiers;
  modifiers.setFlag(Qt::ControlModifier, key.control);
  modifiers.setFlag(Qt::AltModifier, key.alt);
  modifiers.setFlag(Qt::ShiftModifier, key.shift);
  return modifiers;
}

}  // namespace kestro::adapters
