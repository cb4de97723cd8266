#include "core/dial_link.h"

#include <vector>

#include <gtest/gtest.h>

#include "core/dialling.h"
#include "scenario/recording_dialling.h"
#include "support/error_number.h"

namespace kestro {
namespace {

using namespace std::string_view_literals;

TEST(DialLink, OnlyPlainNumbersAreTaken) {
  const std::string longest(core::kMostLinkDigits, '7');
  const std::pair<std::string, std::string> cases[] = {
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
  for (const auto& [link, number] : cases) EXPECT_EQ(number, core::NumberOfLink(link)) << link;
}

TEST(DialLink, HostileAndBrokenOnesAreRefused) {
  for (const std::string_view link : {"", "tel", "http:602111222", " tel:602", "callto:602?call"}) {
    EXPECT_EQ("", core::NumberOfLink(link)) << link;
  }
  // What is escaped is decoded once only; a raw blank does not belong in a link, nor do digits of other
  // scripts.
  for (const std::string_view rest :
       {""sv,          "+"sv,        ";ext=21"sv,      "--"sv,       "*21*602111222%23"sv, "602#"sv,
        "602%"sv,      "602%2"sv,    "602%zz"sv,       "602%252D"sv, "602%00"sv,           "602%0A603"sv,
        "602%3Bext"sv, "602\n603"sv, "602 111"sv,      "602\0"sv,    "602;x=\x1b[2J"sv,    "602+603"sv,
        "++602"sv,     "alice"sv,    "\u0666\u0660"sv, "\uFF16"sv}) {
    EXPECT_EQ("", core::NumberOfLink("tel:" + std::string(rest))) << rest;
  }
  EXPECT_EQ("", core::NumberOfLink("tel:" + std::string(core::kMostLinkDigits + 1, '7')));
  EXPECT_EQ("", core::NumberOfLink("tel:602" + std::string(250, '-')));
}

TEST(DialLink, OnlyItsOwnSchemesAreLinks) {
  for (const char* link : {"tel:", "callto:x", "TeL:1"}) EXPECT_TRUE(core::IsDialLink(link)) << link;
  for (const char* text : {"", "tel", "--demo", "telx:1", "xtel:1", "sip:1"}) {
    EXPECT_FALSE(core::IsDialLink(text)) << text;
  }
}

TEST(Dialling, ControlCharactersAreRefusedBeforeAnythingIsMade) {
  std::vector<std::string> lines;
  scenario::Transcript transcript([&](std::string_view line) { lines.emplace_back(line); });
  scenario::RecordingDialling objects(transcript);
  core::Dialling dialling(objects);
  const auto error_of = [&](const std::string& number) {
    return test::ErrorNumberOf([&] { dialling.Dial(number); });
  };
  // Anything else reaches the object as it stands.
  EXPECT_EQ(0, error_of("\"quoted\" $(x) ; `y` žluťoučký"));
  EXPECT_EQ(std::vector<std::string>{R"(dial "\"quoted\" $(x) ; `y` žluťoučký")"}, lines);
  objects.SetDialObject(scenario::DialObject::kMissing);
  EXPECT_EQ(429, error_of("602"));
  for (const char control : {'\0', '\n', '\r', '\t', '\x1b', '\x7f'}) {
    EXPECT_EQ(5, error_of(std::string("602") + control)) << int{control};
    EXPECT_EQ(5, error_of(control + std::string("602"))) << int{control};
  }
  EXPECT_EQ(5, error_of("602\xc2\x85")) << "the next line";
  EXPECT_EQ(5, error_of("\xe2\x80\xa8"
                        "602"))
      << "a separator of lines";
}

}  // namespace
}  // namespace kestro
