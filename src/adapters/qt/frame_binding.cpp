#include <QGroupBox>
#include <QLayout>
#include <QStyleOptionGroupBox>

#include "adapters/qt/bindings.h"
#include "adapters/qt/qt_text.h"

namespace kestro::adapters {
namespace {

constexpr int kLongestTitle = 60;  // characters

/// A titled box around controls; without a title nothing is drawn and no room is taken.
class FramePanel final : public QGroupBox {
 public:
  using QGroupBox::QGroupBox;

  void SetCaption(const QString& caption) {
    caption_ = caption;
    const int width = TextWidth(fontMetrics(), kLongestTitle);
    setTitle(fontMetrics().elidedText(caption, Qt::ElideRight, width, Qt::TextShowMnemonic));
    setToolTip(title() == caption ? QString() : WithoutMnemonic(caption));
    DropMargins();
    const int inside = title().isEmpty() ? 0 : fontMetrics().height() / 2;
    if (layout() != nullptr) layout()->setContentsMargins(inside, inside, inside, inside);
  }
  [[nodiscard]] const QString& caption() const { return caption_; }

  [[nodiscard]] QSize minimumSizeHint() const override {
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): without a title there is no room for one
    return title().isEmpty() ? QWidget::minimumSizeHint() : QGroupBox::minimumSizeHint();
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    if (!title().isEmpty()) QGroupBox::paintEvent(event);
  }
  void resizeEvent(QResizeEvent* event) override {
    QGroupBox::resizeEvent(event);
    DropMargins();
  }
  void changeEvent(QEvent* event) override {
    QGroupBox::changeEvent(event);
    DropMargins();
  }

 private:
  void DropMargins() {
    if (title().isEmpty()) setContentsMargins(0, 0, 0, 0);
  }

  QString caption_;
};

class FrameBinding final : public ControlBinding {
 public:
  FrameBinding(forms::Frame& frame, QWidget& parent, BindingOwner& owner)
      : ControlBinding(frame, owner), frame_(frame), widget_(*new FramePanel(&parent)) {}

  [[nodiscard]] QWidget& widget() const override { return widget_; }
  [[nodiscard]] QWidget* ContainerWidget(const forms::Container& container) const override {
    return &container == static_cast<const forms::Container*>(&frame_) ? &widget_ : nullptr;
  }

 private:
  void SyncContent() override { widget_.SetCaption(ToQString(frame_.caption())); }
  void ReadContent(forms::ControlReading& reading) const override {
    reading.texts = {ToUtf8(widget_.caption())};
  }

  forms::Frame& frame_;
  FramePanel& widget_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::Frame& frame, QWidget& parent, BindingOwner& owner) {
  return std::make_unique<FrameBinding>(frame, parent, owner);
}

}  // namespace kestro::adapters
