#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/form.h"
#include "forms/grid.h"
#include "forms/key.h"

namespace kestro::forms {

/// What a grid shows besides its column captions.
struct GridReading {
  static constexpr std::int64_t kMostRows = 20;

  std::int64_t row_count = 0;
  std::vector<std::vector<std::string>> rows;  // the cells of the first rows, at most kMostRows
  std::int64_t selected_row = Grid::kNoRow;

  friend bool operator==(const GridReading&, const GridReading&) = default;
};

/// What a progress bar shows.
struct ProgressReading {
  int value = 0;
  int maximum = 0;

  friend bool operator==(const ProgressReading&, const ProgressReading&) = default;
};

/// What a window's control shows, as read from the front end.
struct ControlReading {
  std::string name;                    // "NAME", or "NAME(INDEX)" for an element of an array
  std::vector<std::string> texts;      // caption, text, items, tab or column captions, tool tips ("" for a
                                       // gap); empty for a separator
  std::optional<std::string> picture;  // file of a picture, empty when it shows none
  std::optional<int> index;            // selected item or tab, -1 = none
  bool hidden = false;
  bool disabled = false;
  bool checked = false;
  bool focus = false;
  std::optional<std::string> typed = {};         // field of an editable list
  std::optional<GridReading> grid = {};          // of a grid
  std::optional<ProgressReading> progress = {};  // of a progress bar
  std::vector<int> hidden_buttons = {};          // and gaps of a tool bar, numbered from 1
  std::vector<int> disabled_buttons = {};        // of those that are shown, without the gaps

  friend bool operator==(const ControlReading&, const ControlReading&) = default;
};

struct WindowReading {
  std::string caption;
  bool visible = false;
  WindowState state = WindowState::kNormal;
  std::vector<ControlReading> controls;  // in the window's own order
};

/// Operates a front end as the user does and reads back what it shows: actions
/// go through the toolkit's widgets, readings come from them, not from the model.
///
/// Actions return false, without doing anything, when the control is disabled,
/// hidden or out of reach (another tab page, a window behind a modal one, a
/// hidden window; the tray window's controls can be used although it never
/// shows). base::ProcessEnded comes through.
///
/// Focus: the first reachable control that takes the keyboard (button, text box,
/// combo box, check box, grid) has it when a window is first shown; an action on such
/// a control moves it there; a control that is disabled or hidden hands it to the
/// next one in the window's order, from the end to the beginning.
class FrontEndDriver {
 public:
  virtual ~FrontEndDriver() = default;

  /// Buttons, check boxes, menu entries.
  virtual bool Click(Form& form, Control& control) = 0;
  /// Replaces the text of a text box or of an editable combo box; what exceeds
  /// its maximum length is not taken. Other controls refuse.
  virtual bool Type(Form& form, Control& control, std::string_view text) = 0;
  /// Item of a combo box or a tab page.
  virtual bool Choose(Form& form, Control& control, int index) = 0;
  virtual bool Check(Form& form, CheckBox& control, bool checked) = 0;
  /// Presses a row, or Grid::kNoRow for the place beside the rows. A row that is not there is refused.
  virtual bool PressRow(Form& form, Grid& grid, std::int64_t row) = 0;
  /// PressRow, then the double click, which reaches the grid only on its selected row.
  virtual bool DoubleClickRow(Form& form, Grid& grid, std::int64_t row) = 0;
  virtual bool PressHeader(Form& form, Grid& grid, int column) = 0;
  /// Button of a tool bar, numbered from 1; gaps and disabled or hidden buttons refuse.
  virtual bool PressTool(Form& form, ToolBar& bar, int number) = 0;
  /// Puts the window in front and presses a key where its keyboard is. The
  /// control there comes first with the keys it needs itself, then the default
  /// button with Enter (not when a grid has the keyboard), then the shortcuts of
  /// the menu bar and of the window, then the default and the cancel button.
  /// False when the window cannot get the keyboard; a key that means nothing
  /// there is pressed all the same.
  virtual bool PressKey(Form& form, const Key& key) = 0;
  /// Asks the window to close, mode 0 through the window's own close button.
  virtual void Close(Form& form, int unload_mode) = 0;
  [[nodiscard]] virtual WindowReading Read(Form& form) = 0;
  /// Lets the events of the last action run.
  virtual void Settle() = 0;
  /// Writes a picture of the window as it looks now; false where nothing is drawn.
  virtual bool SavePicture(Form& form, const std::string& native_file) = 0;
};

}  // namespace kestro::forms
