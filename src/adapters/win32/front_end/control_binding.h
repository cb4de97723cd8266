#pragma once

#include <functional>
#include <memory>
#include <string>

#include "adapters/win32/front_end/container_layout.h"
#include "forms/controls.h"
#include "forms/front_end_driver.h"
#include "forms/grid.h"

namespace kestro::adapters::win32 {

/// What a binding needs of the window that it belongs to.
class BindingOwner {
 public:
  virtual ~BindingOwner() = default;
  /// Runs a user's action on the control's model and brings the native control in
  /// step with whatever the model has become. Does nothing on an unloaded window.
  virtual void UserActed(forms::Control& control, const std::function<void()>& action) = 0;
  /// Native path of a system path.
  [[nodiscard]] virtual std::string NativePath(const std::string& system_path) const = 0;
  [[nodiscard]] virtual const Fonts& fonts() const = 0;
  /// The layout of a container of this window.
  [[nodiscard]] virtual ContainerLayout LayoutOf(const forms::Container& container,
                                                 Margins margins) const = 0;
  /// Receives the messages of the controls inside a panel.
  [[nodiscard]] virtual class PanelListener& panel_listener() = 0;
};

/// Ties one control of a form to its native control: that follows the model, and
/// what the user does with it goes to the model. The native control belongs to
/// its window, which must be destroyed before the binding.
class ControlBinding : public LayoutElement {
 public:
  ~ControlBinding() override = default;
  ControlBinding(const ControlBinding&) = delete;
  ControlBinding& operator=(const ControlBinding&) = delete;

  [[nodiscard]] forms::Control& control() const { return control_; }
  [[nodiscard]] HWND window() const { return window_; }
  /// The window that holds the controls of a container (a frame; a page of tab
  /// pages); nullptr when the control holds none of that description.
  [[nodiscard]] virtual HWND ContainerWindow(const forms::Container& /*container*/) const { return nullptr; }

  /// The control is going before its window: it must not be asked for anything any more.
  virtual void Detach() {}

  /// Brings the native control in step with the model. Raises no event.
  void Sync();
  [[nodiscard]] forms::ControlReading Read() const;

  void Place(const RECT& place) override;
  [[nodiscard]] bool Shown() const override;
  /// The window's fonts have changed.
  virtual void UseFonts();

  // --- from the window that holds the native control ---
  virtual void OnCommand(int /*id*/, int /*notification*/) {}
  virtual LRESULT OnNotify(NMHDR& /*header*/) { return 0; }
  virtual void OnDraw(const DRAWITEMSTRUCT& /*item*/) {}

 protected:
  ControlBinding(forms::Control& control, BindingOwner& owner) : control_(control), owner_(owner) {}

  /// Makes the native control; once, by the constructor.
  void Create(HWND parent, const wchar_t* window_class, DWORD style, DWORD extended_style = 0);
  void Adopt(HWND window) { window_ = window; }
  LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
    return SendMessageW(window_, message, wparam, lparam);
  }

  virtual void SyncContent() = 0;
  virtual void ReadContent(forms::ControlReading& reading) const = 0;
  [[nodiscard]] BindingOwner& owner() const { return owner_; }
  [[nodiscard]] const Fonts& fonts() const { return owner_.fonts(); }
  /// While the model is being written to the native control; messages it causes are no user's actions.
  [[nodiscard]] bool syncing() const { return syncing_; }

 private:
  forms::Control& control_;
  BindingOwner& owner_;
  HWND window_ = nullptr;
  bool syncing_ = false;
};

/// Makes the native control of a control (not of a menu entry) inside `parent` and its binding.
[[nodiscard]] std::unique_ptr<ControlBinding> MakeBinding(forms::Control& control, HWND parent,
                                                          BindingOwner& owner);

/// "NAME", or "NAME(INDEX)" for an element of an array.
[[nodiscard]] std::string ReadingName(const forms::Control& control);

}  // namespace kestro::adapters::win32
