#pragma once

#include <deque>
#include <functional>
#include <mutex>

#include "adapters/win32/hidden_window.h"
#include "adapters/win32/tapi_library.h"
#include "ports/line_functions.h"

namespace kestro::adapters {

/// Takes the messages of the line functions from wherever they come (inside a
/// line function, from the event loop, from another thread) and hands them to
/// the receiver on the window's thread, in the order of arrival and never while
/// a line function runs.
///
/// The callback of the line functions carries nothing that would lead to an
/// object, so at most one mailbox is open at a time.
class LineMailbox {
 public:
  using Runner = std::function<void(const std::function<void()>& task)>;

  /// The window must outlive the object.
  LineMailbox(HiddenWindow& window, Runner run);
  ~LineMailbox();
  LineMailbox(const LineMailbox&) = delete;
  LineMailbox& operator=(const LineMailbox&) = delete;

  /// What is registered with the line functions.
  [[nodiscard]] static TapiLibrary::Callback Callback() { return &LineMailbox::Arrived; }

  /// From now on messages go to this receiver; an empty one: they are dropped,
  /// and so is what has not been handed over yet.
  void SetReceiver(ports::LineCallback receiver);
  [[nodiscard]] const ports::LineCallback& receiver() const { return receiver_; }

  /// While one of these lives nothing is handed over.
  class InsideFunction {
   public:
    explicit InsideFunction(LineMailbox& mailbox) : mailbox_(mailbox) { ++mailbox_.inside_; }
    ~InsideFunction() { mailbox_.LeaveFunction(); }
    InsideFunction(const InsideFunction&) = delete;
    InsideFunction& operator=(const InsideFunction&) = delete;

   private:
    LineMailbox& mailbox_;
  };

 private:
  static void CALLBACK Arrived(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR parameter1,
                               DWORD_PTR parameter2, DWORD_PTR parameter3);
  void Put(const ports::LineMessage& message);
  void LeaveFunction();
  void HandOverNext();

  HiddenWindow& window_;
  Runner run_;
  ports::LineCallback receiver_;
  int inside_ = 0;
  std::mutex mutex_;  // guards what follows
  std::deque<ports::LineMessage> messages_;
};

}  // namespace kestro::adapters
