#include "exchange/exchange.h"

#include <algorithm>
#include <array>
#include <utility>

// The other side of the line: set-up, what happens to calls, messages to the application.

namespace kestro::exchange {
namespace {

constexpr std::array<std::string_view, 12> kLineFunctionNames = {
    "lineInitialize",        "lineNegotiateAPIVersion", "lineGetDevCaps", "lineOpen",
    "lineSetStatusMessages", "lineGetCallInfo",         "lineDrop",       "lineDeallocateCall",
    "lineTranslateAddress",  "lineBlindTransfer",       "lineClose",      "lineShutdown"};

constexpr std::uint32_t kNormalDisconnect = 1;  // LINEDISCONNECTMODE_NORMAL

constexpr std::uint32_t Value(CallState state) { return static_cast<std::uint32_t>(state); }

bool IsLineFunction(std::string_view name) {
  return std::find(kLineFunctionNames.begin(), kLineFunctionNames.end(), name) != kLineFunctionNames.end();
}

}  // namespace

Exchange::Exchange(Poster post) : post_(std::move(post)) {}

void Exchange::AddDevice(Device device) { devices_.push_back(std::move(device)); }

bool Exchange::Fail(std::string_view function, std::int32_t result, std::optional<int> times) {
  if (!IsLineFunction(function)) return false;
  failures_.insert_or_assign(std::string(function), Failure{result, times});
  return true;
}

bool Exchange::Work(std::string_view function) {
  if (!IsLineFunction(function)) return false;
  if (const auto failure = failures_.find(function); failure != failures_.end()) failures_.erase(failure);
  return true;
}

std::optional<std::int32_t> Exchange::InjectedFailure(std::string_view function) {
  const auto failure = failures_.find(function);
  if (failure == failures_.end()) return std::nullopt;
  auto& times_left = failure->second.times_left;
  if (times_left && *times_left <= 0) return std::nullopt;
  if (times_left) --*times_left;
  return failure->second.result;
}

void Exchange::Offer(const Call& call) {
  const ports::CallHandle handle = call.handle;
  Call& offered = KnownCall(handle);
  offered = call;
  offered.state = Value(CallState::kOffering);
  offered.released = false;
  DeliverCallMessage(ports::kLineCallState, handle, Value(CallState::kOffering), 0, ports::kPrivilegeOwner);
}

ports::CallHandle Exchange::Dial(std::string_view ansi_number) {
  Call& call = KnownCall(NewHandle());
  call.state = Value(CallState::kDialling);
  call.called_id = std::string(ansi_number);
  call.origin = kOriginOutbound;
  call.released = true;
  return call.handle;
}

void Exchange::Connect(ports::CallHandle call, std::optional<std::string> connected_id) {
  KnownCall(call).connected_id = std::move(connected_id);
  ReportState(call, Value(CallState::kConnected));
}

void Exchange::Disconnect(ports::CallHandle call) { ReportState(call, Value(CallState::kDisconnected)); }

void Exchange::Idle(ports::CallHandle call) { ReportState(call, Value(CallState::kIdle)); }

void Exchange::InformOfChange(ports::CallHandle call, std::uint32_t change) {
  KnownCall(call);
  DeliverCallMessage(ports::kLineCallInfo, call, change);
}

void Exchange::ReportState(ports::CallHandle call, std::uint32_t state) {
  KnownCall(call).state = state;
  DeliverCallMessage(ports::kLineCallState, call, state,
                     state == Value(CallState::kDisconnected) ? kNormalDisconnect : 0);
  ForgetIfOver(call);
}

void Exchange::Reply(std::int32_t request, std::int32_t result) {
  Deliver({0, ports::kLineReply, static_cast<std::int32_t>(callback_instance_), request, result, 0});
}

void Exchange::Deliver(const ports::LineMessage& message) {
  // The copy outlives a Shutdown from inside the callback.
  if (const ports::LineCallback callback = callback_) callback(message);
}

void Exchange::DeliverCallMessage(std::int32_t message, ports::CallHandle call, std::uint32_t parameter1,
                                  std::uint32_t parameter2, std::uint32_t parameter3) {
  const Call* const known = FindCall(call);
  const bool outgoing = known != nullptr && known->origin == kOriginOutbound;
  if (!line_open() || outgoing) return;
  const auto value = [](std::uint32_t number) { return static_cast<std::int32_t>(number); };
  Deliver({value(call), message, value(callback_instance_), value(parameter1), value(parameter2),
           value(parameter3)});
}

void Exchange::SetRawCallInfo(ports::CallHandle call, std::vector<std::uint8_t> bytes) {
  raw_call_info_.insert_or_assign(call, std::move(bytes));
}

ports::CallHandle Exchange::NewHandle() const {
  ports::CallHandle handle = next_call_;
  while (calls_.contains(handle)) ++handle;
  return handle;
}

Call* Exchange::FindCall(ports::CallHandle handle) {
  const auto found = calls_.find(handle);
  return found == calls_.end() ? nullptr : &found->second;
}

Call& Exchange::KnownCall(ports::CallHandle handle) {
  if (Call* const known = FindCall(handle)) return *known;
  if (handle == NewHandle()) next_call_ = handle + 1;
  Call& call = calls_[handle];
  call.handle = handle;
  return call;
}

Call* Exchange::HeldCall(ports::CallHandle handle) {
  Call* const call = FindCall(handle);
  return call != nullptr && !call->released ? call : nullptr;
}

void Exchange::ForgetIfOver(ports::CallHandle handle) {
  const Call* const call = FindCall(handle);
  if (call != nullptr && call->released && call->state == Value(CallState::kIdle)) calls_.erase(handle);
}

void Exchange::AnswerLater(std::int32_t request, ports::CallHandle call, std::int32_t result) {
  if (!answers_by_itself_) return;
  PostForThisSession([this, request, result] { Reply(request, result); });
  if (result < 0) return;
  PostForThisSession([this, call] {
    const Call* const ended = FindCall(call);
    if (ended != nullptr && ended->state != Value(CallState::kIdle)) Idle(call);
  });
}

void Exchange::PostForThisSession(std::function<void()> task) {
  post_([session = std::weak_ptr(session_), task = std::move(task)] {
    if (!session.expired()) task();
  });
}

}  // namespace kestro::exchange
