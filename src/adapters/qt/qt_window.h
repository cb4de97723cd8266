#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QWidget>

#include "adapters/qt/control_binding.h"
#include "adapters/qt/event_boundary.h"
#include "adapters/qt/qt_menus.h"
#include "forms/form.h"

class QEventLoop;
class QScrollArea;

namespace kestro::adapters {

class QtWindow;

/// What a window tells the host that it belongs to.
class WindowListener {
 public:
  virtual ~WindowListener() = default;
  /// The window system made it the active window.
  virtual void WindowActivated(QtWindow& window) = 0;
  [[nodiscard]] virtual std::string NativePath(const std::string& system_path) const = 0;
};

/// The real window of one loaded form: its widgets, its menus, its place.
class QtWindow final : public QWidget, private BindingOwner {
 public:
  /// Builds all widgets; the window is hidden. Form, boundary and listener must
  /// outlive it, the form only until Detach.
  QtWindow(forms::Form& form, forms::WindowHandle handle, EventBoundary& boundary, WindowListener& listener);
  ~QtWindow() override;
  QtWindow(const QtWindow&) = delete;
  QtWindow& operator=(const QtWindow&) = delete;

  /// The form is going: hides the window, which hears of nothing from now on.
  void Detach();
  /// nullptr after Detach.
  [[nodiscard]] forms::Form* form() const { return form_; }
  [[nodiscard]] forms::WindowHandle handle() const { return handle_; }

  /// Shows the window as the form says. `activate`: it may take the keyboard.
  void Appear(bool activate);
  void Disappear();
  void BringToFront(bool activate);
  /// The loop that waits for this window to disappear.
  void SetModalLoop(QEventLoop* loop) { modal_loop_ = loop; }

  void SyncWindow();
  void SyncControl(forms::Control& control);
  void SyncMenu(forms::MenuItem& parent);
  /// Moves the keyboard to the control if it can have it.
  void FocusControl(const forms::Control& control);

  [[nodiscard]] QtMenus& menus() { return *menus_; }
  /// nullptr for a menu entry or a control of another form.
  [[nodiscard]] const ControlBinding* Binding(const forms::Control& control) const;
  /// The control that has the keyboard when the window has, nullptr for none.
  [[nodiscard]] const forms::Control* FocusedControl() const;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void UserActed(forms::Control& control, const std::function<void()>& action) override;
  [[nodiscard]] std::string NativePath(const std::string& system_path) const override;

  void BuildControls();
  void LayOut();
  void ConnectLabels();
  void BuildShortcuts();
  [[nodiscard]] QWidget* WidgetOf(const forms::Control& control) const;
  [[nodiscard]] QWidget& HolderOf(const forms::Container* container);
  /// Presses the button of that role if the user could.
  bool PressButton(forms::Button::Role role);
  /// Enter that no control has used: a button or a shortcut; false when there is neither.
  bool PressEnter();
  bool RunEnterShortcut();
  void RunShortcut(const forms::Handler& handler);

  void FitToContent();
  /// Once for all changes of the event being handled.
  void FitToContentSoon();
  void KeepRoomForContent();
  [[nodiscard]] int MenuHeight() const;
  void PutInPlace();
  void MoveInsideScreen(QPoint wanted);
  void MoveFocusOn();
  void GiveFirstFocus();
  void GiveFocus(const forms::Control* control);
  [[nodiscard]] bool IsUsersMove(Qt::FocusReason reason) const;

  forms::Form* form_;
  forms::WindowHandle handle_;
  EventBoundary& boundary_;
  WindowListener& listener_;
  QScrollArea& scroll_area_;  // for screens that are too small for the window
  QWidget& content_;
  std::vector<std::unique_ptr<ControlBinding>> bindings_;  // in the form's order
  std::map<const forms::Control*, ControlBinding*> by_control_;
  std::unique_ptr<QtMenus> menus_;
  QEventLoop* modal_loop_ = nullptr;
  const forms::Control* focus_ = nullptr;  // where the keyboard was put by the user or the program
  bool giving_focus_ = false;
  bool has_appeared_ = false;
  bool fit_is_due_ = false;
  std::string shown_caption_;
  forms::WindowState shown_state_ = forms::WindowState::kNormal;
};

}  // namespace kestro::adapters
