#include "adapters/qt/bindings.h"
#include "adapters/qt/caption_label.h"
#include "adapters/qt/qt_text.h"
#include "adapters/qt/value_text.h"

namespace kestro::adapters {
namespace {

class CaptionBinding final : public ControlBinding {
 public:
  CaptionBinding(forms::Label& label, QWidget& parent, BindingOwner& owner)
      : ControlBinding(label, owner), label_(label), widget_(*new CaptionLabel(&parent)) {}

  [[nodiscard]] QWidget& widget() const override { return widget_; }

 private:
  void SyncContent() override { widget_.SetCaption(ToQString(label_.caption())); }
  void ReadContent(forms::ControlReading& reading) const override {
    reading.texts = {ToUtf8(widget_.caption())};
  }

  forms::Label& label_;
  CaptionLabel& widget_;
};

class ValueBinding final : public ControlBinding {
 public:
  ValueBinding(forms::Label& label, QWidget& parent, BindingOwner& owner)
      : ControlBinding(label, owner), label_(label), widget_(*new ValueText(&parent, WeightOf(label))) {}

  [[nodiscard]] QWidget& widget() const override { return widget_; }

 private:
  static ValueText::Weight WeightOf(const forms::Label& label) {
    return label.role() == forms::Label::Role::kHeading ? ValueText::Weight::kHeading
                                                        : ValueText::Weight::kNormal;
  }
  void SyncContent() override { widget_.SetValue(ToQString(label_.caption())); }
  void ReadContent(forms::ControlReading& reading) const override {
    reading.texts = {ToUtf8(widget_.value())};
  }

  forms::Label& label_;
  ValueText& widget_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::Label& label, QWidget& parent, BindingOwner& owner) {
  if (label.role() == forms::Label::Role::kCaption) {
    return std::make_unique<CaptionBinding>(label, parent, owner);
  }
  return std::make_unique<ValueBinding>(label, parent, owner);
}

}  // namespace kestro::adapters
