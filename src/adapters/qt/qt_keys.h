#pragma once

#include <string_view>

#include <QKeySequence>

#include "forms/key.h"

class QKeyEvent;

namespace kestro::adapters {

/// A shortcut, as forms::ParseKey reads it, that the toolkit looks after. None for
/// an empty text, for one that is no key, and for Enter alone: whether that is a
/// shortcut depends on where the keyboard is, and the toolkit would also take the
/// Enter that chooses from an open list for one.
[[nodiscard]] QKeySequence ShortcutKeys(std::string_view written);
/// The shortcut is Enter alone.
[[nodiscard]] bool IsEnterShortcut(std::string_view written);
/// Enter without modifiers, on either of its two places.
[[nodiscard]] bool IsEnter(const QKeyEvent& event);

[[nodiscard]] int KeyCode(const forms::Key& key);
[[nodiscard]] Qt::KeyboardModifiers Modifiers(const forms::Key& key);

}  // namespace kestro::adapters
