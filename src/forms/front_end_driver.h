#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/form.h"

namespace kestro::forms {

/// What a window's control shows, as read from the front end.
struct ControlReading {
  std::string name;                    // "NAME", or "NAME(INDEX)" for an element of an array
  std::vector<std::string> texts;      // caption, text, items or tab captions; empty for a separator
  std::optional<std::string> picture;  // file of a picture, empty when it shows none
  std::optional<int> index;            // selected item or tab, -1 = none
  bool hidden = false;
  bool disabled = false;
  bool checked = false;
  bool focus = false;

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
/// combo box, check box) has it when a window is first shown; an action on such
/// a control moves it there; a control that is disabled or hidden hands it to the
/// next one in the window's order, from the end to the beginning.
class FrontEndDriver {
 public:
  virtual ~FrontEndDriver() = default;

  /// Buttons, check boxes, menu entries.
  virtual bool Click(Form& form, Control& control) = 0;
  /// Replaces the text of a text box; what exceeds its maximum length is not taken.
  virtual bool Type(Form& form, TextBox& control, std::string_view text) = 0;
  /// Item of a combo box or a tab page.
  virtual bool Choose(Form& form, Control& control, int index) = 0;
  virtual bool Check(Form& form, CheckBox& control, bool checked) = 0;
  /// Asks the window to close, mode 0 through the window's own close button.
  virtual void Close(Form& form, int unload_mode) = 0;
  [[nodiscard]] virtual WindowReading Read(Form& form) = 0;
  /// Lets the events of the last action run.
  virtual void Settle() = 0;
  /// Writes a picture of the window as it looks now; false where nothing is drawn.
  virtual bool SavePicture(Form& form, const std::string& native_file) = 0;
};

}  // namespace kestro::forms
