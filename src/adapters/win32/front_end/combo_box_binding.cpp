#include <algorithm>
#include <utility>

#include "adapters/win32/front_end/bindings.h"
#include "adapters/win32/front_end/field_size.h"
#include "adapters/win32/front_end/native_text.h"
#include "adapters/win32/wide_text.h"

namespace kestro::adapters::win32 {
namespace {

constexpr int kFewestCharacters = 14;
constexpr int kMostCharacters = 32;
constexpr int kWidestList = 70;  // characters
constexpr int kMostItemsAtOnce = 16;
constexpr UINT_PTR kWheelSubclass = 1;

/// A drop-down list that the mouse wheel does not change in passing: choosing an item may transfer a call.
LRESULT CALLBACK PassWheelOn(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR /*id*/,
                             DWORD_PTR /*data*/) noexcept {
  if (message == WM_MOUSEWHEEL && SendMessageW(window, CB_GETDROPPEDSTATE, 0, 0) == FALSE) {
    return SendMessageW(GetParent(window), message, wparam, lparam);
  }
  return DefSubclassProc(window, message, wparam, lparam);
}

class ComboBoxBinding final : public ControlBinding {
 public:
  ComboBoxBinding(forms::ComboBox& combo, HWND parent, BindingOwner& owner)
      : ControlBinding(combo, owner), combo_(combo) {
    const bool editable = combo.style() == forms::ComboBox::Style::kEditable;
    Create(parent, L"COMBOBOX",
           WS_TABSTOP | WS_VSCROLL | (editable ? CBS_DROPDOWN | CBS_AUTOHSCROLL : CBS_DROPDOWNLIST));
    SetWindowSubclass(window(), &PassWheelOn, kWheelSubclass, 0);
    Send(CB_LIMITTEXT, 0x7FFFFFFE);
  }

  [[nodiscard]] SizeHint Measure() const override {
    const Font& font = fonts().normal;
    const int around = SystemMetric(SM_CXVSCROLL, fonts().dpi) + 2 * FieldPadding(fonts());
    const int width = font.Width(std::clamp(Longest(), kFewestCharacters, kMostCharacters)) + around;
    const int height = FieldHeight(fonts());
    return {font.Width(kFewestCharacters) + around, width, height, height, true, false};
  }

  /// The height that the system asks for is that with the open list.
  void Place(const RECT& place) override {
    RECT with_list = place;
    const int items = std::clamp(static_cast<int>(combo_.items().size()), 1, kMostItemsAtOnce);
    with_list.bottom += items * static_cast<int>(Send(CB_GETITEMHEIGHT)) + fonts().Scaled(4);
    ControlBinding::Place(with_list);
    FitHeight(static_cast<int>(place.bottom - place.top));
    const int list = fonts().normal.Width(std::min(Longest() + 4, kWidestList));
    Send(CB_SETDROPPEDWIDTH, static_cast<WPARAM>(std::max<int>(list, place.right - place.left)));
    if (editable()) Send(CB_SETEDITSEL, 0, MAKELPARAM(0, 0));  // resizing selects the text
  }

  void OnCommand(int /*id*/, int notification) override {
    switch (notification) {
      case CBN_EDITCHANGE:
        if (!syncing()) Edited();
        break;
      case CBN_SELCHANGE:  // in an open list the choice is not made yet
        if (Send(CB_GETDROPPEDSTATE) == FALSE) TakeChoice();
        break;
      case CBN_SELENDOK:
        chosen_ = true;
        break;
      case CBN_SELENDCANCEL:
        chosen_ = false;
        break;
      case CBN_CLOSEUP:
        if (std::exchange(chosen_, false)) {
          TakeChoice();
        } else {
          Sync();
        }
        break;
      default:
        break;
    }
  }

 private:
  [[nodiscard]] bool editable() const { return combo_.style() == forms::ComboBox::Style::kEditable; }
  [[nodiscard]] int Longest() const {
    std::size_t longest = 0;
    for (const std::wstring& item : items_) longest = std::max(longest, item.size());
    return static_cast<int>(std::min<std::size_t>(longest, kWidestList));
  }
  [[nodiscard]] int Index() const { return static_cast<int>(Send(CB_GETCURSEL)); }

  /// The system takes the height from that of an item, and adds its borders to it.
  void FitHeight(int wanted) {
    RECT closed{};
    GetWindowRect(window(), &closed);
    const int missing = wanted - static_cast<int>(closed.bottom - closed.top);
    if (missing == 0) return;
    Send(CB_SETITEMHEIGHT, static_cast<WPARAM>(-1),
         Send(CB_GETITEMHEIGHT, static_cast<WPARAM>(-1)) + missing);
  }
  void TakeChoice() {
    const int index = Index();
    if (syncing() || index < 0 || index >= static_cast<int>(combo_.items().size())) return;
    chosen_ = false;
    owner().UserActed(combo_, [this, index] { combo_.SetListIndex(index); });
  }
  void Edited() {
    const std::wstring typed = TextOf(window());
    const LimitedText limited = LimitTyping(ToWide(combo_.text()), typed, combo_.max_length());
    DWORD cursor = 0;
    Send(CB_GETEDITSEL, 0, reinterpret_cast<LPARAM>(&cursor));
    if (limited.text != typed) cursor = static_cast<DWORD>(limited.cursor);
    owner().UserActed(combo_, [&] { combo_.SetText(ToUtf8(limited.text)); });
    Send(CB_SETEDITSEL, 0, MAKELPARAM(cursor, cursor));
  }
  void SyncContent() override {
    SyncItems();
    // Either of the two writes the other, too.
    if (Index() != combo_.list_index()) Send(CB_SETCURSEL, static_cast<WPARAM>(combo_.list_index()));
    const std::wstring text = ToWide(combo_.text());
    if (editable() && TextOf(window()) != text) SetWindowTextW(window(), text.c_str());
  }
  void SyncItems() {
    std::vector<std::wstring> items;
    for (const std::string& item : combo_.items()) items.push_back(ToWide(item));
    const bool only_added =
        items.size() >= items_.size() && std::equal(items_.begin(), items_.end(), items.begin());
    if (!only_added) {
      Send(CB_RESETCONTENT);
      items_.clear();
    }
    for (std::size_t i = items_.size(); i < items.size(); ++i) {
      Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(items[i].c_str()));
    }
    items_ = std::move(items);
  }
  void ReadContent(forms::ControlReading& reading) const override {
    const auto count = static_cast<WPARAM>(Send(CB_GETCOUNT));
    for (WPARAM i = 0; i < count; ++i) {
      std::wstring item(static_cast<std::size_t>(std::max<LRESULT>(Send(CB_GETLBTEXTLEN, i), 0)), L'\0');
      Send(CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(item.data()));
      reading.texts.push_back(ToUtf8(item));
    }
    reading.index = Index();
    if (editable()) reading.typed = ToUtf8(TextOf(window()));
  }

  forms::ComboBox& combo_;
  std::vector<std::wstring> items_;  // as the native control has them
  bool chosen_ = false;              // in the open list
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::ComboBox& combo, HWND parent, BindingOwner& owner) {
  return std::make_unique<ComboBoxBinding>(combo, parent, owner);
}

}  // namespace kestro::adapters::win32
