#pragma once

#include "adapters/win32/front_end/win32_form_host.h"
#include "adapters/win32/front_end/win32_front_end_driver.h"

namespace kestro::qt_tests {

/// The front end with native controls that the tests for both kinds compare with.
struct ScreenFrontEnd {
  adapters::Win32EventBoundary boundary;
  adapters::Win32FormHost host{boundary, [](std::string_view path) { return std::string(path); }};
  adapters::Win32FrontEndDriver driver{host};
};

}  // namespace kestro::qt_tests
