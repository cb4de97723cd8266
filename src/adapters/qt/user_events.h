#pragma once

#include <QPoint>
#include <QString>

class QComboBox;
class QTabBar;
class QWidget;

namespace kestro::adapters {

// Mouse and key events as the user's hands make them, sent to one widget.

void PressMouse(QWidget& widget, QPoint where);
/// Shortcuts of the widget's window come first if that is active, as with a real key.
void PressKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// The left button twice on the same place, where it has just been pressed once.
void DoubleClickMouse(QWidget& widget, QPoint where);
/// Selects everything and types over it.
void TypeOver(QWidget& widget, const QString& text);
/// Opens the list, moves to the item and takes it.
void ChooseItem(QComboBox& combo, int index);
void ChooseTab(QTabBar& tabs, int index);

}  // namespace kestro::adapters
