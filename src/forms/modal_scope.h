#pragma once

#include <vector>

#include "forms/form.h"

namespace kestro::forms {

/// Keeps a window on the stack of those that wait as the only one that can be used.
class ModalScope {
 public:
  ModalScope(std::vector<Form*>& stack, Form& form) : stack_(stack) { stack_.push_back(&form); }
  ~ModalScope() { stack_.pop_back(); }
  ModalScope(const ModalScope&) = delete;
  ModalScope& operator=(const ModalScope&) = delete;

 private:
  std::vector<Form*>& stack_;
};

}  // namespace kestro::forms
