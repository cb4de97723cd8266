#include <algorithm>

#include "adapters/win32/front_end/bindings.h"
#include "adapters/win32/front_end/native_text.h"
#include "adapters/win32/front_end/panel.h"

namespace kestro::adapters::win32 {
namespace {

constexpr int kWidestTitle = 60;  // characters that a title asks room for

/// A titled box around controls; without a title nothing is drawn and no room is
/// taken. The native box stands inside the panel that holds the controls.
class FrameBinding final : public ControlBinding {
 public:
  FrameBinding(forms::Frame& frame, HWND parent, BindingOwner& owner)
      : ControlBinding(frame, owner), frame_(frame), panel_(parent, owner.panel_listener()) {
    Create(panel_.window(), L"BUTTON", BS_GROUPBOX | WS_VISIBLE, WS_EX_TRANSPARENT);
    // NOLINTNEXTLINE(cppcoreguidelines-prefer-member-initializer): Create has just made it
    box_ = window();
    Adopt(panel_.window());
  }

  [[nodiscard]] HWND ContainerWindow(const forms::Container& container) const override {
    return &container == static_cast<const forms::Container*>(&frame_) ? panel_.window() : nullptr;
  }

  void UseFonts() override {
    panel_.TakeColorAround();
    SendMessageW(box_, WM_SETFONT, reinterpret_cast<WPARAM>(fonts().normal.get()), TRUE);
  }

  [[nodiscard]] SizeHint Measure() const override {
    SizeHint hint = Layout().Measure();
    const RECT air = Air();
    const std::wstring title = TextOf(box_);
    const Font& font = fonts().normal;
    const SIZE text = font.Measure(title, font.Width(kWidestTitle), Font::Mnemonic::kMarked);
    const int for_title = title.empty() ? 0 : static_cast<int>(text.cx) + font.Width(3);
    const int wide = air.left + air.right;
    const int high = air.top + air.bottom;
    hint.least_width = std::max(hint.least_width + wide, for_title);
    hint.width = std::max(hint.width + wide, for_title);
    hint.least_height += high;
    hint.height += high;
    return hint;
  }
  [[nodiscard]] int HeightFor(int width) const override {
    const RECT air = Air();
    return Layout().HeightFor(width - air.left - air.right) + air.top + air.bottom;
  }
  void Place(const RECT& place) override {
    ControlBinding::Place(place);
    const RECT air = Air();
    const LONG width = place.right - place.left;
    const LONG height = place.bottom - place.top;
    SetWindowPos(box_, HWND_BOTTOM, 0, 0, width, height, SWP_NOACTIVATE);
    Layout().Place({air.left, air.top, width - air.right, height - air.bottom});
  }

 private:
  [[nodiscard]] ContainerLayout Layout() const { return owner().LayoutOf(frame_, Margins::kNone); }
  /// Between the edge and the controls.
  [[nodiscard]] RECT Air() const {
    if (GetWindowTextLengthW(box_) == 0) return {};
    const int line = fonts().normal.line();
    return {line * 2 / 3, line * 5 / 4, line * 2 / 3, line * 2 / 3};
  }
  void SyncContent() override {
    text_.Put(box_, frame_.caption());
    ShowWindow(box_, frame_.caption().empty() ? SW_HIDE : SW_SHOWNA);
    EnableWindow(box_, frame_.enabled() ? TRUE : FALSE);
  }
  void ReadContent(forms::ControlReading& reading) const override { reading.texts = {text_.Read(box_)}; }

  forms::Frame& frame_;
  Panel panel_;
  HWND box_ = nullptr;
  ShownText text_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::Frame& frame, HWND parent, BindingOwner& owner) {
  return std::make_unique<FrameBinding>(frame, parent, owner);
}

}  // namespace kestro::adapters::win32
