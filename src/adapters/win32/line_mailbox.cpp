#include "adapters/win32/line_mailbox.h"

namespace kestro::adapters {
namespace {

constexpr UINT kMessageArrived = WM_APP + 0x52;
/// More has never been under way; a provider that floods the program loses the rest.
constexpr std::size_t kMostMessages = 10'000;

/// The only thing that the callback can reach.
struct OpenMailbox {
  std::mutex mutex;
  LineMailbox* mailbox = nullptr;
};

OpenMailbox& TheOpenMailbox() {
  static OpenMailbox open;
  return open;
}

std::int32_t Low32(DWORD_PTR value) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(value)); }

}  // namespace

LineMailbox::LineMailbox(HiddenWindow& window, Runner run) : window_(window), run_(std::move(run)) {
  window_.On(kMessageArrived, [this](WPARAM, LPARAM) -> LRESULT {
    HandOverNext();
    return 0;
  });
  OpenMailbox& open = TheOpenMailbox();
  const std::lock_guard lock(open.mutex);
  open.mailbox = this;
}

LineMailbox::~LineMailbox() {
  window_.On(kMessageArrived, {});
  OpenMailbox& open = TheOpenMailbox();
  const std::lock_guard lock(open.mutex);
  open.mailbox = nullptr;
}

void CALLBACK LineMailbox::Arrived(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR parameter1,
                                   DWORD_PTR parameter2, DWORD_PTR parameter3) {
  OpenMailbox& open = TheOpenMailbox();
  const std::lock_guard lock(open.mutex);
  if (open.mailbox == nullptr) return;
  open.mailbox->Put({Low32(device), Low32(message), Low32(instance), Low32(parameter1), Low32(parameter2),
                     Low32(parameter3)});
}

void LineMailbox::SetReceiver(ports::LineCallback receiver) {
  receiver_ = std::move(receiver);
  const std::lock_guard lock(mutex_);
  messages_.clear();
}

void LineMailbox::Put(const ports::LineMessage& message) {
  const std::lock_guard lock(mutex_);
  if (messages_.size() >= kMostMessages) return;
  messages_.push_back(message);
  ::PostMessageW(window_.handle(), kMessageArrived, 0, 0);
}

void LineMailbox::LeaveFunction() {
  if (--inside_ > 0) return;
  const std::lock_guard lock(mutex_);
  if (!messages_.empty()) ::PostMessageW(window_.handle(), kMessageArrived, 0, 0);
}

void LineMailbox::HandOverNext() {
  if (inside_ > 0) return;
  ports::LineMessage message;
  {
    const std::lock_guard lock(mutex_);
    if (messages_.empty()) return;
    message = messages_.front();
    messages_.pop_front();
    if (!messages_.empty()) ::PostMessageW(window_.handle(), kMessageArrived, 0, 0);
  }
  run_([this, message] {
    const ports::LineCallback receiver = receiver_;  // survives being replaced meanwhile
    if (receiver) receiver(message);
  });
}

}  // namespace kestro::adapters
