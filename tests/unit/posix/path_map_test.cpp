#include "adapters/posix/path_map.h"

#include <gtest/gtest.h>

#include "unit/posix/posix_support.h"

namespace kestro {
namespace {

using adapters::PathMap;
using test::ErrorNumberOf;

TEST(PathMap, TranslatesBothWays) {
  const PathMap map({{"C:\\", "/mnt/c"}, {"C:\\Data", "/tmp/x/data/"}, {"D:", "/"}});
  const std::pair<const char*, const char*> rows[] = {
      {"\\", "/"},
      {R"(\home\u\CTIDB.mdb)", "/home/u/CTIDB.mdb"},
      {"picture.jpg", "picture.jpg"},
      {"Icons\\idle.ico", "Icons/idle.ico"},
      {"", ""},
      {"C:", "/mnt/c"},
      {"C:\\Program\\Icons", "/mnt/c/Program/Icons"},
      {"C:\\Data", "/tmp/x/data"},
      {"C:\\Data\\CTIDB.mdb", "/tmp/x/data/CTIDB.mdb"},
      {"C:\\Database", "/mnt/c/Database"},
      {"C:\\data\\a", "/mnt/c/data/a"},
      {"C:\\Data\\P\xC5\x99\xC3\xADklad", "/tmp/x/data/P\xC5\x99\xC3\xADklad"}};
  for (const auto& [system, native] : rows) EXPECT_EQ(native, map.ToNative(system)) << system;
  for (const auto& [system, native] : rows) {
    if (*native == '/' && *system == '\\') continue;  // the native root is D: here
    EXPECT_EQ(system, map.ToSystem(native)) << native;
  }
  EXPECT_EQ("D:\\etc", map.ToSystem("/etc"));
  EXPECT_EQ("\\etc", PathMap().ToSystem("/etc"));
  EXPECT_EQ("/mnt/c/a/b", map.ToNative("C:/a\\b")) << "a native separator counts as one";
}

TEST(PathMap, RefusesWhatHasNoCounterpart) {
  const PathMap map({adapters::PathMount{"C:\\Data", "/tmp/x/data"}});
  const std::string zero("C:\\Data\\a\0b", 11);
  for (const std::string_view path :
       {std::string_view(R"(C:\Data\..)"), std::string_view(R"(C:\Data\a\..\..\b)"),
        std::string_view(R"(C:\Data\../b)"), std::string_view(R"(C:\Data\..\Data\a)"),
        std::string_view("D:\\x"), std::string_view("C:\\Database"), std::string_view(zero)}) {
    EXPECT_EQ(76, ErrorNumberOf([&] { static_cast<void>(map.ToNative(path)); })) << path;
  }
  EXPECT_EQ("/tmp/x/data/a/../b", map.ToNative("C:\\Data\\a\\..\\b"));
  EXPECT_EQ("/a/../../b", map.ToNative("\\a\\..\\..\\b"));
  EXPECT_EQ(76, ErrorNumberOf([&] { static_cast<void>(map.ToSystem("/home/a\\b")); }));
}

}  // namespace
}  // namespace kestro
