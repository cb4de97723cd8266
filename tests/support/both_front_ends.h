#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "adapters/headless/headless_form_host.h"
#include "adapters/headless/headless_front_end_driver.h"
#include "screen_front_end.h"

namespace kestro::qt_tests {

/// A reading and what the form has heard, for comparison.
[[nodiscard]] inline std::string Show(const forms::WindowReading& reading,
                                      const std::vector<std::string>& events) {
  std::string text = reading.caption + (reading.visible ? " visible " : " ") +
                     std::to_string(static_cast<int>(reading.state)) + "\n";
  const auto quoted = [&text](const std::vector<std::string>& items) {
    for (const std::string& item : items) text += " \"" + item + "\"";
  };
  const auto numbers = [&text](const char* word, const std::vector<int>& items) {
    for (const int item : items) text += word + std::to_string(item);
  };
  for (const forms::ControlReading& control : reading.controls) {
    text += "  " + control.name;
    quoted(control.texts);
    if (control.picture) text += " picture \"" + *control.picture + "\"";
    if (control.index) text += " index " + std::to_string(*control.index);
    if (control.typed) text += " text \"" + *control.typed + "\"";
    numbers(" hidden button ", control.hidden_buttons);
    numbers(" disabled button ", control.disabled_buttons);
    text += std::string(control.hidden ? " hidden" : "") + (control.disabled ? " disabled" : "") +
            (control.checked ? " checked" : "") + (control.focus ? " focus" : "") + "\n";
    if (!control.grid) continue;
    text += "    " + std::to_string(control.grid->row_count) + " rows, selected " +
            std::to_string(control.grid->selected_row) + "\n";
    for (const auto& row : control.grid->rows) {
      text += "   ";
      quoted(row);
      text += "\n";
    }
  }
  for (const std::string& event : events) text += "  event " + event + "\n";
  return text;
}

/// The same steps on the front end without drawing and on the one with native
/// widgets that this test program was built for: results, readings and what the
/// form hears must be the same.
template <class SomeForm>
class OnBothFrontEnds : public testing::Test {
 protected:
  struct Step {
    const char* name;
    std::function<bool(forms::FrontEndDriver&, SomeForm&)> act;
  };

  static Step Do(const char* name, std::function<void(SomeForm&)> act) {
    return {name, [act = std::move(act)](auto&, SomeForm& form) {
              act(form);
              return true;
            }};
  }
  template <class SomeControl>
  static Step Click(const char* name, SomeControl SomeForm::*control) {
    return {name, [control](auto& driver, SomeForm& form) { return driver.Click(form, form.*control); }};
  }
  template <class SomeControl>
  static Step Type(const char* name, SomeControl SomeForm::*control, std::string text) {
    return {name, [control, text = std::move(text)](auto& driver, SomeForm& form) {
              return driver.Type(form, form.*control, text);
            }};
  }
  template <class SomeControl>
  static Step Choose(const char* name, SomeControl SomeForm::*control, int item) {
    return {name, [control, item](auto& driver, SomeForm& form) {
              return driver.Choose(form, form.*control, item);
            }};
  }
  static Step Check(const char* name, forms::CheckBox SomeForm::*box) {
    return {name, [box](auto& driver, SomeForm& form) { return driver.Check(form, form.*box, true); }};
  }
  inline static const Step kShow{"show", [](auto&, SomeForm& form) {
                                   form.Show();
                                   return true;
                                 }};

  void Expect(const std::vector<Step>& steps) {
    for (const Step& step : steps) {
      const bool expected = step.act(headless_driver_, headless_form_);
      const bool done = step.act(screen_.driver, screen_form_);
      EXPECT_EQ(done, expected) << step.name;
      headless_driver_.Settle();
      screen_.driver.Settle();
      EXPECT_EQ(Show(screen_.driver.Read(screen_form_), screen_form_.events),
                Show(headless_driver_.Read(headless_form_), headless_form_.events))
          << step.name;
    }
  }

  adapters::HeadlessFormHost headless_;
  adapters::HeadlessFrontEndDriver headless_driver_{headless_};
  SomeForm headless_form_{headless_};
  ScreenFrontEnd screen_;
  SomeForm screen_form_{screen_.host};
};

}  // namespace kestro::qt_tests
