#include <QProgressBar>

#include "adapters/qt/bindings.h"

namespace kestro::adapters {
namespace {

class ProgressBarBinding final : public ControlBinding {
 public:
  ProgressBarBinding(forms::ProgressBar& bar, QWidget& parent, BindingOwner& owner)
      : ControlBinding(bar, owner), bar_(bar), widget_(*new QProgressBar(&parent)) {}

  [[nodiscard]] QWidget& widget() const override { return widget_; }

 private:
  void SyncContent() override {
    widget_.setRange(bar_.minimum(), bar_.maximum());
    widget_.setValue(bar_.value());
  }
  void ReadContent(forms::ControlReading& reading) const override {
    reading.progress = {widget_.value(), widget_.maximum()};
  }

  forms::ProgressBar& bar_;
  QProgressBar& widget_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::ProgressBar& bar, QWidget& parent, BindingOwner& owner) {
  return std::make_unique<ProgressBarBinding>(bar, parent, owner);
}

}  // namespace kestro::adapters
