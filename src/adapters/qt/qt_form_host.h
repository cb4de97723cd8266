#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QObject>

#include "adapters/qt/event_boundary.h"
#include "adapters/qt/qt_window.h"
#include "forms/form.h"

class QMenu;

namespace kestro::adapters {

/// Native path of one of the program's paths ("\" separators).
using PathTranslator = std::function<std::string(std::string_view system_path)>;

/// Draws forms with Qt widgets. Needs a QApplication, which must outlive it.
///
/// A window that the user asked for takes the keyboard; one that appears by
/// itself (a call) is put in front and leaves the keyboard where it is.
class QtFormHost final : public forms::FormHost, private WindowListener {
 public:
  QtFormHost(EventBoundary& boundary, PathTranslator native_path);
  ~QtFormHost() override;
  QtFormHost(const QtFormHost&) = delete;
  QtFormHost& operator=(const QtFormHost&) = delete;

  /// Answers Screen() from now on; for runs that must not depend on the desktop.
  void UseScreen(forms::ScreenSize screen) { fixed_screen_ = screen; }

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
  /// Returns at once; the menu stays open until the user has chosen.
  void PopupMenu(forms::Form& form, forms::MenuItem& menu) override;
  [[nodiscard]] forms::ScreenSize Screen() const override;
  void SetPointer(forms::Pointer pointer) override;
  void DoEvents() override;

  /// A window of the form that is not managed here: to look at one that is not loaded.
  [[nodiscard]] std::unique_ptr<QtWindow> MakeWindow(forms::Form& form, forms::WindowHandle handle = 0);
  /// nullptr for a form that is not loaded.
  [[nodiscard]] QtWindow* Window(const forms::Form& form) const;
  [[nodiscard]] QtWindow* Window(forms::WindowHandle handle) const;
  /// First pop-up menu of that window, nullptr when there is none.
  [[nodiscard]] QMenu* PopupMenuOf(forms::WindowHandle handle) const;
  /// The program's window in front, 0 when none is shown.
  [[nodiscard]] forms::WindowHandle FrontWindow() const;
  /// Puts a shown window in front of the others; false when it is not shown.
  bool BringToFront(forms::WindowHandle handle);
  [[nodiscard]] EventBoundary& boundary() { return boundary_; }

 private:
  void WindowActivated(QtWindow& window) override;
  [[nodiscard]] std::string NativePath(const std::string& system_path) const override;

  void PutOnScreen(QtWindow& window);
  /// `tell`: the window that is in front afterwards learns it.
  void TakeOffScreen(QtWindow& window, bool tell);
  /// Destroys unloaded windows as soon as no code of theirs can be running.
  void BuryLater();

  EventBoundary& boundary_;
  PathTranslator native_path_;
  QObject context_;  // tasks of a host that is gone are not run
  std::optional<forms::ScreenSize> fixed_screen_;
  forms::Pointer pointer_ = forms::Pointer::kDefault;
  forms::WindowHandle last_handle_ = 0;
  std::map<const forms::Form*, std::unique_ptr<QtWindow>> windows_;
  std::vector<std::unique_ptr<QtWindow>> unloaded_;
  std::vector<QtWindow*> shown_;  // from the back to the front
};

}  // namespace kestro::adapters
