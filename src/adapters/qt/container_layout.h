#pragma once

#include <functional>

#include "forms/control.h"

class QWidget;

namespace kestro::adapters {

/// Widget of a control.
using WidgetOf = std::function<QWidget*(const forms::Control&)>;

/// How much air is around the controls of a container.
enum class Margins { kNone, kWindow, kPage };

/// Lays the placed controls of the container out inside `holder`, rows and
/// columns growing as the container says. Inner containers go first.
void LayOutContainer(const forms::Container& container, QWidget& holder, Margins margins,
                     const WidgetOf& widget_of);

}  // namespace kestro::adapters
