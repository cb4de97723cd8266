#include <algorithm>

#include <QCheckBox>
#include <QPushButton>

#include "adapters/qt/bindings.h"
#include "adapters/qt/qt_text.h"

namespace kestro::adapters {
namespace {

constexpr int kLongestButtonLine = 30;  // characters
constexpr int kLongestCheckBoxLine = 64;
constexpr int kSmallestButton = 14;

/// The caption in lines that no window is too narrow for.
QString LinesOfCaption(const QString& caption, const QWidget& widget, int longest_line) {
  const int width = TextWidth(widget.fontMetrics(), longest_line);
  return WrappedLines(caption, widget.font(), width).join(QLatin1Char('\n'));
}

/// As wide as its caption needs, and never tiny.
class ActionButton final : public QPushButton {
 public:
  using QPushButton::QPushButton;

  [[nodiscard]] QSize sizeHint() const override { return NotTiny(QPushButton::sizeHint()); }
  [[nodiscard]] QSize minimumSizeHint() const override { return NotTiny(QPushButton::minimumSizeHint()); }

 private:
  [[nodiscard]] QSize NotTiny(const QSize& size) const {
    return size.expandedTo({TextWidth(fontMetrics(), kSmallestButton), 0});
  }
};

class ButtonBinding final : public ControlBinding {
 public:
  ButtonBinding(forms::Button& button, QWidget& parent, BindingOwner& owner)
      : ControlBinding(button, owner), button_(button), widget_(*new ActionButton(&parent)) {
    // Enter presses a button that has the keyboard; the default button looks like it.
    widget_.setAutoDefault(true);
    widget_.setDefault(button.role() == forms::Button::Role::kDefault);
    QObject::connect(&widget_, &QPushButton::clicked, &widget_,
                     [this] { this->owner().UserActed(button_, [this] { button_.Click(); }); });
  }

  [[nodiscard]] QWidget& widget() const override { return widget_; }

 private:
  void SyncContent() override {
    caption_ = ToQString(button_.caption());
    widget_.setText(LinesOfCaption(caption_, widget_, kLongestButtonLine));
  }
  void ReadContent(forms::ControlReading& reading) const override { reading.texts = {ToUtf8(caption_)}; }

  forms::Button& button_;
  QPushButton& widget_;
  QString caption_;
};

class CheckBoxBinding final : public ControlBinding {
 public:
  CheckBoxBinding(forms::CheckBox& box, QWidget& parent, BindingOwner& owner)
      : ControlBinding(box, owner), box_(box), widget_(*new QCheckBox(&parent)) {
    QObject::connect(&widget_, &QCheckBox::clicked, &widget_, [this](bool checked) {
      this->owner().UserActed(box_, [this, checked] { box_.SetValue(checked ? 1 : 0); });
    });
  }

  [[nodiscard]] QWidget& widget() const override { return widget_; }

 private:
  void SyncContent() override {
    caption_ = ToQString(box_.caption());
    widget_.setText(LinesOfCaption(caption_, widget_, kLongestCheckBoxLine));
    widget_.setChecked(box_.value() != 0);
  }
  void ReadContent(forms::ControlReading& reading) const override {
    reading.texts = {ToUtf8(caption_)};
    reading.checked = widget_.isChecked();
  }

  forms::CheckBox& box_;
  QCheckBox& widget_;
  QString caption_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::Button& button, QWidget& parent, BindingOwner& owner) {
  return std::make_unique<ButtonBinding>(button, parent, owner);
}

std::unique_ptr<ControlBinding> Bind(forms::CheckBox& box, QWidget& parent, BindingOwner& owner) {
  return std::make_unique<CheckBoxBinding>(box, parent, owner);
}

}  // namespace kestro::adapters
