#include "adapters/qt/qt_descriptor_watcher.h"

#include <QCoreApplication>
#include <QSocketNotifier>

namespace kestro::adapters {

void QtDescriptorWatcher::LaterDeleter::operator()(QSocketNotifier* notifier) const {
  // It may be the one whose signal is being handled; off at once, gone when that is over.
  notifier->setEnabled(false);
  notifier->disconnect();
  if (QCoreApplication::instance() != nullptr) {
    notifier->deleteLater();
  } else {
    delete notifier;
  }
}

QtDescriptorWatcher::QtDescriptorWatcher(EventBoundary& boundary) : boundary_(boundary) {}

QtDescriptorWatcher::~QtDescriptorWatcher() = default;

void QtDescriptorWatcher::Watch(int descriptor, std::function<void()> readable) {
  Unwatch(descriptor);
  std::unique_ptr<QSocketNotifier, LaterDeleter> notifier(
      new QSocketNotifier(descriptor, QSocketNotifier::Read));
  QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                   [this, readable = std::move(readable)] {
                     const std::function<void()> running = readable;  // survives an Unwatch from inside
                     boundary_.Run(EventBoundary::Cause::kSystem, running);
                   });
  notifiers_[descriptor] = std::move(notifier);
}

void QtDescriptorWatcher::Unwatch(int descriptor) { notifiers_.erase(descriptor); }

}  // namespace kestro::adapters
