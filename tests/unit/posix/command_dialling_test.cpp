#include "adapters/posix/command_dialling.h"

#include <gtest/gtest.h>

#include "adapters/posix/command_words.h"
#include "adapters/posix/desktop_open.h"
#include "ports/memory_settings_store.h"
#include "unit/posix/posix_support.h"

namespace kestro {
namespace {

using test::ErrorNumberOf;
using test::WriteArgumentScript;
using test::WriteScript;

/// A world whose only programs are those that a test writes into the folder.
class WithPrograms : public testing::Test {
 protected:
  /// What the argument script was given, and forgets it.
  std::string TakeArguments() {
    const auto file = folder_.File("arguments");
    if (!std::filesystem::exists(file)) return "nothing ran";
    std::string arguments = test_support::ReadFile(file);
    std::filesystem::remove(file);
    return arguments;
  }

  test_support::TemporaryFolder folder_;
  test::ScopedEnvironment path_{"PATH", (folder_.path().string() + ":/usr/bin:/bin").c_str()};
  test::PollingWatcher watcher_;
  adapters::DetachedProcesses processes_{watcher_};
};

class CommandDialling : public WithPrograms {
 protected:
  void SetCommand(const std::string& command) {
    settings_.CreateKey(adapters::kDiallingKey);
    settings_.SetValue(adapters::kDiallingKey, adapters::kDiallingCommand, command);
  }
  std::int32_t Dial(std::string_view number) {
    return ErrorNumberOf([&] { dialling_.CreateDialCom()->Dial(number); });
  }

  ports::MemorySettingsStore settings_;
  adapters::CommandDialling dialling_{settings_, processes_};
};

TEST_F(CommandDialling, TheNumberIsOneArgumentWhateverItHolds) {
  WriteArgumentScript(folder_, "dialler");
  SetCommand("dialler --line 'EXT 101' %n");
  EXPECT_TRUE(dialling_.Configured());
  for (const char* number : {"602 111 222", "$(touch x) `id` ; rm -rf ~ | & > y", "'\"\\ *", "%n %s", "é"}) {
    EXPECT_EQ(0, Dial(number)) << number;
    EXPECT_EQ("<--line>\n<EXT 101>\n<" + std::string(number) + ">\n", TakeArguments());
  }
}

TEST_F(CommandDialling, WithoutACommandTheDesktopsTelephoneProgramIsAsked) {
  WriteArgumentScript(folder_, "xdg-open");
  EXPECT_FALSE(dialling_.Configured());
  // What can be dialled is kept, the rest is encoded.
  const std::pair<const char*, const char*> cases[] = {
      {"602111222", "tel:602111222"},
      {"+420 602-111.222", "tel:+420602111222"},
      {"(0603) 222/333 [4]", "tel:06032223334"},
      {"602;ext=5&x?y", "tel:602%3B%65%78%74%3D5%26%78%3F%79"},
      {"2\"$`'\\", "tel:2%22%24%60%27%5C"},
      {"é", "tel:%C3%A9"},
  };
  for (const auto& [number, uri] : cases) {
    EXPECT_EQ(0, Dial(number)) << number;
    EXPECT_EQ("<" + std::string(uri) + ">\n", TakeArguments());
  }
  SetCommand("   ");
  EXPECT_FALSE(dialling_.Configured());
  SetCommand(" tel: ");
  EXPECT_TRUE(dialling_.Configured());
  EXPECT_TRUE(dialling_.HandsToDesktop());
  EXPECT_EQ(0, Dial("*21#"));
  EXPECT_EQ("<tel:*21%23>\n", TakeArguments());
}

TEST_F(CommandDialling, FailuresAreRaised) {
  WriteArgumentScript(folder_, "dialler");
  WriteScript(folder_, "busy", "exit 3");
  const std::tuple<const char*, const char*, std::int32_t> cases[] = {{"kestro-no-such-dialler", "602", 53},
                                                                      {"busy", "602", 440},
                                                                      {"dialler \"x", "602", 5},
                                                                      {"dialler", "", 5},
                                                                      {"dialler", "  ", 5},
                                                                      {"dialler", "--help", 5},
                                                                      {"dialler %n@pbx", "--help", 5},
                                                                      {"\"\"", "602", 53},
                                                                      {"%n", "602", 53}};
  for (const auto& [command, number, error] : cases) {
    SetCommand(command);
    EXPECT_EQ(error, Dial(number)) << command << " " << number;
    EXPECT_EQ("nothing ran", TakeArguments());
  }
}

class DesktopOpen : public WithPrograms {
 protected:
  DesktopOpen() { WriteArgumentScript(folder_, "xdg-open"); }

  adapters::DesktopOpen opener_{[this](std::string_view path) {
                                  if (!path.starts_with("C:\\")) {
                                    throw base::RuntimeError(base::kPathNotFound, "Path not found");
                                  }
                                  return folder_.File(path.substr(3)).string();
                                },
                                processes_};
};

TEST_F(DesktopOpen, AddressesAndExistingFilesAreOpened) {
  test_support::WriteFile(folder_.File("a page #1.html"), "x");
  const std::pair<std::string, std::string> cases[] = {
      {"C:\\a page #1.html", "file://" + folder_.path().string() + "/a%20page%20%231.html"},
      {"https://kestro.example/a?b=1&c=%20#d", "https://kestro.example/a?b=1&c=%20#d"},
      {"HTTP://kestro.example", "HTTP://kestro.example"},
      {"mailto:jan@novak.example", "mailto:jan@novak.example"},
      {"https://x/\" `id` <é>", "https://x/%22%20%60id%60%20%3C%C3%A9%3E"},
  };
  for (const auto& [target, opened] : cases) {
    EXPECT_TRUE(opener_.Open(target)) << target;
    EXPECT_EQ("<" + std::string(opened) + ">\n", TakeArguments());
  }
}

TEST_F(DesktopOpen, EverythingElseIsRefused) {
  for (const char* target :
       {"", "C:\\missing.html", "C:\\", "/etc/passwd", "file:///etc/passwd", "javascript:alert(1)", "tel:602",
        "smb://server/share", "https:", "https://", "mailto:", "http://x\ny", "--help", "vbscript:x"}) {
    EXPECT_FALSE(opener_.Open(target)) << target;
    EXPECT_EQ("nothing ran", TakeArguments()) << target;
  }
  WriteScript(folder_, "xdg-open", "exit 3");
  EXPECT_FALSE(opener_.Open("https://kestro.example/"));
}

using adapters::SplitCommandWords;
using adapters::WithNumber;
using Words = std::vector<std::string>;

TEST(CommandWords, AreSplitWithoutAShell) {
  const std::pair<const char*, Words> cases[] = {
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
  for (const auto& [command, words] : cases) EXPECT_EQ(words, SplitCommandWords(command)) << command;
}

TEST(CommandWords, WhatCannotBeReadIsRefused) {
  for (const char* command : {"dial \"x", "dial 'x", R"(dial "x\")", "dial\n%n", "dial\tx", "dial \x7f"}) {
    EXPECT_EQ(5, ErrorNumberOf([&] { return SplitCommandWords(command); })) << command;
  }
}

TEST(CommandWords, TheNumberStaysInItsWord) {
  const std::tuple<const char*, const char*, Words> cases[] = {
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
  for (const auto& [command, number, words] : cases) {
    EXPECT_EQ(words, WithNumber(SplitCommandWords(command), number)) << command;
  }
}

}  // namespace
}  // namespace kestro
