#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "adapters/headless/headless_form_host.h"
#include "adapters/headless/headless_front_end_driver.h"
#include "scenario/dumps.h"
#include "screen_front_end.h"

namespace kestro::front_end_tests {

/// The same steps on the front end without drawing and on the one with native
/// widgets that this test program was built for: results, readings and what the
/// form hears must be the same.
template <class SomeForm>
class OnBothFrontEnds : public ScreenFrontEnd {
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
  inline static const Step kShow = Do("show", [](SomeForm& form) { form.Show(); });

  void Expect(const std::vector<Step>& steps) {
    for (const Step& step : steps) {
      const bool expected = step.act(headless_driver_, headless_form_);
      const bool done = step.act(driver_, screen_form_);
      EXPECT_EQ(done, expected) << step.name;
      headless_driver_.Settle();
      driver_.Settle();
      ExpectSame(step.name);
    }
  }

  void ExpectSame(const char* step) {
    const forms::WindowReading expected = headless_driver_.Read(headless_form_);
    const forms::WindowReading shown = driver_.Read(screen_form_);
    EXPECT_EQ(scenario::DumpWindow(screen_form_, shown), scenario::DumpWindow(headless_form_, expected))
        << step;
    EXPECT_TRUE(shown.controls == expected.controls) << step;  // and what is not written out
    EXPECT_EQ(screen_form_.events, headless_form_.events) << step;
  }

  adapters::HeadlessFormHost headless_;
  adapters::HeadlessFrontEndDriver headless_driver_{headless_};
  SomeForm headless_form_{headless_};
  SomeForm screen_form_{host_};
};

}  // namespace kestro::front_end_tests
