#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adapters/win32/front_end/control_binding.h"
#include "adapters/win32/front_end/menus.h"
#include "adapters/win32/front_end/panel.h"
#include "adapters/win32/front_end/win32_event_boundary.h"
#include "forms/form.h"

namespace kestro::adapters::win32 {

class Window;

/// What a window tells the host that it belongs to.
class WindowListener {
 public:
  virtual ~WindowListener() = default;
  /// The system made it the active window.
  virtual void WindowActivated(Window& window) = 0;
  [[nodiscard]] virtual std::string NativePath(const std::string& system_path) const = 0;
  [[nodiscard]] virtual forms::Pointer pointer() const = 0;
  /// A menu of the window stands open and waits.
  virtual void MenuWaits() = 0;
};

/// The real window of one loaded form: its controls, its menus, its place.
class Window final : private BindingOwner, private PanelListener {
 public:
  /// Makes the window with all its controls, hidden. Form, boundary and listener
  /// must outlive it, the form only until Detach.
  Window(forms::Form& form, forms::WindowHandle handle, Win32EventBoundary& boundary,
         WindowListener& listener);
  ~Window() override;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  /// The form is going: hides the window, which hears of nothing from now on.
  void Detach();
  /// nullptr after Detach.
  [[nodiscard]] forms::Form* form() const { return form_; }
  [[nodiscard]] forms::WindowHandle handle() const { return handle_; }
  [[nodiscard]] HWND window() const { return window_.get(); }

  /// Shows the window as the form says. `activate`: it may take the keyboard.
  void Appear(bool activate);
  void Disappear();
  void BringToFront(bool activate);

  void SyncWindow();
  void SyncControl(forms::Control& control);
  void SyncMenu(forms::MenuItem& parent);
  /// Moves the keyboard to the control if it can have it.
  void FocusControl(const forms::Control& control);

  [[nodiscard]] Menus& menus() { return *menus_; }
  /// nullptr for a menu entry or a control of another form.
  [[nodiscard]] ControlBinding* Binding(const forms::Control& control) const;
  /// The control that has the keyboard when the window has, nullptr for none.
  [[nodiscard]] const forms::Control* FocusedControl() const;
  /// The native control is shown and enabled, and so is all that holds it inside the window.
  [[nodiscard]] bool Operable(const ControlBinding& binding) const;
  [[nodiscard]] std::string Caption() const;
  [[nodiscard]] forms::WindowState State() const;
  /// A key or a character for one of the window's controls; true when the window has used it.
  bool FilterKey(const MSG& message);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept;
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);

  // BindingOwner
  void UserActed(forms::Control& control, const std::function<void()>& action) override;
  [[nodiscard]] std::string NativePath(const std::string& system_path) const override;
  [[nodiscard]] const Fonts& fonts() const override { return *fonts_; }
  [[nodiscard]] ContainerLayout LayoutOf(const forms::Container& container, Margins margins) const override;
  [[nodiscard]] PanelListener& panel_listener() override { return *this; }
  // PanelListener
  void OnCommand(HWND control, int id, int notification) override;
  LRESULT OnNotify(NMHDR& header) override;
  void OnDraw(const DRAWITEMSTRUCT& item) override;
  void OnWheel(int delta) override;

  void Create();
  void BuildControls();
  [[nodiscard]] HWND HolderOf(const forms::Container* container) const;
  [[nodiscard]] ControlBinding* BindingOf(HWND window) const;

  // The user and the window.
  void CloseAsked();
  void Activated();
  void StateChanged(WPARAM size_kind);

  // The keyboard.
  bool KeyDown(WPARAM code, HWND target);
  [[nodiscard]] static bool NativeUsesKey(const ControlBinding* focus, const forms::Key& key, WPARAM code);
  bool PressButton(forms::Button::Role role);
  bool RunShortcut(const forms::Key& key);
  bool RunMnemonic(wchar_t character);
  void MoveByTab(bool back);
  void ShowKeyboardCues();
  void MarkDefaultButton();

  // The focus.
  void GiveFocus(const forms::Control* control);
  void GiveFirstFocus();
  void MoveFocusOn();
  void TakeFocusFrom(HWND focused);

  // The place.
  [[nodiscard]] RECT Frame() const;
  [[nodiscard]] SIZE Room() const;
  void FitToContent();
  void FitToContentSoon();
  void LayOut();
  void SetScrollBars(SIZE content, SIZE inside);
  void Scroll(int bar, int request);
  void PutInPlace();
  void MoveInsideScreen(POINT wanted);
  void LimitSize(MINMAXINFO& limits) const;
  void UseDensity(int dpi, const RECT& suggested);
  void UseFonts(int dpi);

  forms::Form* form_;
  forms::WindowHandle handle_;
  Win32EventBoundary& boundary_;
  WindowListener& listener_;
  std::unique_ptr<Fonts> fonts_;
  // The native window goes first, with all that stands in it: its controls call back into these.
  std::unique_ptr<Panel> content_;
  std::vector<std::unique_ptr<ControlBinding>> bindings_;  // in the form's order
  std::map<const forms::Control*, ControlBinding*> by_control_;
  std::map<HWND, ControlBinding*> by_window_;
  std::unique_ptr<Menus> menus_;
  OwnedWindow window_;
  const forms::Control* focus_ = nullptr;  // where the keyboard is when the window has it
  POINT scrolled_{};
  bool giving_focus_ = false;
  bool has_appeared_ = false;
  bool fit_is_due_ = false;
  bool laying_out_ = false;
  std::string shown_caption_;
  forms::WindowState shown_state_ = forms::WindowState::kNormal;
};

}  // namespace kestro::adapters::win32
