#include "adapters/qt/qt_form_host.h"

#include <algorithm>

#include <QApplication>
#include <QCursor>
#include <QEventLoop>
#include <QMenu>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include "adapters/qt/screen_units.h"

namespace kestro::adapters {

using forms::Form;

namespace {

/// A window is modal only while it is shown that way.
class ModalScope {
 public:
  ModalScope(QtWindow& window, QEventLoop& loop) : window_(window) {
    window_.setWindowModality(Qt::ApplicationModal);
    window_.SetModalLoop(&loop);
  }
  ~ModalScope() {
    window_.SetModalLoop(nullptr);
    window_.setWindowModality(Qt::NonModal);
  }
  ModalScope(const ModalScope&) = delete;
  ModalScope& operator=(const ModalScope&) = delete;

 private:
  QtWindow& window_;
};

/// Window systems keep a window above its transient parent.
void StackAbove(QtWindow& window, const QWidget* parent) {
  window.winId();  // makes the window of the window system
  QWindow* below = parent == nullptr || parent == &window ? nullptr : parent->windowHandle();
  window.windowHandle()->setTransientParent(below);
}

constexpr int kBuryRetryMs = 200;

}  // namespace

QtFormHost::QtFormHost(EventBoundary& boundary, PathTranslator native_path)
    : boundary_(boundary), native_path_(std::move(native_path)) {
  // The program lives in the notification area: windows come and go.
  QGuiApplication::setQuitOnLastWindowClosed(false);
}

QtFormHost::~QtFormHost() {
  for (const auto& [form, window] : windows_) window->Detach();
  if (pointer_ == forms::Pointer::kHourglass) QGuiApplication::restoreOverrideCursor();
}

forms::WindowHandle QtFormHost::Load(Form& form) {
  windows_[&form] = MakeWindow(form, ++last_handle_);
  return last_handle_;
}

std::unique_ptr<QtWindow> QtFormHost::MakeWindow(Form& form, forms::WindowHandle handle) {
  WindowListener& listener = *this;
  return std::make_unique<QtWindow>(form, handle, boundary_, listener);
}

void QtFormHost::Unload(Form& form) {
  const auto found = windows_.find(&form);
  if (found == windows_.end()) return;
  std::unique_ptr<QtWindow> window = std::move(found->second);
  windows_.erase(found);
  window->Detach();
  QtWindow& gone = *window;
  unloaded_.push_back(std::move(window));
  BuryLater();
  // A form that is still loaded is being destroyed with the application: no window hears of it any more.
  TakeOffScreen(gone, !form.loaded());
}

void QtFormHost::BuryLater() {
  QTimer::singleShot(boundary_.idle() ? 0 : kBuryRetryMs, &context_, [this] {
    if (boundary_.idle()) {
      unloaded_.clear();
    } else if (!unloaded_.empty()) {
      BuryLater();
    }
  });
}

void QtFormHost::PutOnScreen(QtWindow& window) {
  std::erase(shown_, &window);
  shown_.push_back(&window);
  window.Appear(boundary_.user_action());
}

void QtFormHost::Show(Form& form) {
  QtWindow* window = Window(form);
  if (window == nullptr) return;
  PutOnScreen(*window);
  form.Activated();
}

void QtFormHost::Hide(Form& form) {
  QtWindow* window = Window(form);
  if (window == nullptr) return;
  window->Disappear();
  TakeOffScreen(*window, true);
}

void QtFormHost::TakeOffScreen(QtWindow& window, bool tell) {
  const bool was_in_front = !shown_.empty() && shown_.back() == &window;
  std::erase(shown_, &window);
  if (!tell || !was_in_front || shown_.empty()) return;
  if (Form* next = shown_.back()->form()) next->Activated();
}

void QtFormHost::ShowModal(Form& form, Form* owner) {
  QtWindow* window = Window(form);
  if (window == nullptr) return;
  boundary_.ThrowIfEnded();
  window->hide();  // modality can be changed while hidden only
  const QtWindow* below = owner == nullptr ? nullptr : Window(*owner);
  StackAbove(*window, below != nullptr && below->isVisible() ? below : QApplication::activeWindow());
  QEventLoop loop;
  const ModalScope scope(*window, loop);
  std::erase(shown_, window);
  shown_.push_back(window);
  window->Appear(true);  // nothing else can be typed into meanwhile
  form.Activated();
  if (form.visible() && window->form() != nullptr) boundary_.RunLoop(loop);
}

void QtFormHost::WindowChanged(Form& form) {
  if (QtWindow* window = Window(form)) window->SyncWindow();
}

void QtFormHost::ControlChanged(Form& form, forms::Control& control) {
  if (QtWindow* window = Window(form)) window->SyncControl(control);
}

void QtFormHost::MenuChanged(Form& form, forms::MenuItem& parent) {
  if (QtWindow* window = Window(form)) window->SyncMenu(parent);
}

void QtFormHost::FocusControl(Form& form, forms::Control& control) {
  if (QtWindow* window = Window(form)) window->FocusControl(control);
}

void QtFormHost::PopupMenu(Form& form, forms::MenuItem& menu) {
  QtWindow* window = Window(form);
  if (window == nullptr || !window->menus().Knows(menu)) return;
  QMenu* popup = window->menus().Menu(menu);
  if (popup == nullptr || popup->isEmpty()) return;
  popup->popup(QCursor::pos());
  popup->activateWindow();
}

forms::ScreenSize QtFormHost::Screen() const {
  if (fixed_screen_) return *fixed_screen_;
  const QSize size = QGuiApplication::primaryScreen()->availableSize();
  return {ToTwips(size.width()), ToTwips(size.height())};
}

void QtFormHost::SetPointer(forms::Pointer pointer) {
  if (pointer == pointer_) return;
  pointer_ = pointer;
  if (pointer == forms::Pointer::kHourglass) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QGuiApplication::restoreOverrideCursor();
  }
}

