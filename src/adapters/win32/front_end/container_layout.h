#pragma once

#include <functional>
#include <vector>

#include "adapters/win32/front_end/fonts.h"
#include "adapters/win32/front_end/tracks.h"
#include "forms/control.h"

namespace kestro::adapters::win32 {

/// How large something should be, in pixels.
struct SizeHint {
  int least_width = 0;
  int width = 0;
  int least_height = 0;
  int height = 0;
  bool grows_wide = false;
  bool grows_high = false;
};

/// Something that a layout puts in its place.
class LayoutElement {
 public:
  virtual ~LayoutElement() = default;
  [[nodiscard]] virtual SizeHint Measure() const = 0;
  /// Height that it wants when it is that wide.
  [[nodiscard]] virtual int HeightFor(int /*width*/) const { return Measure().height; }
  virtual void Place(const RECT& place) = 0;
  /// Takes room.
  [[nodiscard]] virtual bool Shown() const = 0;
};

/// How much air is around the controls of a container.
enum class Margins { kNone, kWindow, kPage };

/// Puts the controls of a container in its rows and columns. Made for one
/// measurement; container, fonts and elements must outlive it.
class ContainerLayout {
 public:
  /// nullptr for a control that stands nowhere.
  using ElementOf = std::function<LayoutElement*(const forms::Control&)>;

  ContainerLayout(const forms::Container& container, Margins margins, const Fonts& fonts,
                  const ElementOf& element_of);

  [[nodiscard]] SizeHint Measure() const;
  [[nodiscard]] int HeightFor(int width) const;
  /// `place` is inside the window that holds the controls.
  void Place(const RECT& place) const;

 private:
  struct Item {
    LayoutElement* element = nullptr;
    const forms::Container::Placed* placed = nullptr;
    SizeHint hint;
  };

  [[nodiscard]] Tracks Columns() const;
  [[nodiscard]] Tracks Rows(const Tracks* filled_columns) const;
  [[nodiscard]] RECT PlaceInCell(const Item& item, const RECT& cell) const;
  [[nodiscard]] bool InTallRow(const forms::Container::Placed& placed) const;

  const forms::Container& container_;
  int gap_;
  int around_;
  std::vector<Item> items_;
};

}  // namespace kestro::adapters::win32
