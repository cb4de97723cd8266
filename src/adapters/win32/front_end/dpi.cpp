#include "adapters/win32/front_end/dpi.h"

#include "adapters/win32/front_end/handles.h"

namespace kestro::adapters::win32 {
namespace {

/// A function that only newer systems have; nullptr on others.
template <class Function>
Function UserFunction(const char* name) {
  const HMODULE user = GetModuleHandleW(L"user32.dll");
  // By way of a type that any function pointer may be cast to.
  return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(user, name)));
}

}  // namespace

int SystemDpi() {
  const WindowDc screen(nullptr);
  const int dpi = GetDeviceCaps(screen.get(), LOGPIXELSX);
  return dpi > 0 ? dpi : kPlainDpi;
}

int DpiOf(HWND window) {
  const auto get = UserFunction<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
  const int dpi = get == nullptr ? 0 : static_cast<int>(get(window));
  return dpi > 0 ? dpi : SystemDpi();
}

LOGFONTW MessageFont(int dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  const auto get = UserFunction<BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT)>("SystemParametersInfoForDpi");
  if (get != nullptr &&
      get(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi)) != 0) {
    return metrics.lfMessageFont;
  }
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, dpi, SystemDpi());
  return metrics.lfMessageFont;
}

RECT FrameAround(RECT inside, DWORD style, DWORD extended_style, bool has_menu, int dpi) {
  const auto adjust =
      UserFunction<BOOL(WINAPI*)(LPRECT, DWORD, BOOL, DWORD, UINT)>("AdjustWindowRectExForDpi");
  const BOOL menu = has_menu ? TRUE : FALSE;
  if (adjust == nullptr || adjust(&inside, style, menu, extended_style, static_cast<UINT>(dpi)) == 0) {
    AdjustWindowRectEx(&inside, style, menu, extended_style);
  }
  return inside;
}

int SystemMetric(int index, int dpi) {
  const auto get = UserFunction<int(WINAPI*)(int, UINT)>("GetSystemMetricsForDpi");
  if (get != nullptr) return get(index, static_cast<UINT>(dpi));
  return MulDiv(GetSystemMetrics(index), dpi, SystemDpi());
}

RECT WorkArea(HWND window) {
  const HMONITOR monitor = MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY);
  MONITORINFO info{};
  info.cbSize = sizeof info;
  if (GetMonitorInfoW(monitor, &info) == 0) {
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &info.rcWork, 0);
  }
  return info.rcWork;
}

}  // namespace kestro::adapters::win32
