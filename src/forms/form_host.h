#pragma once

#include "ports/notification_area.h"

namespace kestro::forms {

class Form;
class Control;
class MenuItem;

using ports::WindowHandle;

/// In twips.
struct ScreenSize {
  int width = 15360;
  int height = 11520;
};

enum class Pointer { kDefault, kHourglass };

/// The front end: draws loaded forms and tells them what the user does. Reads
/// every state from the form; holds no logic and no texts. User-interface thread only.
///
/// What the user does goes back through the controls' own operations
/// (Button::Click, ComboBox::SetListIndex, Form::RequestUnload(kControlMenu), ...).
/// base::ProcessEnded coming out of one of them ends the front end's event loop.
class FormHost {
 public:
  virtual ~FormHost() = default;

  /// Makes the (hidden) window and returns its handle: 1, 2, 3 ... in the order
  /// of loading. The form stays valid until Unload.
  virtual WindowHandle Load(Form& form) = 0;
  virtual void Unload(Form& form) = 0;
  /// The form's visible state has just been set accordingly.
  virtual void Show(Form& form) = 0;
  virtual void Hide(Form& form) = 0;
  /// Runs events until the form is no longer visible.
  virtual void ShowModal(Form& form, Form* owner) = 0;
  /// Caption, place or window state changed.
  virtual void WindowChanged(Form& form) = 0;
  virtual void ControlChanged(Form& form, Control& control) = 0;
  /// Entries were added to or removed from the menu below `parent`.
  virtual void MenuChanged(Form& form, MenuItem& parent) = 0;
  virtual void FocusControl(Form& form, Control& control) = 0;
  /// Opens a pop-up menu at the pointer.
  virtual void PopupMenu(Form& form, MenuItem& menu) = 0;

  [[nodiscard]] virtual ScreenSize Screen() const = 0;
  virtual void SetPointer(Pointer pointer) = 0;
  /// Lets pending window events run.
  virtual void DoEvents() = 0;
};

}  // namespace kestro::forms
