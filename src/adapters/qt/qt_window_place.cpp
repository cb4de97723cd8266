#include <algorithm>

#include <QEventLoop>
#include <QLayout>
#include <QMenuBar>
#include <QScreen>
#include <QStyle>

#include "adapters/qt/qt_text.h"
#include "adapters/qt/qt_window.h"
#include "adapters/qt/screen_units.h"

// The size, the place and the appearance of a window.

namespace kestro::adapters {
namespace {

using forms::WindowState;

/// What a window manager usually draws around a window, while it has not said so.
constexpr QSize kFrameEstimate(8, 36);

QSize RoomFor(const QWidget& window) { return window.screen()->availableSize() - kFrameEstimate; }

Qt::WindowStates ToQt(WindowState state) {
  switch (state) {
    case WindowState::kMinimized:
      return Qt::WindowMinimized;
    case WindowState::kMaximized:
      return Qt::WindowMaximized;
    case WindowState::kNormal:
      break;
  }
  return Qt::WindowNoState;
}

}  // namespace

void QtWindow::Appear(bool activate) {
  GiveFirstFocus();
  FitToContent();
  if (form_->placed()) PutInPlace();
  setAttribute(Qt::WA_ShowWithoutActivating, !activate);
  has_appeared_ = true;
  show();
  BringToFront(activate);
}

void QtWindow::Disappear() {
  hide();
  if (modal_loop_ != nullptr) modal_loop_->quit();
}

void QtWindow::BringToFront(bool activate) {
  raise();
  if (activate) activateWindow();
}

/// At least the designed size, more when the content needs more; never more than the screen has.
void QtWindow::FitToContent() {
  if (isMaximized()) return;
  QLayout& inside = *content_.layout();
  inside.activate();
  const QSize room = RoomFor(*this);
  const QSize designed(ToPixels(form_->width()), ToPixels(form_->height()));
  QSize fitting = has_appeared_ ? size() : designed;
  const QSize wanted = inside.totalSizeHint();
  fitting.setWidth(std::min(std::max(fitting.width(), wanted.width()), room.width()));
  const int height =
      inside.hasHeightForWidth() ? inside.totalHeightForWidth(fitting.width()) : wanted.height();
  fitting.setHeight(std::min(std::max(fitting.height(), height + MenuHeight()), room.height()));
  if (height + MenuHeight() > room.height()) {
    const int scroll_bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    fitting.setWidth(std::min(fitting.width() + scroll_bar, room.width()));
  }
  KeepRoomForContent();
  if (fitting != size()) {
    resize(fitting);
    if (isVisible()) MoveInsideScreen(pos());
  }
}

int QtWindow::MenuHeight() const {
  return menus_->bar() == nullptr ? 0 : menus_->bar()->heightForWidth(width());
}

void QtWindow::FitToContentSoon() {
  if (!isVisible() || fit_is_due_) return;
  fit_is_due_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        fit_is_due_ = false;
        if (form_ != nullptr && isVisible()) FitToContent();
      },
      Qt::QueuedConnection);
}

/// The window cannot be made smaller than its content, unless the screen is. A
/// narrower window is higher, for its texts are wrapped.
void QtWindow::KeepRoomForContent() {
  QLayout& inside = *content_.layout();
  const QSize least = inside.totalMinimumSize();
  const int height = inside.hasHeightForWidth()
                         ? inside.totalMinimumHeightForWidth(std::max(width(), least.width()))
                         : least.height();
  setMinimumSize(QSize(least.width(), height + MenuHeight()).boundedTo(RoomFor(*this)));
}

void QtWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (form_ != nullptr) KeepRoomForContent();
}

void QtWindow::PutInPlace() {
  const QPoint origin = screen()->availableGeometry().topLeft();
  MoveInsideScreen(origin + QPoint(ToPixels(form_->left()), ToPixels(form_->top())));
}

void QtWindow::MoveInsideScreen(QPoint wanted) {
  const QRect room = screen()->availableGeometry();
  QSize frame = frameGeometry().size();
  if (frame == size()) frame += kFrameEstimate;
  const int most_left = std::max(room.left(), room.right() + 1 - frame.width());
  const int most_top = std::max(room.top(), room.bottom() + 1 - frame.height());
  move(std::clamp(wanted.x(), room.left(), most_left), std::clamp(wanted.y(), room.top(), most_top));
}

void QtWindow::SyncWindow() {
  const bool new_caption = form_->caption() != shown_caption_;
  const bool new_state = form_->window_state() != shown_state_;
  if (new_caption) {
    shown_caption_ = form_->caption();
    setWindowTitle(ToQString(shown_caption_));
  }
  if (new_state) {
    shown_state_ = form_->window_state();
    setWindowState(ToQt(shown_state_));
  }
  // Nothing else changed: the program has placed the window (where it was, perhaps, before the user moved
  // it).
  if (!new_caption && !new_state && form_->placed()) PutInPlace();
}

}  // namespace kestro::adapters
