#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ports/line_functions.h"
#include "ports/line_structures.h"

namespace kestro::exchange {

/// A line device of the exchange. Texts are bytes of the ANSI code page.
struct Device {
  std::string name;
  std::string provider = "SOFTWARE EXCHANGE";  // delivered with one zero byte behind it
  std::uint32_t line_states = 0;               // line-device states it can report
};

inline constexpr std::uint32_t kOriginInternal = ports::line_call_info::kOriginInternal;
inline constexpr std::uint32_t kOriginExternal = ports::line_call_info::kOriginExternal;
/// A call that goes out from here: LINECALLORIGIN_OUTBOUND.
inline constexpr std::uint32_t kOriginOutbound = 0x1;
inline constexpr std::uint32_t kReasonDirect = ports::line_call_info::kReasonDirect;
inline constexpr std::uint32_t kReasonTransfer = ports::line_call_info::kReasonTransfer;

enum class CallState : std::uint32_t {
  kIdle = 0x1,
  kOffering = 0x2,
  kDialling = 0x10,
  kConnected = 0x100,
  kDisconnected = 0x4000,
};

/// A call as the exchange knows it. Texts are bytes of the ANSI code page.
struct Call {
  ports::CallHandle handle = 0;
  std::uint32_t state = 0;
  std::optional<std::string> caller_id;  // nothing = the exchange delivers no number
  std::optional<std::string> connected_id;
  std::optional<std::string> called_id;  // of an outgoing call: the number dialled
  std::string caller_name;
  std::uint32_t origin = kOriginExternal;
  std::uint32_t reason = kReasonDirect;
  bool released = false;  // the application has given its handle back; messages of the call still come
};

/// A small office exchange in memory. It implements the line functions, so the
/// whole system runs on it with nothing installed; tests, the scenario player
/// and the exchange tool act on its other side.
///
/// User-interface thread only. The operations of the outside (Offer, Connect,
/// ...) deliver their message to the application before they return; what the
/// exchange does by itself (see AnswerByItself) goes through the poster. Since
/// the application may do anything while it handles a message, a pointer to a
/// call is good until the next delivery only.
///
/// One application handle is valid at a time (that of the last Initialize), and
/// one line handle (that of the last Open, until it is closed or the functions
/// are shut down). A call lives until it is idle and released, or the line is
/// closed.
///
/// An outgoing call (see Dial) belongs to whoever dialled it: the application
/// neither holds its handle nor hears of it, and it lives until it is idle,
/// line or no line.
class Exchange : public ports::LineFunctions {
 public:
  using Poster = std::function<void(std::function<void()>)>;

  /// `post` runs a task later, from the event loop, in order; needed only by
  /// AnswerByItself. A task that comes after the end of the exchange does nothing.
  explicit Exchange(Poster post);
  ~Exchange() override = default;
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;

  // --- set-up ---
  void AddDevice(Device device);
  /// The line function of that name ("lineOpen") returns `result` the next
  /// `times` times, or from now on, and does nothing else; a result of zero or
  /// more is possible too. False for a name that is no line function.
  bool Fail(std::string_view function, std::int32_t result, std::optional<int> times = {});
  /// Ends a failure; false for an unknown name.
  bool Work(std::string_view function);
  /// A living exchange: requests are answered with LINE_REPLY, a dropped or
  /// transferred call goes idle. Off by default: then only the request ids are
  /// given out, and every answer comes from outside.
  void AnswerByItself(bool on) { answers_by_itself_ = on; }

  // --- what happens on the line; a call that is not known yet is made ---
  // Call states and changes are reported while a line is open, replies and
  // other messages from Initialize to Shutdown; the exchange's own knowledge
  // changes in any case.
  /// A known call of that handle is replaced. The state is set here.
  void Offer(const Call& call);
  /// A new outgoing call to that number (bytes of the ANSI code page); its handle.
  ports::CallHandle Dial(std::string_view ansi_number);
  void Connect(ports::CallHandle call, std::optional<std::string> connected_id);
  void Disconnect(ports::CallHandle call);
  void Idle(ports::CallHandle call);
  /// LINE_CALLINFO with that change (0x8000 = caller id).
  void InformOfChange(ports::CallHandle call, std::uint32_t change);
  void ReportState(ports::CallHandle call, std::uint32_t state);
  void Reply(std::int32_t request, std::int32_t result);
  void Deliver(const ports::LineMessage& message);
  /// From now on lineGetCallInfo copies exactly these bytes over the start of the
  /// caller's buffer (as many as it holds) for this handle, whatever becomes of the call.
  void SetRawCallInfo(ports::CallHandle call, std::vector<std::uint8_t> bytes);

