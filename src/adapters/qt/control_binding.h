#pragma once

#include <functional>
#include <memory>
#include <string>

#include <QString>

#include "forms/front_end_driver.h"

class QWidget;

namespace kestro::adapters {

/// What a binding needs of the window that it belongs to.
class BindingOwner {
 public:
  virtual ~BindingOwner() = default;
  /// Runs a user's action on the control's model and brings the widget in step
  /// with whatever the model has become. Does nothing on an unloaded window.
  virtual void UserActed(forms::Control& control, const std::function<void()>& action) = 0;
  /// Native path of a system path.
  [[nodiscard]] virtual std::string NativePath(const std::string& system_path) const = 0;
};

/// Ties one control of a form to its widget: the widget follows the model, and
/// what the user does with the widget goes to the model. The widget belongs to
/// its window; the binding must not be used after the window is gone.
class ControlBinding {
 public:
  ControlBinding(const ControlBinding&) = delete;
  ControlBinding& operator=(const ControlBinding&) = delete;
  virtual ~ControlBinding() = default;

  [[nodiscard]] forms::Control& control() const { return control_; }
  [[nodiscard]] virtual QWidget& widget() const = 0;
  /// The widget that holds the controls of a container (a frame; a page of tab
  /// pages); nullptr when the control holds none of that description.
  [[nodiscard]] virtual QWidget* ContainerWidget(const forms::Container& /*container*/) const {
    return nullptr;
  }

  /// The control is going before its window: it must not be asked for anything any more.
  virtual void Detach() {}

  /// Brings the widget in step with the model. Raises no event.
  void Sync();
  [[nodiscard]] forms::ControlReading Read() const;

 protected:
  ControlBinding(forms::Control& control, BindingOwner& owner) : control_(control), owner_(owner) {}

  virtual void SyncContent() = 0;
  virtual void ReadContent(forms::ControlReading& reading) const = 0;
  [[nodiscard]] BindingOwner& owner() const { return owner_; }
  /// While the model is being written to the widget; signals it causes are no user's actions.
  [[nodiscard]] bool syncing() const { return syncing_; }

 private:
  forms::Control& control_;
  BindingOwner& owner_;
  bool syncing_ = false;
};

/// Makes the widget of a control (not of a menu entry) inside `parent` and its binding.
[[nodiscard]] std::unique_ptr<ControlBinding> MakeBinding(forms::Control& control, QWidget& parent,
                                                          BindingOwner& owner);

/// "NAME", or "NAME(INDEX)" for an element of an array.
[[nodiscard]] std::string ReadingName(const forms::Control& control);
/// Name of the widget: "NAME", or "NAME_INDEX" for an element of an array.
[[nodiscard]] QString ObjectName(const forms::Control& control);
/// What assistive tools call the control.
[[nodiscard]] QString AccessibleName(const forms::Control& control);

}  // namespace kestro::adapters
