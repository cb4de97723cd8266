#include "adapters/qt/qt_window.h"

#include <algorithm>
#include <ranges>

#include <QAbstractButton>
#include <QAction>
#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMenuBar>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>

#include "adapters/qt/caption_label.h"
#include "adapters/qt/container_layout.h"
#include "adapters/qt/qt_keys.h"
#include "adapters/qt/qt_text.h"

namespace kestro::adapters {

using forms::Control;
using forms::Form;

QtWindow::QtWindow(Form& form, forms::WindowHandle handle, EventBoundary& boundary, WindowListener& listener)
    : form_(&form),
      handle_(handle),
      boundary_(boundary),
      listener_(listener),
      scroll_area_(*new QScrollArea(this)),
      content_(*new QWidget) {
  setObjectName(ToQString(form.name()));
  scroll_area_.setFrameShape(QFrame::NoFrame);
  scroll_area_.setFocusPolicy(Qt::NoFocus);
  scroll_area_.setWidgetResizable(true);
  scroll_area_.setWidget(&content_);
  BindingOwner& owner = *this;
  menus_ = std::make_unique<QtMenus>(form, *this, owner);
  BuildControls();
  LayOut();
  ConnectLabels();
  BuildShortcuts();
  for (const auto& binding : bindings_) binding->Sync();
  SyncWindow();
}

QtWindow::~QtWindow() = default;

void QtWindow::BuildControls() {
  QWidget* before = nullptr;
  for (Control* control : form_->controls()) {
    if (control->kind() == forms::ControlKind::kMenuItem) continue;
    bindings_.push_back(MakeBinding(*control, HolderOf(control->parent()), *this));
    by_control_[control] = bindings_.back().get();
    QWidget& widget = bindings_.back()->widget();
    widget.installEventFilter(this);
    if (before != nullptr) setTabOrder(before, &widget);
    before = &widget;
  }
}

QWidget& QtWindow::HolderOf(const forms::Container* container) {
  if (container == nullptr) return content_;
  for (const auto& binding : bindings_) {
    QWidget* holder = binding->ContainerWidget(*container);
    if (holder != nullptr) return *holder;
  }
  return content_;
}

QWidget* QtWindow::WidgetOf(const Control& control) const {
  const ControlBinding* binding = Binding(control);
  return binding == nullptr ? nullptr : &binding->widget();
}

const ControlBinding* QtWindow::Binding(const Control& control) const {
  const auto found = by_control_.find(&control);
  return found == by_control_.end() ? nullptr : found->second;
}

void QtWindow::LayOut() {
  const auto widget_of = [this](const Control& control) { return WidgetOf(control); };
  // From the inner containers to the outer ones, so that these know what wants to grow.
  for (const auto& binding : bindings_ | std::views::reverse) {
    Control& control = binding->control();
    if (auto* frame = dynamic_cast<forms::Frame*>(&control)) {
      LayOutContainer(*frame, binding->widget(), Margins::kNone, widget_of);
    }
    if (auto* pages = dynamic_cast<forms::TabPages*>(&control)) {
      for (int i = 0; i < pages->page_count(); ++i) {
        LayOutContainer(pages->page(i), HolderOf(&pages->page(i)), Margins::kPage, widget_of);
      }
    }
  }
  LayOutContainer(form_->body(), content_, Margins::kWindow, widget_of);
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->addWidget(&scroll_area_);
  if (menus_->bar() != nullptr) whole->setMenuBar(menus_->bar());
}

void QtWindow::ConnectLabels() {
  for (const auto& binding : bindings_) {
    const Control* label = binding->control().named_by();
    if (label == nullptr) continue;
    if (auto* caption = dynamic_cast<CaptionLabel*>(WidgetOf(*label))) caption->SetField(binding->widget());
  }
}

void QtWindow::BuildShortcuts() {
  for (const Form::Shortcut& shortcut : form_->shortcuts()) {
    const QKeySequence keys = ShortcutKeys(shortcut.key);
    if (keys.isEmpty()) continue;
    auto* made = new QShortcut(keys, this);
    made->setAutoRepeat(false);
    connect(made, &QShortcut::activated, this, [this, handler = shortcut.handler] { RunShortcut(handler); });
  }
}

void QtWindow::Detach() {
  form_ = nullptr;
  for (const auto& binding : bindings_) binding->Detach();
  Disappear();
}

void QtWindow::SyncControl(Control& control) {
  if (menus_->Knows(control)) return menus_->Sync(dynamic_cast<forms::MenuItem&>(control));
  const auto found = by_control_.find(&control);
  if (found == by_control_.end()) return;
  found->second->Sync();
  for (const auto& binding : bindings_) {
    const Control& other = binding->control();
    if (other.named_by() == &control) binding->widget().setAccessibleName(AccessibleName(other));
  }
  MoveFocusOn();
  FitToContentSoon();
}

void QtWindow::SyncMenu(forms::MenuItem& parent) {
  if (menus_->Knows(parent)) menus_->Rebuild(parent);
}

void QtWindow::UserActed(Control& control, const std::function<void()>& action) {
  if (form_ == nullptr) return;
  boundary_.Run(EventBoundary::Cause::kUser, action);
  if (form_ != nullptr) SyncControl(control);
}

std::string QtWindow::NativePath(const std::string& system_path) const {
  return listener_.NativePath(system_path);
}

// --- the user and the window ---

void QtWindow::closeEvent(QCloseEvent* event) {
  // Only the form decides; when it goes, Detach hides the window.
  event->ignore();
  if (form_ == nullptr) return;
  boundary_.Run(EventBoundary::Cause::kUser, [this] { form_->RequestUnload(forms::kControlMenu); });
}

void QtWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::WindowStateChange || form_ == nullptr) return;
  const auto state = isMinimized()   ? forms::WindowState::kMinimized
                     : isMaximized() ? forms::WindowState::kMaximized
                                     : forms::WindowState::kNormal;
  if (state == shown_state_) return;
  shown_state_ = state;
  boundary_.Run(EventBoundary::Cause::kUser, [this, state] { form_->UserChangedWindowState(state); });
}

