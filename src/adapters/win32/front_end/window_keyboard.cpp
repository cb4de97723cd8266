#include <algorithm>

#include "adapters/win32/front_end/grid_binding.h"
#include "adapters/win32/front_end/keys.h"
#include "adapters/win32/front_end/native_text.h"
#include "adapters/win32/front_end/user_events.h"
#include "adapters/win32/front_end/window.h"
#include "forms/keyboard_focus.h"

// What keys do in a window: first the control that has the keyboard, then the
// buttons, then the shortcuts.

namespace kestro::adapters::win32 {
namespace {

using forms::Button;
using forms::Control;
using forms::Key;
using forms::MenuItem;

bool IsEnter(const Key& key) { return key.plain() && key.name == "Enter"; }

/// Keys that a text field needs to edit its text.
bool EditsText(const Key& key) {
  static constexpr std::string_view kClipboardAndUndo = "ACVXZY";
  if (key.alt) return false;
  if (key.name == "Del" || key.name == "Home" || key.name == "End") return true;
  return key.control && key.name.size() == 1 && kClipboardAndUndo.find(key.name) != std::string_view::npos;
}

bool NeedsInTextBox(const forms::TextBox& box, const Key& key) {
  if (box.read_only()) return key.control && (key.name == "C" || key.name == "A");
  const bool many_lines = box.lines() == forms::TextBox::Lines::kMany;
  if (many_lines && (IsEnter(key) || key.name == "Up" || key.name == "Down")) return true;
  return EditsText(key);
}

bool NeedsInComboBox(const forms::ComboBox& combo, HWND window, const Key& key) {
  if (SendMessageW(window, CB_GETDROPPEDSTATE, 0, 0) != FALSE) return !key.control && !key.alt;
  if (combo.style() == forms::ComboBox::Style::kEditable && EditsText(key)) return true;
  return key.alt && (key.name == "Up" || key.name == "Down");  // opens the list
}

/// Moves in a closed list, alike on every system; false for a key that is none for it.
bool MoveInComboBox(const ControlBinding& combo, const Key& key) {
  const auto place = static_cast<int>(SendMessageW(combo.window(), CB_GETCURSEL, 0, 0));
  const auto count = static_cast<int>(SendMessageW(combo.window(), CB_GETCOUNT, 0, 0));
  if (!key.plain() || count == 0) return false;
  const int wanted = key.name == "Up"     ? std::max(place - 1, 0)
                     : key.name == "Down" ? std::min(place + 1, count - 1)
                     : key.name == "Home" ? 0
                     : key.name == "End"  ? count - 1
                                          : -1;
  if (wanted >= 0 && wanted != place) ChooseItem(combo.window(), wanted);
  return wanted >= 0;
}

bool InMenuBar(const MenuItem& item) {
  const MenuItem* root = &item;
  while (root->parent_item() != nullptr) root = root->parent_item();
  return root->role() == MenuItem::Role::kBar;
}

}  // namespace

bool Window::FilterKey(const MSG& message) {
  if (form_ == nullptr) return false;
  switch (message.message) {
    case WM_KEYDOWN:
      return KeyDown(message.wParam, message.hwnd);
    case WM_SYSKEYDOWN:
      if (message.wParam == VK_MENU || message.wParam == VK_F10) ShowKeyboardCues();
      return KeyDown(message.wParam, message.hwnd);
    case WM_SYSCHAR:
      return RunMnemonic(static_cast<wchar_t>(message.wParam));
    default:
      return false;
  }
}

bool Window::KeyDown(WPARAM code, HWND target) {
  const ControlBinding* focus = BindingOf(target);
  const bool list_is_open = focus != nullptr && focus->control().kind() == forms::ControlKind::kComboBox &&
                            SendMessageW(focus->window(), CB_GETDROPPEDSTATE, 0, 0) != FALSE;
  if (code == VK_TAB && GetKeyState(VK_CONTROL) >= 0 && GetKeyState(VK_MENU) >= 0) {
    if (list_is_open) SendMessageW(focus->window(), CB_SHOWDROPDOWN, FALSE, 0);
    MoveByTab(GetKeyState(VK_SHIFT) < 0);
    return true;
  }
  const auto key = KeyOf(code);
  if (!key) return false;
  if (NativeUsesKey(focus, *key, code)) {
    const bool edit = focus->control().kind() == forms::ControlKind::kTextBox;
    if (!edit || !key->control || key->name != "A") return false;
    SendMessageW(focus->window(), EM_SETSEL, 0, -1);  // not every system's field knows this key
    return true;
  }
  if (focus != nullptr && focus->control().kind() == forms::ControlKind::kComboBox &&
      MoveInComboBox(*focus, *key)) {
    return true;
  }
  const bool enter = IsEnter(*key);
  const bool in_grid = focus != nullptr && focus->control().kind() == forms::ControlKind::kGrid;
  if (enter && focus != nullptr && focus->control().kind() == forms::ControlKind::kButton) {
    SendMessageW(focus->window(), BM_CLICK, 0, 0);
    return true;
  }
  if (enter && !in_grid && PressButton(Button::Role::kDefault)) return true;
  if (RunShortcut(*key)) return true;
  if (!key->plain()) return false;
  if (enter) PressButton(Button::Role::kDefault);
  if (key->name == "Esc") PressButton(Button::Role::kCancel);
  return enter || key->name == "Esc";  // a field would only beep
}

bool Window::NativeUsesKey(const ControlBinding* focus, const Key& key, WPARAM code) {
  if (focus == nullptr) return false;
  if (const auto* box = dynamic_cast<const forms::TextBox*>(&focus->control()))
    return NeedsInTextBox(*box, key);
  if (const auto* combo = dynamic_cast<const forms::ComboBox*>(&focus->control())) {
    return NeedsInComboBox(*combo, focus->window(), key);
  }
  if (const auto* label = dynamic_cast<const forms::Label*>(&focus->control())) {
    return label->role() != forms::Label::Role::kCaption && key.control &&
           (key.name == "C" || key.name == "A");
  }
  const auto* grid = dynamic_cast<const GridBinding*>(focus);
  return grid != nullptr && key.plain() && grid->UsesKey(code);
}

bool Window::PressButton(Button::Role role) {
  for (const auto& binding : bindings_) {
    const auto* button = dynamic_cast<const Button*>(&binding->control());
    if (button == nullptr || button->role() != role || !Operable(*binding)) continue;
    // A click would take the keyboard to the button.
    SendMessageW(GetParent(binding->window()), WM_COMMAND, MAKEWPARAM(0, BN_CLICKED),
                 reinterpret_cast<LPARAM>(binding->window()));
    return true;
  }
  return false;
}

bool Window::RunShortcut(const Key& key) {
  for (const Control* control : form_->controls()) {
    const auto* item = dynamic_cast<const MenuItem*>(control);
    if (item == nullptr || item->shortcut().empty() || forms::ParseKey(item->shortcut()) != key) continue;
    if (!InMenuBar(*item) || !menus_->Reachable(*item)) continue;
    SendMessageW(window(), WM_COMMAND, MAKEWPARAM(menus_->Command(*item), 1), 0);
    return true;
  }
  const auto& shortcuts = form_->shortcuts();
  const auto found = std::find_if(shortcuts.begin(), shortcuts.end(),
                                  [&](const auto& shortcut) { return forms::ParseKey(shortcut.key) == key; });
  if (found == shortcuts.end()) return false;
  if (found->handler) boundary_.Run(Win32EventBoundary::Cause::kUser, found->handler);
  return true;
}

bool Window::RunMnemonic(wchar_t character) {
  CharUpperBuffW(&character, 1);
  for (const auto& binding : bindings_) {
    const auto* captioned = dynamic_cast<const forms::CaptionedControl*>(&binding->control());
    if (captioned == nullptr || !Operable(*binding) || MnemonicOf(captioned->caption()) != character)
      continue;
    if (captioned->kind() == forms::ControlKind::kButton ||
        captioned->kind() == forms::ControlKind::kCheckBox) {
      FocusControl(*captioned);
      SendMessageW(binding->window(), BM_CLICK, 0, 0);
      return true;
    }
    for (const Control* control : form_->controls()) {
      const bool named = control->named_by() == captioned;
      const auto* frame = dynamic_cast<const forms::Frame*>(captioned);
      const bool inside =
          frame != nullptr && control->parent() == static_cast<const forms::Container*>(frame);
      if ((!named && !inside) || !forms::CanHaveKeyboard(*control)) continue;
      GiveFocus(control);
      return true;
    }
  }
  return false;
}

void Window::MoveByTab(bool back) {
  ShowKeyboardCues();
  std::vector<const Control*> candidates(form_->controls().begin(), form_->controls().end());
  const auto place = std::find(candidates.begin(), candidates.end(), FocusedControl());
  if (place != candidates.end()) std::rotate(candidates.begin(), std::next(place), candidates.end());
  if (back) {
    // The control itself stands at the end, where it stays for both directions.
    std::reverse(candidates.begin(),
                 place == candidates.end() ? candidates.end() : std::prev(candidates.end()));
  }
  const auto next = std::find_if(candidates.begin(), candidates.end(),
                                 [](const Control* control) { return forms::CanHaveKeyboard(*control); });
  if (next == candidates.end()) return;
  GiveFocus(*next);
  if ((*next)->kind() == forms::ControlKind::kTextBox)
    SendMessageW(Binding(**next)->window(), EM_SETSEL, 0, -1);
}

void Window::ShowKeyboardCues() {
  SendMessageW(window(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEACCEL | UISF_HIDEFOCUS), 0);
}

}  // namespace kestro::adapters::win32
