#include "forms/form.h"

#include <algorithm>

#include "base/runtime_error.h"
#include "base/scope_value.h"

namespace kestro::forms {

Form::Form(FormHost& host, std::string_view name, int width, int height)
    : host_(host), name_(name), width_(width), height_(height) {}

Form::~Form() {
  if (loaded_) host_.Unload(*this);
}

void Form::Unregister(Control& control) { std::erase(controls_, &control); }

void Form::RegisterBehind(Control& control, const Control& predecessor) {
  Unregister(control);
  controls_.insert(std::next(std::find(controls_.begin(), controls_.end(), &predecessor)), &control);
}

Control* Form::FindControl(std::string_view name, std::optional<int> index) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(), [&](const Control* control) {
    return control->name() == name &&
           (!control->array_index() || control->array_index() == index.value_or(0));
  });
  return found == controls_.end() ? nullptr : *found;
}

void Form::SetCaption(std::string_view caption) {
  caption_ = caption;
  if (loaded_) host_.WindowChanged(*this);
}

void Form::MoveTo(int left, int top) {
  left_ = left;
  top_ = top;
  placed_ = true;
  if (loaded_) host_.WindowChanged(*this);
}

void Form::SetWindowState(WindowState state) {
  if (window_state_ == state) return;
  window_state_ = state;
  if (loaded_) host_.WindowChanged(*this);
}

void Form::Load() {
  if (loaded_) return;
  loaded_ = true;
  handle_ = host_.Load(*this);
  Form_Load();
}

void Form::Show() {
  Load();
  if (visible_) return;
  visible_ = true;
  host_.Show(*this);
}

void Form::Hide() {
  if (!visible_) return;
  visible_ = false;
  host_.Hide(*this);
}

void Form::ShowModal(Form* owner) {
  if (modal_) throw base::RuntimeError(base::kInvalidProcedureCall, "The window is open already");
  Load();
  visible_ = true;
  const base::ScopeValue modal(modal_, true);
  host_.ShowModal(*this, owner);
}

bool Form::RequestUnload(int mode) {
  if (!loaded_) return true;
  bool cancel = false;
  Form_QueryUnload(cancel, mode);
  if (cancel || !loaded_) return !loaded_;
  Form_Unload();
  if (!loaded_) return true;
  visible_ = false;
  loaded_ = false;
  host_.Unload(*this);
  handle_ = 0;
  return true;
}

void Form::Form_QueryUnload(bool& /*cancel*/, int /*unload_mode*/) {}

void Form::ControlChanged(Control& control) {
  if (loaded_) host_.ControlChanged(*this, control);
}

void Form::FocusControl(Control& control) {
  if (loaded_) host_.FocusControl(*this, control);
}

void Form::UserChangedWindowState(WindowState state) {
  if (window_state_ == state) return;
  window_state_ = state;
  Form_Resize();
}

}  // namespace kestro::forms
