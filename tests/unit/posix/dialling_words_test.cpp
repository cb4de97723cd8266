#include <gtest/gtest.h>

#include "adapters/posix/command_words.h"
#include "adapters/posix/tel_uri.h"
#include "unit/posix/posix_support.h"

namespace kestro {
namespace {

using adapters::SplitCommandWords;
using adapters::TelUri;
using adapters::WithNumber;
using test::ErrorNumberOf;
using Words = std::vector<std::string>;

TEST(CommandWords, AreSplitWithoutAShell) {
  const struct {
    const char* command;
    Words words;
  } cases[] = {
      {"", {}},
      {"   ", {}},
      {"dial %n", {"dial", "%n"}},
      {"  /usr/bin/dial   -x  ", {"/usr/bin/dial", "-x"}},
      {R"("/opt/my phone/dial" %n)", {"/opt/my phone/dial", "%n"}},
      {R"(dial "a\"b" "c\\d" "e\f")", {"dial", "a\"b", "c\\d", "e\\f"}},
      {R"(dial 'a\"b' '')", {"dial", "a\\\"b", ""}},
      {R"(dial --to="x y"'z')", {"dial", "--to=x yz"}},
      {R"(dial C:\temp\x)", {"dial", "C:\\temp\\x"}},
      {"dial $HOME `id` $(id) ; rm *>x|y&", {"dial", "$HOME", "`id`", "$(id)", ";", "rm", "*>x|y&"}},
  };
  for (const auto& entry : cases) EXPECT_EQ(entry.words, SplitCommandWords(entry.command)) << entry.command;
}

TEST(CommandWords, WhatCannotBeReadIsRefused) {
  for (const char* command : {"dial \"x", "dial 'x", R"(dial "x\")", "dial\n%n", "dial\tx", "dial \x7f"}) {
    EXPECT_EQ(5, ErrorNumberOf([&] { static_cast<void>(SplitCommandWords(command)); })) << command;
  }
}

TEST(CommandWords, TheNumberStaysInItsWord) {
  const struct {
    const char* command;
    const char* number;
    Words words;
  } cases[] = {
      {"dial %n", "602 111", {"dial", "602 111"}},
      {"dial", "602", {"dial", "602"}},
      {"dial --to=%n now", "602", {"dial", "--to=602", "now"}},
      {"dial sip:%n@pbx %n", "602", {"dial", "sip:602@pbx", "602"}},
      {"dial 100%% %n", "602", {"dial", "100%", "602"}},
      {"dial %%n", "602", {"dial", "%n", "602"}},
      {"dial %n", "%n \"a\" 'b' $(c)", {"dial", "%n \"a\" 'b' $(c)"}},
      {"dial --to=%n", "-5", {"dial", "--to=-5"}},
      {"dial %x %", "6", {"dial", "%x", "%", "6"}},
  };
  for (const auto& entry : cases) {
    EXPECT_EQ(entry.words, WithNumber(SplitCommandWords(entry.command), entry.number)) << entry.command;
  }
}

TEST(CommandWords, TheNumberIsNeverAnOption) {
  for (const char* command : {"dial %n", "dial", "dial %n@pbx"}) {
    EXPECT_EQ(5, ErrorNumberOf([&] { static_cast<void>(WithNumber(SplitCommandWords(command), "--run=x")); }))
        << command;
  }
}

TEST(TelUriTest, KeepsWhatIsDialledAndEncodesTheRest) {
  const struct {
    const char* number;
    const char* uri;
  } cases[] = {
      {"602111222", "tel:602111222"},
      {"+420 602-111.222", "tel:+420602111222"},
      {"(0603) 222/333 [4]", "tel:06032223334"},
      {"*21#", "tel:*21%23"},
      {"", "tel:"},
      {"602;ext=5&x?y", "tel:602%3B%65%78%74%3D5%26%78%3F%79"},
      {"60\n2\"$`'\\", "tel:60%0A2%22%24%60%27%5C"},
      {"é", "tel:%C3%A9"},
  };
  for (const auto& entry : cases) EXPECT_EQ(entry.uri, TelUri(entry.number)) << entry.number;
}

}  // namespace
}  // namespace kestro
