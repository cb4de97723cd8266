#include "adapters/qt/control_binding.h"

#include <QWidget>

#include "adapters/qt/qt_text.h"

namespace kestro::adapters {
namespace {

QString CaptionOf(const forms::Control& control) {
  const auto* captioned = dynamic_cast<const forms::CaptionedControl*>(&control);
  return captioned == nullptr ? QString() : WithoutMnemonic(ToQString(captioned->caption()));
}

}  // namespace

void ControlBinding::Sync() {
  syncing_ = true;
  SyncContent();
  QWidget& shown = widget();
  shown.setVisible(control_.visible());
  shown.setEnabled(control_.enabled());
  shown.setAccessibleName(AccessibleName(control_));
  syncing_ = false;
}

forms::ControlReading ControlBinding::Read() const {
  forms::ControlReading reading;
  reading.name = ReadingName(control_);
  ReadContent(reading);
  const QWidget& shown = widget();
  reading.hidden = shown.isHidden();
  reading.disabled = !shown.isEnabledTo(shown.parentWidget());
  return reading;
}

std::string ReadingName(const forms::Control& control) {
  if (!control.array_index()) return control.name();
  return control.name() + "(" + std::to_string(*control.array_index()) + ")";
}

QString ObjectName(const forms::Control& control) {
  QString name = ToQString(control.name());
  if (!control.array_index()) return name;
  return name + QLatin1Char('_') + QString::number(*control.array_index());
}

QString AccessibleName(const forms::Control& control) {
  if (!control.spoken_name().empty()) return ToQString(control.spoken_name());
  QString name = CaptionOf(control);
  if (name.isEmpty() && control.named_by() != nullptr) name = CaptionOf(*control.named_by());
  return name.isEmpty() ? ToQString(control.name()) : name;
}

}  // namespace kestro::adapters