void QtFormHost::DoEvents() {
  QCoreApplication::processEvents();
  boundary_.ThrowIfEnded();
}

QtWindow* QtFormHost::Window(const Form& form) const {
  const auto found = windows_.find(&form);
  return found == windows_.end() ? nullptr : found->second.get();
}

QtWindow* QtFormHost::Window(forms::WindowHandle handle) const {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&](const auto& entry) { return entry.second->handle() == handle; });
  return found == windows_.end() ? nullptr : found->second.get();
}

QMenu* QtFormHost::PopupMenuOf(forms::WindowHandle handle) const {
  QtWindow* window = Window(handle);
  return window == nullptr ? nullptr : window->menus().FirstPopup();
}

forms::WindowHandle QtFormHost::FrontWindow() const { return shown_.empty() ? 0 : shown_.back()->handle(); }

bool QtFormHost::BringToFront(forms::WindowHandle handle) {
  QtWindow* window = Window(handle);
  const auto place = std::find(shown_.begin(), shown_.end(), window);
  if (window == nullptr || place == shown_.end()) return false;
  const bool was_in_front = window == shown_.back();
  std::rotate(place, std::next(place), shown_.end());
  window->BringToFront(boundary_.user_action());
  if (!was_in_front) window->form()->Activated();
  return true;
}

void QtFormHost::WindowActivated(QtWindow& window) {
  const auto place = std::find(shown_.begin(), shown_.end(), &window);
  if (place == shown_.end() || shown_.back() == &window) return;
  std::rotate(place, std::next(place), shown_.end());
  boundary_.Run(EventBoundary::Cause::kUser, [&window] {
    if (window.form() != nullptr) window.form()->Activated();
  });
}

std::string QtFormHost::NativePath(const std::string& system_path) const { return native_path_(system_path); }

}  // namespace kestro::adapters
