#include <algorithm>
#include <limits>

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QWheelEvent>

#include "adapters/qt/bindings.h"
#include "adapters/qt/qt_text.h"
#include "adapters/qt/typing_limit.h"

namespace kestro::adapters {
namespace {

constexpr int kFewestCharacters = 14;
constexpr int kMostCharacters = 32;

/// A drop-down list that the mouse wheel does not change in passing: choosing an item may transfer a call.
class DropDownList final : public QComboBox {
 public:
  using QComboBox::QComboBox;

 protected:
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

class ComboBoxBinding final : public ControlBinding {
 public:
  ComboBoxBinding(forms::ComboBox& combo, QWidget& parent, BindingOwner& owner)
      : ControlBinding(combo, owner), combo_(combo), widget_(*new DropDownList(&parent)) {
    widget_.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    widget_.setMinimumContentsLength(kFewestCharacters);
    widget_.view()->setTextElideMode(Qt::ElideRight);
    if (combo.style() == forms::ComboBox::Style::kEditable) MakeEditable();
    // Unlike a change of the index, this comes from the user only.
    QObject::connect(&widget_, &QComboBox::activated, &widget_, [this](int index) {
      this->owner().UserActed(combo_, [this, index] { combo_.SetListIndex(index); });
    });
  }

  [[nodiscard]] QWidget& widget() const override { return widget_; }

 private:
  void MakeEditable() {
    widget_.setEditable(true);
    widget_.setInsertPolicy(QComboBox::NoInsert);
    widget_.setCompleter(nullptr);
    widget_.lineEdit()->setMaxLength(std::numeric_limits<int>::max());  // what the program sets is not cut
    QObject::connect(widget_.lineEdit(), &QLineEdit::textEdited, &widget_, [this] { Edited(); });
  }
  void Edited() {
    QLineEdit& field = *widget_.lineEdit();
    const LimitedText limited = LimitTyping(ToQString(combo_.text()), field.text(), combo_.max_length());
    const bool whole = limited.text == field.text();
    const int cursor = whole ? field.cursorPosition() : static_cast<int>(limited.cursor);
    owner().UserActed(combo_, [&] { combo_.SetText(ToUtf8(limited.text)); });
    field.setCursorPosition(cursor);
  }
  void SyncContent() override {
    SyncItems();
    // Either of the two writes the other, too.
    if (widget_.currentIndex() != combo_.list_index()) widget_.setCurrentIndex(combo_.list_index());
    const QString text = ToQString(combo_.text());
    if (widget_.isEditable() && widget_.currentText() != text) widget_.setEditText(text);
  }
  void SyncItems() {
    const std::vector<std::string>& items = combo_.items();
    const bool only_added =
        items.size() >= items_.size() && std::equal(items_.begin(), items_.end(), items.begin());
    if (!only_added) {
      widget_.clear();
      items_.clear();
      widget_.setMinimumContentsLength(kFewestCharacters);
    }
    for (std::size_t i = items_.size(); i < items.size(); ++i) AddItem(ToQString(items[i]));
    items_ = items;
  }
  void AddItem(const QString& item) {
    widget_.addItem(item);
    const auto length = static_cast<int>(std::min<qsizetype>(item.size(), kMostCharacters));
    widget_.setMinimumContentsLength(std::max(widget_.minimumContentsLength(), length));
    widget_.setItemData(widget_.count() - 1, item, Qt::AccessibleTextRole);
  }
  void ReadContent(forms::ControlReading& reading) const override {
    for (int i = 0; i < widget_.count(); ++i) reading.texts.push_back(ToUtf8(widget_.itemText(i)));
    reading.index = widget_.currentIndex();
    if (widget_.isEditable()) reading.typed = ToUtf8(widget_.currentText());
  }

  forms::ComboBox& combo_;
  QComboBox& widget_;
  std::vector<std::string> items_;  // as the widget has them
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::ComboBox& combo, QWidget& parent, BindingOwner& owner) {
  return std::make_unique<ComboBoxBinding>(combo, parent, owner);
}

}  // namespace kestro::adapters
