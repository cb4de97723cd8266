#include "adapters/posix/iconv_code_page.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "unit/posix/posix_support.h"

namespace kestro {
namespace {

using namespace std::string_view_literals;

TEST(IconvCodePage, BytesBecomeOneCharacterEach) {
  const adapters::IconvCodePage page;
  const std::pair<std::string_view, std::string_view> rows[] = {{""sv, ""sv},
                                                                {"abc"sv, "abc"sv},
                                                                {"\x8A\xE1"sv, "Šá"sv},
                                                                {"\x81"sv, "\xC2\x81"sv},
                                                                {"a\x81\x83z"sv, "a\xC2\x81\xC2\x83z"sv},
                                                                {"\x80"sv, "€"sv},
                                                                {"a\0b"sv, "a\0b"sv}};
  for (const auto& [bytes, text] : rows) EXPECT_EQ(text, page.ToText(bytes)) << bytes;
}

TEST(IconvCodePage, WhatThePageLacksBecomesAQuestionMark) {
  const adapters::IconvCodePage page;
  const std::pair<std::string_view, std::string_view> rows[] = {{""sv, ""sv},
                                                                {"Šá"sv, "\x8A\xE1"sv},
                                                                {"Ω"sv, "?"sv},
                                                                {"aΩb日本š"sv, "a?b??\x9A"sv},
                                                                {"😀!"sv, "?!"sv},
                                                                {"a\xF3\xA0\x81\x81z"sv, "a?z"sv},
                                                                {"\xC2\x81"sv, "\x81"sv},
                                                                {"\xC2\x80"sv, "?"sv},
                                                                {"a\xFF\xFEz"sv, "a??z"sv},
                                                                {"\xC3"sv, "?"sv},
                                                                {"\xE2\x82"sv, "??"sv},
                                                                {"\xED\xA0\x80x"sv, "???x"sv},
                                                                {"\xC0\xAF"sv, "??"sv},
                                                                {"a\0b"sv, "a\0b"sv}};
  for (const auto& [text, bytes] : rows) EXPECT_EQ(bytes, page.FromText(text)) << text;
}

TEST(IconvCodePage, EveryByteComesBackAlsoInALongText) {
  const adapters::IconvCodePage page;
  std::string bytes;
  for (int i = 0; i < 2560; ++i) bytes.push_back(static_cast<char>(i % 256));
  const std::string text = page.ToText(bytes);
  EXPECT_EQ(bytes.size(), base::CharacterCount(text));
  EXPECT_EQ(bytes, page.FromText(text));
  const std::string many(1000, '\x8A');
  EXPECT_EQ(many, page.FromText(page.ToText(many)));
  // Takes minutes when every broken character is a reason to look through the whole rest.
  EXPECT_EQ(std::string(500'000, '?'), page.FromText(std::string(500'000, '\xF3')));
}

TEST(IconvCodePage, AnotherPageByName) {
  EXPECT_EQ("Ω", adapters::IconvCodePage("CP1253").ToText("\xD9"));
  EXPECT_EQ(5, test::ErrorNumberOf([] { adapters::IconvCodePage page("no such page"); }));
}

}  // namespace
}  // namespace kestro
