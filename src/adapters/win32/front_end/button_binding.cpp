#include <algorithm>

#include "adapters/win32/front_end/bindings.h"
#include "adapters/win32/front_end/field_size.h"
#include "adapters/win32/front_end/native_text.h"

namespace kestro::adapters::win32 {
namespace {

constexpr int kLongestButtonLine = 30;  // characters
constexpr int kLongestCheckBoxLine = 64;
constexpr int kSmallestButton = 14;
constexpr int kCheckMark = 13;  // pixels of a plain screen
constexpr int kBehindMark = 6;

class ButtonBinding final : public ControlBinding {
 public:
  ButtonBinding(forms::Button& button, HWND parent, BindingOwner& owner)
      : ControlBinding(button, owner), button_(button) {
    const DWORD look = button.role() == forms::Button::Role::kDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    Create(parent, L"BUTTON", WS_TABSTOP | BS_MULTILINE | BS_NOTIFY | look);
  }

  [[nodiscard]] SizeHint Measure() const override {
    const Font& font = fonts().normal;
    const SIZE size = font.Measure(TextOf(window()), font.Width(kLongestButtonLine), Font::Mnemonic::kMarked);
    const int width = std::max<int>(size.cx + font.Width(4), font.Width(kSmallestButton));
    const int height = static_cast<int>(size.cy) + 2 * FieldPadding(fonts());
    return {width, width, height, height, false, false};
  }

  void OnCommand(int /*id*/, int notification) override {
    if (notification == BN_CLICKED) owner().UserActed(button_, [this] { button_.Click(); });
  }

 private:
  void SyncContent() override { text_.Put(window(), button_.caption()); }
  void ReadContent(forms::ControlReading& reading) const override { reading.texts = {text_.Read(window())}; }

  forms::Button& button_;
  ShownText text_;
};

class CheckBoxBinding final : public ControlBinding {
 public:
  CheckBoxBinding(forms::CheckBox& box, HWND parent, BindingOwner& owner)
      : ControlBinding(box, owner), box_(box) {
    Create(parent, L"BUTTON", WS_TABSTOP | BS_AUTOCHECKBOX | BS_MULTILINE | BS_NOTIFY);
  }

  [[nodiscard]] SizeHint Measure() const override {
    const Font& font = fonts().normal;
    const SIZE size =
        font.Measure(TextOf(window()), font.Width(kLongestCheckBoxLine), Font::Mnemonic::kMarked);
    const int width = static_cast<int>(size.cx) + fonts().Scaled(kCheckMark + 2 * kBehindMark);
    const int height = std::max<int>(size.cy, fonts().Scaled(kCheckMark)) + fonts().Scaled(2);
    return {width, width, height, height, false, false};
  }

  void OnCommand(int /*id*/, int notification) override {
    if (notification != BN_CLICKED) return;
    const bool checked = Send(BM_GETCHECK) == BST_CHECKED;
    owner().UserActed(box_, [this, checked] { box_.SetValue(checked ? 1 : 0); });
  }

 private:
  void SyncContent() override {
    text_.Put(window(), box_.caption());
    Send(BM_SETCHECK, box_.value() != 0 ? BST_CHECKED : BST_UNCHECKED);
  }
  void ReadContent(forms::ControlReading& reading) const override {
    reading.texts = {text_.Read(window())};
    reading.checked = Send(BM_GETCHECK) == BST_CHECKED;
  }

  forms::CheckBox& box_;
  ShownText text_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::Button& button, HWND parent, BindingOwner& owner) {
  return std::make_unique<ButtonBinding>(button, parent, owner);
}

std::unique_ptr<ControlBinding> Bind(forms::CheckBox& box, HWND parent, BindingOwner& owner) {
  return std::make_unique<CheckBoxBinding>(box, parent, owner);
}

}  // namespace kestro::adapters::win32