bool QtWindow::event(QEvent* event) {
  const bool handled = QWidget::event(event);
  if (event->type() == QEvent::WindowActivate && form_ != nullptr) listener_.WindowActivated(*this);
  return handled;
}

void QtWindow::keyPressEvent(QKeyEvent* event) {
  bool pressed = false;
  if (form_ != nullptr && IsEnter(*event)) {
    pressed = PressEnter();
  } else if (event->key() == Qt::Key_Escape) {
    pressed = PressButton(forms::Button::Role::kCancel);
  }
  if (!pressed) QWidget::keyPressEvent(event);
}

bool QtWindow::PressButton(forms::Button::Role role) {
  for (const auto& binding : bindings_) {
    const auto* button = dynamic_cast<const forms::Button*>(&binding->control());
    if (button == nullptr || button->role() != role) continue;
    auto* widget = qobject_cast<QAbstractButton*>(&binding->widget());
    if (widget == nullptr || !widget->isVisible() || !widget->isEnabled()) continue;
    widget->click();
    return true;
  }
  return false;
}

/// In a grid Enter is for its rows rather than for the button.
bool QtWindow::PressEnter() {
  const Control* focus = FocusedControl();
  const bool in_grid = focus != nullptr && focus->kind() == forms::ControlKind::kGrid;
  if (!in_grid && PressButton(forms::Button::Role::kDefault)) return true;
  if (RunEnterShortcut()) return true;
  return in_grid && PressButton(forms::Button::Role::kDefault);
}

bool QtWindow::RunEnterShortcut() {
  if (QAction* action = menus_->EnterAction()) {
    action->trigger();
    return true;
  }
  const auto& shortcuts = form_->shortcuts();
  const auto found = std::find_if(shortcuts.begin(), shortcuts.end(),
                                  [](const auto& shortcut) { return IsEnterShortcut(shortcut.key); });
  if (found == shortcuts.end()) return false;
  RunShortcut(found->handler);
  return true;
}

void QtWindow::RunShortcut(const forms::Handler& handler) {
  if (form_ != nullptr && handler) boundary_.Run(EventBoundary::Cause::kUser, handler);
}

}  // namespace kestro::adapters
