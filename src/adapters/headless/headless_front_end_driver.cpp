#include "adapters/headless/headless_front_end_driver.h"

#include "base/text.h"

namespace kestro::adapters {
namespace {

using forms::Control;
using forms::ControlKind;
using forms::ControlReading;

std::string ReadingName(const Control& control) {
  if (!control.array_index()) return control.name();
  return control.name() + "(" + std::to_string(*control.array_index()) + ")";
}

void ReadTabPages(const forms::TabPages& pages, ControlReading& reading) {
  for (int index = 0; index < pages.page_count(); ++index)
    reading.texts.push_back(pages.page(index).caption());
  reading.index = pages.tab();
}

/// What the control shows by its kind.
void ReadContent(const Control& control, ControlReading& reading) {
  switch (control.kind()) {
    case ControlKind::kTextBox:
      reading.texts = {dynamic_cast<const forms::TextBox&>(control).text()};
      break;
    case ControlKind::kComboBox: {
      const auto& combo = dynamic_cast<const forms::ComboBox&>(control);
      reading.texts = combo.items();
      reading.index = combo.list_index();
      break;
    }
    case ControlKind::kTabPages:
      ReadTabPages(dynamic_cast<const forms::TabPages&>(control), reading);
      break;
    case ControlKind::kPicture:
      reading.picture = dynamic_cast<const forms::Picture&>(control).file();
      break;
    case ControlKind::kCheckBox:
      reading.checked = dynamic_cast<const forms::CheckBox&>(control).value() != 0;
      reading.texts = {dynamic_cast<const forms::CheckBox&>(control).caption()};
      break;
    case ControlKind::kMenuItem: {
      const auto& item = dynamic_cast<const forms::MenuItem&>(control);
      reading.checked = item.checked();
      if (item.role() != forms::MenuItem::Role::kSeparator) reading.texts = {item.caption()};
      break;
    }
    case ControlKind::kLabel:
    case ControlKind::kButton:
    case ControlKind::kFrame:
      reading.texts = {dynamic_cast<const forms::CaptionedControl&>(control).caption()};
      break;
  }
}

}  // namespace

bool HeadlessFrontEndDriver::WindowReachable(const forms::Form& form) const {
  if (!form.loaded()) return false;
  if (form.name() == tray_window_) return true;
  const forms::Form* modal = host_.modal_window();
  return form.visible() && (modal == nullptr || modal == &form);
}

bool HeadlessFrontEndDriver::Reachable(const forms::Form& form, const Control& control) const {
  return WindowReachable(form) && control.Reachable();
}

bool HeadlessFrontEndDriver::Click(forms::Form& form, Control& control) {
  if (!Reachable(form, control)) return false;
  if (auto* item = dynamic_cast<forms::MenuItem*>(&control)) {
    if (item->role() != forms::MenuItem::Role::kEntry || !item->children().empty()) return false;
    item->Click();
    return true;
  }
  auto* button = dynamic_cast<forms::Button*>(&control);
  auto* box = dynamic_cast<forms::CheckBox*>(&control);
  if (button == nullptr && box == nullptr) return false;
  host_.FocusControl(form, control);
  if (button != nullptr) button->Click();
  if (box != nullptr) box->SetValue(box->value() == 0 ? 1 : 0);
  return true;
}

bool HeadlessFrontEndDriver::Type(forms::Form& form, forms::TextBox& control, std::string_view text) {
  if (!Reachable(form, control) || control.read_only()) return false;
  host_.FocusControl(form, control);
  const bool limited = control.max_length() > 0;
  control.SetText(limited ? base::FirstCharacters(text, static_cast<std::size_t>(control.max_length()))
                          : text);
  return true;
}

bool HeadlessFrontEndDriver::Choose(forms::Form& form, Control& control, int index) {
  if (!Reachable(form, control) || index < 0) return false;
  if (auto* combo = dynamic_cast<forms::ComboBox*>(&control)) {
    if (index >= static_cast<int>(combo->items().size())) return false;
    host_.FocusControl(form, control);
    combo->SetListIndex(index);
    return true;
  }
  auto* pages = dynamic_cast<forms::TabPages*>(&control);
  if (pages == nullptr || index >= pages->page_count()) return false;
  pages->SetTab(index);
  return true;
}

bool HeadlessFrontEndDriver::Check(forms::Form& form, forms::CheckBox& control, bool checked) {
  if (!Reachable(form, control)) return false;
  host_.FocusControl(form, control);
  if ((control.value() != 0) != checked) control.SetValue(checked ? 1 : 0);
  return true;
}

void HeadlessFrontEndDriver::Close(forms::Form& form, int unload_mode) {
  const bool by_its_button = unload_mode == forms::kControlMenu;
  if (by_its_button && (!WindowReachable(form) || !form.visible())) return;
  form.RequestUnload(unload_mode);
}

forms::WindowReading HeadlessFrontEndDriver::Read(forms::Form& form) {
  forms::WindowReading reading{form.caption(), form.visible(), form.window_state(), {}};
  for (const Control* control : form.controls()) {
    ControlReading& entry = reading.controls.emplace_back();
    entry.name = ReadingName(*control);
    ReadContent(*control, entry);
    entry.hidden = !control->visible();
    entry.disabled = !control->enabled();
    entry.focus = host_.Focus(form) == control;
  }
  return reading;
}

}  // namespace kestro::adapters
