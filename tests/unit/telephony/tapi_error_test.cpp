#include "telephony/tapi_error.h"

#include <gtest/gtest.h>

#include "support/log_capture.h"

namespace kestro::telephony {
namespace {

std::string Logged(std::uint32_t result) {
  test::LogCapture capture;
  core::LogModule log(capture);
  TAPIError(log).ProcessTAPIError(static_cast<std::int32_t>(result));
  return capture.lines.at(1).substr(std::string("KESTROCTI.TAPIError.ProcessTAPIError | ").size());
}

TEST(TAPIErrorTest, NamesAtTheirValues) {
  for (const auto& [result, name] : {std::pair{0x80000001U, "LINEERR_ALLOCATED"},
                                     {0x80000003U, "LINEERR_BEARERMODEUNAVAIL"},
                                     {0x80000005U, "LINEERR_CALLUNAVAIL"},
                                     {0x8000000CU, "LINEERR_INCOMPATIBLEAPIVERSION"},
                                     {0x8000000EU, "LINEERR_INIFILECORRUPT"},
                                     {0x80000018U, "LINEERR_INVALCALLHANDLE"},
                                     {0x80000030U, "LINEERR_INVALMESSAGEID"},
                                     {0x80000032U, "LINEERR_INVALPARAM"},
                                     {0x80000048U, "LINEERR_OPERATIONFAILED"},
                                     {0x8000004DU, "LINEERR_STRUCTURETOOSMALL"},
                                     {0x80000056U, "LINEERR_NOMULTIPLEINSTANCE"}}) {
    EXPECT_EQ(Logged(result), std::string("TAPI Error = ") + name);
  }
}

TEST(TAPIErrorTest, ValuesWithoutAName) {
  for (const auto& [result, number] : {std::pair{0x80000004U, "-2147483644"},
                                       {0x8000000DU, "-2147483635"},
                                       {0x80000031U, "-2147483599"},
                                       {0x80000057U, "-2147483561"},
                                       {0x80000000U, "-2147483648"},
                                       {0U, "0"},
                                       {1U, "1"},
                                       {0xFFFFFFFFU, "-1"}}) {
    EXPECT_EQ(Logged(result), std::string("TAPI Error = Unknown TAPI Error '") + number + "'");
  }
}

}  // namespace
}  // namespace kestro::telephony
