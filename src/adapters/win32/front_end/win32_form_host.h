#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/win32/front_end/win32_event_boundary.h"
#include "adapters/win32/front_end/window.h"
#include "forms/form.h"

namespace kestro::adapters {

/// Native path of one of the program's paths.
using PathTranslator = std::function<std::string(std::string_view system_path)>;

/// Draws forms with the system's own controls.
///
/// A window that the user asked for takes the keyboard; one that appears by
/// itself (a call) is put in front and leaves the keyboard where it is.
class Win32FormHost final : public forms::FormHost, private win32::WindowListener {
 public:
  /// One host at a time may use the boundary, which must outlive it.
  Win32FormHost(Win32EventBoundary& boundary, PathTranslator native_path);
  ~Win32FormHost() override;
  Win32FormHost(const Win32FormHost&) = delete;
  Win32FormHost& operator=(const Win32FormHost&) = delete;

  /// Answers Screen() from now on; for runs that must not depend on the desktop.
  void UseScreen(forms::ScreenSize screen) { fixed_screen_ = screen; }
  /// Pop-up menus open and close again at once: nobody is there to choose from them.
  void CloseMenusAtOnce() { closes_menus_ = true; }

  forms::WindowHandle Load(forms::Form& form) override;
  void Unload(forms::Form& form) override;
  void Show(forms::Form& form) override;
  void Hide(forms::Form& form) override;
  /// Throws base::ProcessEnded when the process ends while the window is open; so does DoEvents.
  void ShowModal(forms::Form& form, forms::Form* owner) override;
  void WindowChanged(forms::Form& form) override;
  void ControlChanged(forms::Form& form, forms::Control& control) override;
  void MenuChanged(forms::Form& form, forms::MenuItem& parent) override;
  void FocusControl(forms::Form& form, forms::Control& control) override;
  /// Returns when the user has chosen or given up.
  void PopupMenu(forms::Form& form, forms::MenuItem& menu) override;
  [[nodiscard]] forms::ScreenSize Screen() const override;
  void SetPointer(forms::Pointer pointer) override;
  void DoEvents() override;

  /// A window of the form that is not managed here: to look at one that is not loaded.
  [[nodiscard]] std::unique_ptr<win32::Window> MakeWindow(forms::Form& form, forms::WindowHandle handle = 0);
  /// The form's window, which is made now if it has not been needed yet; nullptr for a form that is not
  /// loaded. Throws std::system_error when the system cannot make it.
  [[nodiscard]] win32::Window* Window(const forms::Form& form);
  [[nodiscard]] win32::Window* Window(forms::WindowHandle handle);
  /// The system's handle of that window, nullptr when there is none.
  [[nodiscard]] HWND NativeHandle(forms::WindowHandle handle);
  /// The program's window in front, 0 when none is shown.
  [[nodiscard]] forms::WindowHandle FrontWindow() const;
  /// Puts a shown window in front of the others; false when it is not shown.
  bool BringToFront(forms::WindowHandle handle);
  [[nodiscard]] Win32EventBoundary& boundary() { return boundary_; }

 private:
  /// A loaded form. Most forms are loaded long before anybody sees them, many are never seen: the native
  /// controls are made when the window is first needed.
  struct Loaded {
    forms::Form* form = nullptr;
    forms::WindowHandle handle{};
    std::unique_ptr<win32::Window> window;
  };
  /// A window that waits as the only one that can be used.
  struct Modal {
    win32::Window* window;
    std::vector<HWND> disabled;  // the others, for as long as it waits
  };

  // WindowListener
  void WindowActivated(win32::Window& window) override;
  [[nodiscard]] std::string NativePath(const std::string& system_path) const override;
  [[nodiscard]] forms::Pointer pointer() const override { return pointer_; }
  void MenuWaits() override;

  /// nullptr as long as the form's window has not been made.
  [[nodiscard]] win32::Window* Made(const forms::Form& form) const;
  win32::Window* Make(Loaded& loaded);
  [[nodiscard]] bool FilterKey(const MSG& message) const;
  void PutOnScreen(win32::Window& window, bool activate);
  /// `tell`: the window that is in front afterwards learns it.
  void TakeOffScreen(win32::Window& window, bool tell);
  /// Hands the keyboard to the next window of the program before this one goes.
  void Leave(win32::Window& window);
  void EnterModal(win32::Window& window, const forms::Form* owner);
  /// Does nothing when the window is not modal (any more).
  void LeaveModal(const win32::Window& window);
  /// Destroys unloaded windows as soon as no code of theirs can be running.
  void BuryUnloaded();

  Win32EventBoundary& boundary_;
  PathTranslator native_path_;
  std::optional<forms::ScreenSize> fixed_screen_;
  forms::Pointer pointer_ = forms::Pointer::kDefault;
  forms::WindowHandle last_handle_ = 0;
  std::map<const forms::Form*, Loaded> windows_;
  std::vector<std::unique_ptr<win32::Window>> unloaded_;
  std::vector<win32::Window*> shown_;  // from the back to the front
  std::vector<Modal> modal_;           // from the outer to the inner
  bool closes_menus_ = false;
  bool rearranging_ = false;  // the order of the windows is being changed here, not by the user
};

}  // namespace kestro::adapters
