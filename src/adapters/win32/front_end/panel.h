#pragma once

#include "adapters/win32/front_end/handles.h"

namespace kestro::adapters::win32 {

/// What happens to the controls inside panels.
class PanelListener {
 public:
  virtual ~PanelListener() = default;
  virtual void OnCommand(HWND control, int id, int notification) = 0;
  virtual LRESULT OnNotify(NMHDR& header) = 0;
  virtual void OnDraw(const DRAWITEMSTRUCT& item) = 0;
  /// A press or a wheel that no control used.
  virtual void OnWheel(int delta) = 0;
};

/// A plain child window that holds controls and hands on what they report. The
/// window belongs to its parent, which must be destroyed before this object;
/// the listener must outlive it.
class Panel {
 public:
  Panel(HWND parent, PanelListener& listener);
  ~Panel() = default;
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;

  [[nodiscard]] HWND window() const { return window_; }
  void SetColor(COLORREF color);
  /// Looks like the panel around it, as it does from the start.
  void TakeColorAround();
  [[nodiscard]] COLORREF color() const { return color_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept;
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);
  [[nodiscard]] LRESULT ColorControl(HDC dc, HWND control) const;

  PanelListener& listener_;
  HWND window_ = nullptr;
  COLORREF color_ = 0;
  OwnedBrush brush_;
};

}  // namespace kestro::adapters::win32
