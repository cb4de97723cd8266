#include "core/dial_link.h"

#include <gtest/gtest.h>

namespace kestro {
namespace {

TEST(DialLink, OnlyPlainNumbersAreTaken) {
  const std::string longest(core::kMostLinkDigits, '7');
  const struct {
    std::string link;
    std::string number;
  } cases[] = {
      {"tel:602111222", "602111222"},
      {"TEL:+420602111222", "+420602111222"},
      {"CallTo:+420-602.111.222", "+420602111222"},
      {"callto://602111222/", "602111222"},
      {"tel:(602)%20111%2d222", "602111222"},
      {"tel:%2B420602111222", "+420602111222"},
      {"tel:602111222;ext=21;phone-context=+420", "602111222"},
      {"tel:602%31", "6021"},
      {"tel:" + longest, longest},
      {"tel:602" + std::string(249, '-'), "602"},
      {"tel:+" + longest, "+" + longest},
  };
  for (const auto& entry : cases) EXPECT_EQ(entry.number, core::NumberOfLink(entry.link)) << entry.link;
}

TEST(DialLink, HostileAndBrokenOnesAreRefused) {
  const std::string tel = "tel:";
  const std::string links[] = {tel + std::string(core::kMostLinkDigits + 1, '7'),
                               tel + "602" + std::string(250, '-'),
                               "",
                               "tel",
                               "tel:",
                               "tel:+",
                               "tel:;ext=21",
                               "tel:--",
                               "http:602111222",
                               " tel:602",
                               "tel:*21*602111222%23",
                               "tel:602#",
                               "tel:602%",
                               "tel:602%2",
                               "tel:602%zz",
                               "tel:602%252D" /* decoded once only */,
                               "tel:602%00",
                               "tel:602%0A603",
                               "tel:602%3Bext",
                               "tel:602\n603",
                               "tel:602 111" /* a raw blank does not belong in a link */,
                               std::string("tel:602\0", 8),
                               "tel:602;x=\x1b[2J",
                               "tel:602+603",
                               "tel:++602",
                               "tel:alice",
                               "callto:602?call",
                               "tel:\u0666\u0660" /* digits of another script */,
                               "tel:\uFF16"};
  for (const auto& link : links) EXPECT_EQ("", core::NumberOfLink(link)) << link;
}

TEST(DialLink, OnlyItsOwnSchemesAreLinks) {
  for (const char* link : {"tel:", "callto:x", "TeL:1"}) EXPECT_TRUE(core::IsDialLink(link)) << link;
  for (const char* text : {"", "tel", "--demo", "telx:1", "xtel:1", "sip:1"}) {
    EXPECT_FALSE(core::IsDialLink(text)) << text;
  }
}

}  // namespace
}  // namespace kestro
