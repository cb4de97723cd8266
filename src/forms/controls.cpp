#include "forms/controls.h"

#include <algorithm>

#include "base/runtime_error.h"
#include "forms/form.h"

namespace kestro::forms {

void TextBox::SetText(std::string_view text) {
  if (text_ == text) return;
  text_ = text;
  Changed();
  Raise(on_change);
}

void ComboBox::AddItem(std::string_view item) {
  items_.emplace_back(item);
  Changed();
}

void ComboBox::Clear() {
  items_.clear();
  list_index_ = -1;
  typed_.clear();
  Changed();
}

void ComboBox::SetListIndex(int index) {
  if (index < -1 || index >= static_cast<int>(items_.size())) {
    throw base::RuntimeError(base::kInvalidProcedureCall, "Invalid procedure call or argument");
  }
  const std::string item = index < 0 ? std::string() : items_[static_cast<std::size_t>(index)];
  const bool other_item = index != list_index_;
  if (!other_item && item == typed_) return;
  list_index_ = index;
  typed_ = item;
  Changed();
  if (other_item) Raise(on_click);
}

void ComboBox::SetText(std::string_view text) {
  if (text == typed_) return;
  const auto found = std::find(items_.begin(), items_.end(), text);
  typed_ = text;
  list_index_ = found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
  Changed();
}

std::string ComboBox::text() const {
  if (style_ == Style::kEditable) return typed_;
  return list_index_ < 0 ? std::string() : items_[static_cast<std::size_t>(list_index_)];
}

TabPages::TabPages(Form& form, Container* parent, std::string_view name, int count)
    : Control(form, parent, name) {
  for (int index = 0; index < count; ++index) pages_.emplace_back(*this, index);
}

void TabPages::SetTabCaption(int index, std::string_view caption) {
  Assign(page(index).caption_, std::string(caption));
}

void ProgressBar::SetRange(int minimum, int maximum) {
  if (maximum < minimum) {
    throw base::RuntimeError(base::kInvalidProcedureCall, "Invalid procedure call or argument");
  }
  if (minimum == minimum_ && maximum == maximum_) return;
  minimum_ = minimum;
  maximum_ = maximum;
  value_ = std::clamp(value_, minimum_, maximum_);
  Changed();
}

void ProgressBar::SetValue(int value) { Assign(value_, std::clamp(value, minimum_, maximum_)); }

MenuItem::MenuItem(Form& form, MenuItem* parent_item, std::string_view name, Role role,
                   std::optional<int> array_index)
    : CaptionedControl(form, nullptr, name, array_index), parent_item_(parent_item), role_(role) {
  if (parent_item != nullptr) parent_item->children_.push_back(this);
}

bool MenuItem::ParentReachable() const { return parent_item_ == nullptr || parent_item_->Reachable(); }

MenuArray::MenuArray(Form& form, MenuItem& parent, std::string_view name)
    : form_(form), parent_(parent), name_(name) {
  Add();
}

MenuItem& MenuArray::Add() {
  const int index = count();
  auto element = std::make_unique<MenuItem>(form_, &parent_, name_, MenuItem::Role::kEntry, index);
  element->on_click = [this, index] {
    if (on_click) on_click(index);
  };
  if (index > 0) form_.RegisterBehind(*element, *elements_.back());
  elements_.push_back(std::move(element));
  return *elements_.back();
}

MenuItem& MenuArray::at(int index) {
  if (index < 0 || index >= count()) base::RaiseSubscriptOutOfRange();
  return *elements_[static_cast<std::size_t>(index)];
}

const MenuItem& MenuArray::at(int index) const {
  if (index < 0 || index >= count()) base::RaiseSubscriptOutOfRange();
  return *elements_[static_cast<std::size_t>(index)];
}

MenuItem& MenuArray::LoadNext() {
  MenuItem& element = Add();
  if (form_.loaded()) form_.host().MenuChanged(form_, parent_);
  return element;
}

void MenuArray::UnloadAllButFirst() {
  if (count() == 1) return;
  while (count() > 1) {
    form_.Unregister(*elements_.back());
    std::erase(parent_.children_, elements_.back().get());
    elements_.pop_back();
  }
  if (form_.loaded()) form_.host().MenuChanged(form_, parent_);
}

}  // namespace kestro::forms
