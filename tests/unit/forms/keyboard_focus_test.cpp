#include "forms/keyboard_focus.h"

#include <gtest/gtest.h>

#include "adapters/headless/headless_form_host.h"

namespace kestro::forms {
namespace {

TEST(KeyboardFocus, GoesOnToTheNextControlAndFromTheEndToTheFront) {
  adapters::HeadlessFormHost host;
  Form form(host, "window", 1000, 1000);
  Label label(form, nullptr, "label");
  TextBox first(form, nullptr, "first");
  Button second(form, nullptr, "second");
  CheckBox third(form, nullptr, "third");
  EXPECT_EQ(&first, KeyboardPlaceFrom(form, nullptr)) << "a label takes no keyboard";
  EXPECT_EQ(&second, KeyboardPlaceFrom(form, &second));
  second.SetEnabled(false);
  EXPECT_EQ(&third, KeyboardPlaceFrom(form, &second));
  third.SetVisible(false);
  EXPECT_EQ(&first, KeyboardPlaceFrom(form, &third));
  first.SetEnabled(false);
  EXPECT_EQ(nullptr, KeyboardPlaceFrom(form, &first));
}

}  // namespace
}  // namespace kestro::forms
