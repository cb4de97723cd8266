#include "adapters/win32/front_end/win32_front_end_driver.h"

#include "adapters/win32/front_end/screenshot.h"
#include "adapters/win32/front_end/user_events.h"
#include "adapters/win32/wide_text.h"

namespace kestro::adapters {

using forms::Control;
using forms::ControlKind;
using forms::Form;
using win32::ControlBinding;

namespace {

LRESULT Ask(const ControlBinding& binding, UINT message) {
  return SendMessageW(binding.window(), message, 0, 0);
}

bool HasStyle(HWND window, LONG_PTR style) { return (GetWindowLongPtrW(window, GWL_STYLE) & style) != 0; }

/// The field that the user types into; nullptr where he cannot.
HWND FieldOf(const ControlBinding& binding) {
  const HWND window = binding.window();
  if (binding.control().kind() == ControlKind::kTextBox)
    return HasStyle(window, ES_READONLY) ? nullptr : window;
  if (binding.control().kind() != ControlKind::kComboBox) return nullptr;
  return FindWindowExW(window, nullptr, L"Edit", nullptr);
}

/// The real press where it can be seen, else (in the tray window) the report of one.
void PressButton(const ControlBinding& binding) {
  if (IsWindowVisible(binding.window()) != 0) {
    SendMessageW(binding.window(), BM_CLICK, 0, 0);
    return;
  }
  if (binding.control().kind() == ControlKind::kCheckBox) {
    const bool checked = Ask(binding, BM_GETCHECK) == BST_CHECKED;
    SendMessageW(binding.window(), BM_SETCHECK, checked ? BST_UNCHECKED : BST_CHECKED, 0);
  }
  SendMessageW(GetParent(binding.window()), WM_COMMAND, MAKEWPARAM(0, BN_CLICKED),
               reinterpret_cast<LPARAM>(binding.window()));
}

}  // namespace

Win32FrontEndDriver::Win32FrontEndDriver(Win32FormHost& host, std::string_view tray_window)
    : host_(host), tray_window_(tray_window) {
  host_.CloseMenusAtOnce();
}

bool Win32FrontEndDriver::WindowReachable(const Form& form) const {
  const win32::Window* window = host_.Window(form);
  if (window == nullptr) return false;
  if (form.name() == tray_window_) return true;
  return IsWindowVisible(window->window()) != 0 && IsWindowEnabled(window->window()) != 0;
}

ControlBinding* Win32FrontEndDriver::Reachable(const Form& form, const Control& control) const {
  if (!WindowReachable(form)) return nullptr;
  const win32::Window* window = host_.Window(form);
  ControlBinding* binding = window->Binding(control);
  return binding != nullptr && window->Operable(*binding) ? binding : nullptr;
}

bool Win32FrontEndDriver::Done() const {
  host_.boundary().RethrowEnd();
  return true;
}

bool Win32FrontEndDriver::ClickMenu(win32::Window& window, const forms::MenuItem& item) {
  win32::Menus& menus = window.menus();
  if (!menus.Knows(item) || menus.Menu(item) != nullptr || !menus.Reachable(item)) return false;
  if (item.role() == forms::MenuItem::Role::kSeparator) return false;
  SendMessageW(window.window(), WM_COMMAND, MAKEWPARAM(menus.Command(item), 0), 0);
  return Done();
}

bool Win32FrontEndDriver::Click(Form& form, Control& control) {
  if (const auto* item = dynamic_cast<const forms::MenuItem*>(&control)) {
    return WindowReachable(form) && ClickMenu(*host_.Window(form), *item);
  }
  const ControlBinding* binding = Reachable(form, control);
  const bool button = control.kind() == ControlKind::kButton || control.kind() == ControlKind::kCheckBox;
  if (binding == nullptr || !button) return false;
  host_.Window(form)->FocusControl(control);
  PressButton(*binding);
  return Done();
}

bool Win32FrontEndDriver::Type(Form& form, Control& control, std::string_view text) {
  const ControlBinding* binding = Reachable(form, control);
  const HWND field = binding == nullptr ? nullptr : FieldOf(*binding);
  if (field == nullptr) return false;
  host_.Window(form)->FocusControl(control);
  win32::TypeOver(field, ToWide(text));
  return Done();
}

bool Win32FrontEndDriver::Choose(Form& form, Control& control, int index) {
  const ControlBinding* binding = Reachable(form, control);
  if (binding == nullptr || index < 0) return false;
  if (control.kind() == ControlKind::kComboBox) {
    if (index >= Ask(*binding, CB_GETCOUNT)) return false;
    host_.Window(form)->FocusControl(control);
    win32::ChooseItem(binding->window(), index);
    return Done();
  }
  if (control.kind() != ControlKind::kTabPages || index >= Ask(*binding, TCM_GETITEMCOUNT)) return false;
  SendMessageW(binding->window(), TCM_SETCURFOCUS, static_cast<WPARAM>(index), 0);
  return Done();
}

bool Win32FrontEndDriver::Check(Form& form, forms::CheckBox& control, bool checked) {
  const ControlBinding* binding = Reachable(form, control);
  if (binding == nullptr) return false;
  host_.Window(form)->FocusControl(control);
  if ((Ask(*binding, BM_GETCHECK) == BST_CHECKED) != checked) PressButton(*binding);
  return Done();
}

void Win32FrontEndDriver::Close(Form& form, int unload_mode) {
  if (unload_mode != forms::kControlMenu) {
    form.RequestUnload(unload_mode);
  } else if (WindowReachable(form) && IsWindowVisible(host_.Window(form)->window()) != 0) {
    SendMessageW(host_.Window(form)->window(), WM_SYSCOMMAND, SC_CLOSE, 0);
  }
  Done();
}

forms::WindowReading Win32FrontEndDriver::Read(Form& form) {
  win32::Window* window = host_.Window(form);
  std::unique_ptr<win32::Window> made_to_look_at;
  if (window == nullptr) {
    made_to_look_at = host_.MakeWindow(form);
    window = made_to_look_at.get();
  }
  const bool visible = IsWindowVisible(window->window()) != 0;
  forms::WindowReading reading{window->Caption(), visible, window->State(), {}};
  for (const Control* const pointer : form.controls()) {
    const Control& control = *pointer;
    if (const auto* item = dynamic_cast<const forms::MenuItem*>(&control)) {
      reading.controls.push_back(window->menus().Read(*item));
      continue;
    }
    forms::ControlReading& entry = reading.controls.emplace_back(window->Binding(control)->Read());
    entry.focus = window->FocusedControl() == &control;
  }
  return reading;
}

void Win32FrontEndDriver::Settle() {
  host_.boundary().DispatchWaiting();
  Done();
}

bool Win32FrontEndDriver::SavePicture(Form& form, const std::string& native_file) {
  const win32::Window* window = host_.Window(form);
  if (window == nullptr || IsWindowVisible(window->window()) == 0) return false;
  host_.boundary().DispatchWaiting();  // what is still to be laid out
  window = host_.Window(form);
  return window != nullptr && win32::SaveScreenshot(window->window(), ToWide(native_file));
}

}  // namespace kestro::adapters
