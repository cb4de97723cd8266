#include <algorithm>

#include "adapters/win32/front_end/bindings.h"
#include "adapters/win32/front_end/native_text.h"

namespace kestro::adapters::win32 {
namespace {

constexpr int kLongestCaptionLine = 28;  // characters
constexpr int kMostLines = 5;
constexpr int kPreferredCharacters = 32;  // a longer value is wrapped, if the window is not wide anyway
constexpr int kFewestCharacters = 12;

/// A caption beside or above a field. A long caption is wrapped into lines, so
/// that it never decides the width of the window.
class CaptionBinding final : public ControlBinding {
 public:
  CaptionBinding(forms::Label& label, HWND parent, BindingOwner& owner)
      : ControlBinding(label, owner), label_(label) {
    Create(parent, L"STATIC", SS_EDITCONTROL);
  }

  [[nodiscard]] SizeHint Measure() const override {
    const Font& font = fonts().normal;
    const SIZE size =
        font.Measure(TextOf(window()), font.Width(kLongestCaptionLine), Font::Mnemonic::kMarked);
    const int width = static_cast<int>(size.cx) + 1;
    return {width, width, static_cast<int>(size.cy), static_cast<int>(size.cy), false, false};
  }

 private:
  void SyncContent() override { text_.Put(window(), label_.caption()); }
  void ReadContent(forms::ControlReading& reading) const override { reading.texts = {text_.Read(window())}; }

  forms::Label& label_;
  ShownText text_;
};

/// A text that shows data: plain, selectable, wrapped inside words where it must
/// be, as high as its text up to a few lines (then it scrolls). It stands on the
/// window like a label, not in a box.
class ValueBinding final : public ControlBinding {
 public:
  ValueBinding(forms::Label& label, HWND parent, BindingOwner& owner)
      : ControlBinding(label, owner), label_(label) {
    Create(parent, L"EDIT", ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL);
    Send(EM_SETLIMITTEXT, 0x7FFFFFFE);
    UseFonts();
  }

  void UseFonts() override {
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(font().get()), TRUE);
    Send(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
  }

  [[nodiscard]] SizeHint Measure() const override {
    const int widest = font().Width(kPreferredCharacters);
    const int fewest = font().Width(kFewestCharacters);
    const SIZE size = font().Measure(TextOf(window()), widest, Font::Mnemonic::kNone);
    const int width = std::max<int>(size.cx + kSlack, fewest);
    return {fewest, width, font().line(), HeightFor(width), true, false};
  }
  [[nodiscard]] int HeightFor(int width) const override {
    const SIZE size = font().Measure(TextOf(window()), std::max(width - kSlack, 1), Font::Mnemonic::kNone);
    return std::clamp<int>(size.cy, font().line(), kMostLines * font().line());
  }

  void Place(const RECT& place) override {
    const SIZE size =
        font().Measure(TextOf(window()), place.right - place.left - kSlack, Font::Mnemonic::kNone);
    ShowScrollBar(window(), SB_VERT, size.cy > kMostLines * font().line() ? TRUE : FALSE);
    ControlBinding::Place(place);
  }

 private:
  static constexpr int kSlack = 2;  // pixels that the control keeps for its caret

  [[nodiscard]] const Font& font() const {
    return label_.role() == forms::Label::Role::kHeading ? fonts().heading : fonts().normal;
  }
  void SyncContent() override { text_.Put(window(), label_.caption()); }
  void ReadContent(forms::ControlReading& reading) const override { reading.texts = {text_.Read(window())}; }

  forms::Label& label_;
  ShownText text_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::Label& label, HWND parent, BindingOwner& owner) {
  if (label.role() == forms::Label::Role::kCaption) {
    return std::make_unique<CaptionBinding>(label, parent, owner);
  }
  return std::make_unique<ValueBinding>(label, parent, owner);
}

}  // namespace kestro::adapters::win32