  /// A handle that no call has or had from here: 0x101, 0x102 ...
  [[nodiscard]] ports::CallHandle NewHandle() const;
  [[nodiscard]] const std::map<ports::CallHandle, Call>& calls() const { return calls_; }
  [[nodiscard]] Call* FindCall(ports::CallHandle handle);
  /// The application has initialised the line functions / opened a line.
  [[nodiscard]] bool initialized() const { return static_cast<bool>(callback_); }
  [[nodiscard]] bool line_open() const { return line_ != 0; }

  // --- the line functions ---
  ports::LineResult Initialize(ports::LineHandle& application, ports::LineCallback callback,
                               std::string_view ansi_application_name, std::uint32_t& device_count) override;
  ports::LineResult NegotiateApiVersion(ports::LineHandle application, std::uint32_t device,
                                        std::uint32_t lowest, std::uint32_t highest,
                                        std::uint32_t& version) override;
  ports::LineResult GetDevCaps(ports::LineHandle application, std::uint32_t device, std::uint32_t version,
                               std::uint32_t extension_version, std::span<std::uint8_t> dev_caps) override;
  ports::LineResult Open(ports::LineHandle application, std::uint32_t device, ports::LineHandle& line,
                         std::uint32_t version, std::uint32_t extension_version,
                         std::uint32_t callback_instance, std::uint32_t privileges,
                         std::uint32_t media_modes) override;
  ports::LineResult SetStatusMessages(ports::LineHandle line, std::uint32_t line_states,
                                      std::uint32_t address_states) override;
  ports::LineResult GetCallInfo(ports::CallHandle call, std::span<std::uint8_t> call_info) override;
  ports::LineResult Drop(ports::CallHandle call, std::string_view ansi_user_info,
                         std::uint32_t size) override;
  ports::LineResult DeallocateCall(ports::CallHandle call) override;
  ports::LineResult TranslateAddress(ports::LineHandle application, std::uint32_t device,
                                     std::uint32_t version, std::string_view ansi_address, std::uint32_t card,
                                     std::uint32_t options,
                                     std::span<std::uint8_t> translate_output) override;
  ports::LineResult BlindTransfer(ports::CallHandle call, std::string_view ansi_address,
                                  std::uint32_t country_code) override;
  ports::LineResult Close(ports::LineHandle line) override;
  ports::LineResult Shutdown(ports::LineHandle application) override;

 private:
  struct Failure {
    std::int32_t result = 0;
    std::optional<int> times_left;
  };

  std::optional<std::int32_t> InjectedFailure(std::string_view function);
  std::int32_t NextRequest() { return ++last_request_; }
  /// LINE_REPLY, and the end of the call when the request was carried out.
  void AnswerLater(std::int32_t request, ports::CallHandle call, std::int32_t result);
  /// Runs the task from the event loop unless the functions have been shut down by then.
  void PostForThisSession(std::function<void()> task);

  Call& KnownCall(ports::CallHandle handle);
  /// The call, if the application holds its handle.
  Call* HeldCall(ports::CallHandle handle);
  void DeliverCallMessage(std::int32_t message, ports::CallHandle call, std::uint32_t parameter1,
                          std::uint32_t parameter2 = 0, std::uint32_t parameter3 = 0);
  void ForgetIfOver(ports::CallHandle handle);
  [[nodiscard]] ports::LineResult CheckDevice(ports::LineHandle application, std::uint32_t device,
                                              std::uint32_t version) const;
  [[nodiscard]] bool IsCurrent(ports::LineHandle application) const {
    return initialized() && application == application_;
  }
  void CloseOpenLine();

  Poster post_;
  std::vector<Device> devices_;
  std::map<ports::CallHandle, Call> calls_;
  std::map<ports::CallHandle, std::vector<std::uint8_t>> raw_call_info_;
  std::map<std::string, Failure, std::less<>> failures_;
  ports::LineCallback callback_;
  ports::LineHandle application_ = 0;
  ports::LineHandle last_application_ = 0x1000;
  ports::LineHandle line_ = 0;
  ports::LineHandle last_line_ = 0x2000;
  ports::CallHandle next_call_ = 0x101;
  std::uint32_t open_device_ = 0;
  std::uint32_t callback_instance_ = 0;
  std::int32_t last_request_ = 0;
  bool answers_by_itself_ = false;
  /// What posted tasks watch: replaced at Shutdown, gone with the exchange.
  std::shared_ptr<const bool> session_ = std::make_shared<const bool>(true);
};

}  // namespace kestro::exchange
