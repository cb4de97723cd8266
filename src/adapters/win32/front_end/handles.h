#pragma once

#include <windows.h>

#include <commctrl.h>
#include <memory>
#include <type_traits>

namespace kestro::adapters::win32 {

struct WindowDestroyer {
  void operator()(HWND window) const { DestroyWindow(window); }
};
struct MenuDestroyer {
  void operator()(HMENU menu) const { DestroyMenu(menu); }
};
struct GdiDeleter {
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
struct ImageListDestroyer {
  void operator()(HIMAGELIST list) const { ImageList_Destroy(list); }
};
struct ComReleaser {
  void operator()(IUnknown* object) const { object->Release(); }
};

template <class Handle, class Deleter>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, Deleter>;

using OwnedWindow = Owned<HWND, WindowDestroyer>;  // its children go with it
using OwnedMenu = Owned<HMENU, MenuDestroyer>;     // the menus below it go with it
using OwnedFont = Owned<HFONT, GdiDeleter>;
using OwnedBrush = Owned<HBRUSH, GdiDeleter>;
using OwnedBitmap = Owned<HBITMAP, GdiDeleter>;
using OwnedImageList = Owned<HIMAGELIST, ImageListDestroyer>;
template <class Interface>
using Com = std::unique_ptr<Interface, ComReleaser>;

/// The device context of a window (nullptr = of the screen), or of its whole area with its frame.
class WindowDc {
 public:
  enum class Area { kClient, kWhole };
  explicit WindowDc(HWND window, Area area = Area::kClient)
      : window_(window), dc_(area == Area::kWhole ? GetWindowDC(window) : GetDC(window)) {}
  ~WindowDc() { ReleaseDC(window_, dc_); }
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  [[nodiscard]] HDC get() const { return dc_; }

 private:
  HWND window_;
  HDC dc_;
};

/// A device context in memory.
class MemoryDc {
 public:
  MemoryDc() : dc_(CreateCompatibleDC(nullptr)) {}
  ~MemoryDc() { DeleteDC(dc_); }
  MemoryDc(const MemoryDc&) = delete;
  MemoryDc& operator=(const MemoryDc&) = delete;
  [[nodiscard]] HDC get() const { return dc_; }

 private:
  HDC dc_;
};

/// Selects an object into a device context for as long as it lives.
class Selected {
 public:
  Selected(HDC dc, HGDIOBJ object) : dc_(dc), before_(SelectObject(dc, object)) {}
  ~Selected() { SelectObject(dc_, before_); }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC dc_;
  HGDIOBJ before_;
};

}  // namespace kestro::adapters::win32
