#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "telephony/line_messages.h"
#include "telephony/tapi_error.h"

namespace kestro::telephony {
namespace {

/// What the log says of a result.
std::string Logged(std::uint32_t result) {
  test::LogCapture capture;
  core::LogModule log(capture);
  TAPIError(log).ProcessTAPIError(static_cast<std::int32_t>(result));
  return capture.lines.at(1).substr(
      std::string("KESTROCTI.TAPIError.ProcessTAPIError | TAPI Error = ").size());
}

/// `name` behind the start that all names of a table share; "-" when it is empty or another text.
std::string Short(std::string_view name, std::string_view start) {
  if (name.empty() || !name.starts_with(start)) return " -";
  return " " + std::string(name.substr(start.size()));
}

TEST(LineNamesTest, Errors) {
  std::string names;
  for (std::uint32_t result = 0x80000000U; result <= 0x80000057U; ++result) {
    names += Short(Logged(result), "LINEERR_");
  }
  EXPECT_EQ(names,
            " - ALLOCATED BADDEVICEID BEARERMODEUNAVAIL - CALLUNAVAIL COMPLETIONOVERRUN CONFERENCEFULL "
            "DIALBILLING DIALDIALTONE DIALPROMPT DIALQUIET INCOMPATIBLEAPIVERSION - INIFILECORRUPT INUSE "
            "INVALADDRESS INVALADDRESSID INVALADDRESSMODE INVALADDRESSSTATE INVALAPPHANDLE INVALAPPNAME "
            "INVALBEARERMODE INVALCALLCOMPLMODE INVALCALLHANDLE INVALCALLPARAMS INVALCALLPRIVILEGE "
            "INVALCALLSELECT INVALCALLSTATE INVALCALLSTATELIST INVALCARD INVALCOMPLETIONID "
            "INVALCONFCALLHANDLE INVALCONSULTCALLHANDLE INVALCOUNTRYCODE INVALDEVICECLASS INVALDEVICEHANDLE "
            "INVALDIALPARAMS INVALDIGITLIST INVALDIGITMODE INVALDIGITS INVALEXTVERSION INVALGROUPID "
            "INVALLINEHANDLE INVALLINESTATE INVALLOCATION INVALMEDIALIST INVALMEDIAMODE INVALMESSAGEID - "
            "INVALPARAM INVALPARKID INVALPARKMODE INVALPOINTER INVALPRIVSELECT INVALRATE INVALREQUESTMODE "
            "INVALTERMINALID INVALTERMINALMODE INVALTIMEOUT INVALTONE INVALTONELIST INVALTONEMODE "
            "INVALTRANSFERMODE LINEMAPPERFAILED NOCONFERENCE NODEVICE NODRIVER NOMEM NOREQUEST NOTOWNER "
            "NOTREGISTERED OPERATIONFAILED OPERATIONUNAVAIL RATEUNAVAIL RESOURCEUNAVAIL REQUESTOVERRUN "
            "STRUCTURETOOSMALL TARGETNOTFOUND TARGETSELF UNINITIALIZED USERUSERINFOTOOBIG REINIT "
            "ADDRESSBLOCKED BILLINGREJECTED INVALFEATURE NOMULTIPLEINSTANCE -");
  for (const auto& [result, number] : {std::pair{0x80000004U, "-2147483644"},
                                       {0x8000000DU, "-2147483635"},
                                       {0x80000057U, "-2147483561"},
                                       {0U, "0"},
                                       {0xFFFFFFFFU, "-1"}}) {
    EXPECT_EQ(Logged(result), std::string("Unknown TAPI Error '") + number + "'");
  }
}

TEST(LineNamesTest, Messages) {
  std::string names;
  for (std::int32_t message = -1; message <= 21; ++message) names += Short(LineMessageName(message), "");
  EXPECT_EQ(names,
            " - LINE_ADDRESSSTATE LINE_CALLINFO LINE_CALLSTATE LINE_CLOSE LINE_DEVSPECIFIC "
            "LINE_DEVSPECIFICFEATURE LINE_GATHERDIGITS LINE_GENERATE LINE_LINEDEVSTATE - LINE_MONITORMEDIA "
            "LINE_MONITORTONE - LINE_REQUEST PHONE_BUTTON PHONE_CLOSE PHONE_DEVSPECIFIC PHONE_REPLY "
            "PHONE_STATE LINE_CREATE PHONE_CREATE -");
}

/// The names of the states from bit 0 on, then that of the value with all bits from 15 on.
template <class NameOf>
std::string NamesByBit(NameOf name_of, std::string_view start) {
  std::string names;
  for (std::uint32_t bit = 0; bit < 32; ++bit) names += Short(name_of(1U << bit), start);
  return names + Short(name_of(0xFFFF8000U), start) + Short(name_of(3U), start);
}

TEST(LineNamesTest, States) {
  EXPECT_EQ(NamesByBit(CallStateName, "LINECALLSTATE_"),
            " IDLE OFFERING ACCEPTED DIALTONE DIALING RINGBACK BUSY SPECIALINFO CONNECTED PROCEEDING ONHOLD "
            "CONFERENCED ONHOLDPENDCONF ONHOLDPENDTRANSFER DISCONNECTED - - - - - - - - - - - - - - - - - "
            "UNKNOWN -");
  EXPECT_EQ(NamesByBit(LineDeviceStateName, "LINEDEVSTATE_"),
            " OTHER RINGING CONNECTED DISCONNECTED MSGWAITON MSGWAITOFF INSERVICE OUTOFSERVICE MAINTENANCE "
            "OPEN CLOSE NUMCALLS NUMCOMPLETIONS TERMINALS ROAMMODE - SIGNAL DEVSPECIFIC REINIT LOCK "
            "CAPSCHANGE CONFIGCHANGE TRANSLATECHANGE COMPLCANCEL REMOVED - - - - - - - BATTERY -");
}

}  // namespace
}  // namespace kestro::telephony
