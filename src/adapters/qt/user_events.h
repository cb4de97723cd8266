#pragma once

#include <QPoint>
#include <QString>

class QComboBox;
class QTabBar;
class QWidget;

namespace kestro::adapters {

// Mouse and key events as the user's hands make them, sent to one widget.

void PressMouse(QWidget& widget, QPoint where);
void PressKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Selects everything and types over it.
void TypeOver(QWidget& widget, const QString& text);
/// Opens the list, moves to the item and takes it.
void ChooseItem(QComboBox& combo, int index);
void ChooseTab(QTabBar& tabs, int index);

}  // namespace kestro::adapters
