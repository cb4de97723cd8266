#include <algorithm>

#include "adapters/win32/front_end/bindings.h"
#include "adapters/win32/front_end/field_size.h"
#include "adapters/win32/front_end/native_text.h"
#include "adapters/win32/wide_text.h"

namespace kestro::adapters::win32 {
namespace {

constexpr int kFewestCharacters = 12;
constexpr int kPreferredCharacters = 20;
constexpr int kFewestLines = 3;
constexpr int kPreferredLines = 5;
constexpr DWORD kOneLine = ES_AUTOHSCROLL;
constexpr DWORD kManyLines = ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL;

class TextBoxBinding final : public ControlBinding {
 public:
  TextBoxBinding(forms::TextBox& box, HWND parent, BindingOwner& owner)
      : ControlBinding(box, owner), box_(box), many_(box.lines() == forms::TextBox::Lines::kMany) {
    Create(parent, L"EDIT", WS_TABSTOP | (many_ ? kManyLines : kOneLine), WS_EX_CLIENTEDGE);
    // The limit is for typing; the control's own would cut what the program sets.
    Send(EM_SETLIMITTEXT, 0x7FFFFFFE);
  }

  [[nodiscard]] SizeHint Measure() const override {
    const Font& font = fonts().normal;
    const int padding = 2 * FieldPadding(fonts());
    const int least = font.Width(kFewestCharacters) + padding;
    const int width = font.Width(kPreferredCharacters) + padding;
    if (!many_) return {least, width, FieldHeight(fonts()), FieldHeight(fonts()), true, false};
    return {least, width, font.line() * kFewestLines + padding, font.line() * kPreferredLines + padding,
            true,  true};
  }

  void OnCommand(int /*id*/, int notification) override {
    if (notification == EN_CHANGE && !syncing()) Edited();
  }

 private:
  void Edited() {
    const std::wstring typed = TextOf(window());
    LimitedText limited = LimitTyping(ForControl(box_.text()), typed, box_.max_length());
    const bool cut = limited.text != typed;
    const std::string text = cut ? ToUtf8(limited.text) : text_.Read(window());
    owner().UserActed(box_, [&] { box_.SetText(text); });
    if (cut) Send(EM_SETSEL, limited.cursor, static_cast<LPARAM>(limited.cursor));
  }
  void SyncContent() override {
    if (text_.Read(window()) != box_.text()) text_.Put(window(), box_.text());
    const bool read_only = (GetWindowLongPtrW(window(), GWL_STYLE) & ES_READONLY) != 0;
    if (read_only != box_.read_only()) Send(EM_SETREADONLY, box_.read_only() ? TRUE : FALSE);
  }
  void ReadContent(forms::ControlReading& reading) const override { reading.texts = {text_.Read(window())}; }

  forms::TextBox& box_;
  bool many_;
  ShownText text_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::TextBox& box, HWND parent, BindingOwner& owner) {
  return std::make_unique<TextBoxBinding>(box, parent, owner);
}

}  // namespace kestro::adapters::win32
