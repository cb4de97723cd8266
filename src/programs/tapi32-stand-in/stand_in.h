#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/win32/code_page.h"
#include "adapters/win32/control_server.h"
#include "adapters/win32/event_poster.h"
#include "adapters/win32/hidden_window.h"
#include "exchange/exchange.h"
#include "exchange/exchange_commands.h"
#include "programs/tapi32-stand-in/misbehaviour.h"

namespace kestro::programs {

/// The software exchange behind the telephony library's own interface, with two
/// devices, "EXT 101" and "EXT 102". It is operated over a TCP port of this
/// machine: what exchange::ExchangeCommands and Misbehaviour understand, and
///
///   fail FUNCTION RESULT [TIMES]   the line function fails
///   work FUNCTION                  it works again
///   device NAME PROVIDER           one more device
///   status                         whether the functions are initialised and a line is open
///   journal                        the line functions called since the last journal, oldest first
///
/// Environment: KESTRO_TAPI_PORT is the port (else kDefaultPort);
/// KESTRO_TAPI_SCRIPT holds requests, separated by ";", that are carried out
/// before the first line function.
///
/// Belongs to the thread that makes it, which is the program's user-interface thread.
class StandIn {
 public:
  static constexpr std::uint16_t kDefaultPort = 48112;

  StandIn();
  ~StandIn() = default;
  StandIn(const StandIn&) = delete;
  StandIn& operator=(const StandIn&) = delete;

  [[nodiscard]] exchange::Exchange& exchange() { return exchange_; }
  [[nodiscard]] Misbehaviour& misbehaviour() { return misbehaviour_; }
  /// A line function begins: it is noted with its arguments as text.
  void Entered(std::string_view function, const std::string& arguments);

 private:
  std::string Execute(std::string_view request);
  /// Nothing for a request that is the exchange's own.
  std::optional<std::string> TakeOwn(const std::vector<exchange::RequestWord>& words);
  std::string Fail(const std::vector<exchange::RequestWord>& words);
  std::string TakeJournal();
  void RunScript(std::string_view script);

  adapters::HiddenWindow window_;
  adapters::EventPoster poster_;
  adapters::SystemCodePage code_page_;
  exchange::Exchange exchange_;
  exchange::ExchangeCommands commands_{exchange_, code_page_};
  Misbehaviour misbehaviour_{window_};
  std::vector<std::string> journal_;
  std::unique_ptr<adapters::ControlServer> server_;
};

}  // namespace kestro::programs
