#pragma once

#include <initializer_list>

#include "forms/controls.h"

namespace kestro::forms {

struct LabelledRow {
  Label& label;
  Control& value;
};

/// Label and value side by side, one pair a row, the values taking the width.
/// The values are named by their labels. Returns the first free row.
inline int PlaceRows(Container& container, std::initializer_list<LabelledRow> rows) {
  int row = 0;
  for (const LabelledRow& pair : rows) {
    container.Place(pair.label, {row, 0});
    container.Place(pair.value, {row, 1});
    pair.value.SetNamedBy(pair.label);
    ++row;
  }
  container.GrowColumn(1);
  return row;
}

}  // namespace kestro::forms
