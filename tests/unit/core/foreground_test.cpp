#include "core/foreground.h"

#include <gtest/gtest.h>

#include "support/log_capture.h"

namespace kestro::core {
namespace {

constexpr ports::WindowHandle kOurs = 7;
constexpr ports::WindowHandle kOther = 8;

/// A system that gives the foreground at the n-th call that can win it.
class StubbornWindows final : public ports::ForegroundWindows {
 public:
  int yields_at = 0;
  bool one_thread = false;
  bool iconic = false;
  std::string calls;

  bool SetForegroundWindow(ports::WindowHandle) override { return Ask("ask"); }
  ports::WindowHandle GetForegroundWindow() override { return has_it_ ? kOurs : kOther; }
  std::uint32_t GetWindowThread(ports::WindowHandle window) override {
    return window == kOurs || one_thread ? 1 : 2;
  }
  void AttachThreadInput(std::uint32_t from, std::uint32_t to, bool attach) override {
    calls += (attach ? "join" : "part") + std::to_string(from) + std::to_string(to) + " ";
  }
  bool IsIconic(ports::WindowHandle) override { return iconic; }
  void ShowWindowCommand(ports::WindowHandle, int command) override { Ask("show" + std::to_string(command)); }
  std::int32_t SetWindowPos(ports::WindowHandle, std::int32_t after, std::uint32_t flags) override {
    if (flags != 3) throw base::RuntimeError(base::kInvalidProcedureCall, "moved or resized");
    return Ask("top" + std::to_string(after)) ? 1 : 0;
  }

 private:
  bool Ask(const std::string& call) {
    calls += call + " ";
    if (--yields_at == 0) has_it_ = true;
    return has_it_;
  }
  bool has_it_ = false;
};

TEST(ForceForeTest, AsksMoreAndMoreInsistently) {
  const struct {
    int yields_at;  // 0 = never
    bool one_thread;
    bool iconic;
    std::string calls;
  } rows[] = {
      {1, false, false, "ask "},
      {2, false, true, "ask join21 ask part21 show9 "},
      {2, true, false, "ask ask show5 "},
      {3, true, true, "ask ask show9 "},
      {5, true, false, "ask ask show5 top-1 top-2 "},
      {0, false, false, "ask join21 ask part21 show5 top-1 top-2 "},
  };
  for (const auto& row : rows) {
    StubbornWindows windows;
    windows.yields_at = row.yields_at;
    windows.one_thread = row.one_thread;
    windows.iconic = row.iconic;
    test::LogCapture capture;
    LogModule log(capture);
    EXPECT_EQ(ForceFore(log, windows).ForceForegroundWindow(kOurs), row.yields_at > 0);
    EXPECT_EQ(windows.calls, row.calls);
    EXPECT_EQ(capture.lines.back(), "KESTROCTI.ForceFore.ForceForegroundWindow | Method finished.");
  }
}

}  // namespace
}  // namespace kestro::core
