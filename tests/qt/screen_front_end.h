#pragma once

#include "adapters/qt/qt_form_host.h"
#include "adapters/qt/qt_front_end_driver.h"

namespace kestro::qt_tests {

/// The front end with widgets that the tests for both kinds compare with.
struct ScreenFrontEnd {
  adapters::EventBoundary boundary;
  adapters::QtFormHost host{boundary, [](std::string_view path) { return std::string(path); }};
  adapters::QtFrontEndDriver driver{host};
};

}  // namespace kestro::qt_tests
