#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <gtest/gtest.h>

#include "adapters/qt/qt_event_poster.h"
#include "adapters/qt/qt_form_host.h"
#include "adapters/qt/qt_front_end_driver.h"
#include "base/runtime_error.h"
#include "qt/sample_form.h"

namespace kestro::qt_tests {

/// A Qt front end of its own for each test.
class QtFixture : public testing::Test {
 protected:
  /// Lets events run until the condition holds; false after five seconds.
  static bool WaitUntil(const std::function<bool()>& condition) {
    QElapsedTimer clock;
    clock.start();
    while (!condition() && clock.elapsed() < 5000) {
      RunFor(2);
    }
    return condition();
  }
  static void RunFor(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
  }

  adapters::EventBoundary boundary_;
  adapters::QtFormHost host_{boundary_, [](std::string_view path) { return std::string(path); }};
  adapters::QtFrontEndDriver driver_{host_};
  adapters::QtEventPoster post_{boundary_};
};

}  // namespace kestro::qt_tests
