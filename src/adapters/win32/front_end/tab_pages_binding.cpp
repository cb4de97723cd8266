#include <windows.h>

#include <algorithm>
#include <deque>
#include <uxtheme.h>
#include <vsstyle.h>

#include "adapters/win32/front_end/bindings.h"
#include "adapters/win32/front_end/native_text.h"
#include "adapters/win32/front_end/panel.h"
#include "adapters/win32/wide_text.h"

namespace kestro::adapters::win32 {
namespace {

constexpr int kWidestTabs = 100;  // characters
constexpr int kLongestCaption = 260;

/// What the theme fills a page with; nothing where there is none.
std::optional<COLORREF> ThemeColor(HWND tabs) {
  const HTHEME theme = OpenThemeData(tabs, L"TAB");
  if (theme == nullptr) return std::nullopt;
  constexpr int kSample = 16;
  const MemoryDc dc;
  const OwnedBitmap bitmap(CreateBitmap(kSample, kSample, 1, 32, nullptr));
  const Selected selected(dc.get(), bitmap.get());
  const RECT area{0, 0, kSample, kSample};
  FillRect(dc.get(), &area, GetSysColorBrush(COLOR_BTNFACE));
  DrawThemeBackground(theme, dc.get(), TABP_BODY, 0, &area, nullptr);
  const COLORREF color = GetPixel(dc.get(), kSample / 2, kSample / 2);
  CloseThemeData(theme);
  return color;
}

class TabPagesBinding final : public ControlBinding {
 public:
  TabPagesBinding(forms::TabPages& pages, HWND parent, BindingOwner& owner)
      : ControlBinding(pages, owner), pages_(pages) {
    Create(parent, WC_TABCONTROLW, WS_TABSTOP | WS_CLIPSIBLINGS);
    for (int i = 0; i < pages.page_count(); ++i) {
      TCITEMW item{};
      item.mask = TCIF_TEXT;
      wchar_t empty[] = L"";
      item.pszText = empty;
      Send(TCM_INSERTITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
      panels_.emplace_back(window(), owner.panel_listener());
    }
    SetUp();
  }

  [[nodiscard]] HWND ContainerWindow(const forms::Container& container) const override {
    for (int i = 0; i < pages_.page_count(); ++i) {
      if (&container == static_cast<const forms::Container*>(&pages_.page(i))) return panel(i).window();
    }
    return nullptr;
  }

  [[nodiscard]] SizeHint Measure() const override {
    SizeHint hint;
    for (int i = 0; i < pages_.page_count(); ++i) {
      const SizeHint page = LayoutOf(i).Measure();
      hint.least_width = std::max(hint.least_width, page.least_width);
      hint.width = std::max(hint.width, page.width);
      hint.least_height = std::max(hint.least_height, page.least_height);
      hint.height = std::max(hint.height, page.height);
    }
    const SIZE frame = Frame();
    hint.width = std::max(hint.width + static_cast<int>(frame.cx), TabsWidth());
    hint.least_width += static_cast<int>(frame.cx);
    hint.least_height += static_cast<int>(frame.cy);
    hint.height += static_cast<int>(frame.cy);
    hint.grows_wide = hint.grows_high = true;
    return hint;
  }
  [[nodiscard]] int HeightFor(int width) const override {
    const SIZE frame = Frame();
    int height = 0;
    for (int i = 0; i < pages_.page_count(); ++i) {
      height = std::max(height, LayoutOf(i).HeightFor(width - static_cast<int>(frame.cx)));
    }
    return height + static_cast<int>(frame.cy);
  }
  void Place(const RECT& place) override {
    ControlBinding::Place(place);
    RECT inside{0, 0, place.right - place.left, place.bottom - place.top};
    Send(TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&inside));
    const LONG width = std::max<LONG>(inside.right - inside.left, 0);
    const LONG height = std::max<LONG>(inside.bottom - inside.top, 0);
    for (int i = 0; i < pages_.page_count(); ++i) {
      SetWindowPos(panel(i).window(), HWND_TOP, inside.left, inside.top, width, height, SWP_NOACTIVATE);
      LayoutOf(i).Place({0, 0, width, height});
    }
  }
  void UseFonts() override {
    ControlBinding::UseFonts();
    SetUp();
  }

  LRESULT OnNotify(NMHDR& header) override {
    if (header.code != TCN_SELCHANGE || syncing()) return 0;
    const int index = static_cast<int>(Send(TCM_GETCURSEL));
    ShowPage(index);
    owner().UserActed(pages_, [this, index] { pages_.SetTab(index); });
    return 0;
  }

 private:
  [[nodiscard]] const Panel& panel(int index) const { return panels_[static_cast<std::size_t>(index)]; }
  [[nodiscard]] ContainerLayout LayoutOf(int index) const {
    return owner().LayoutOf(pages_.page(index), Margins::kPage);
  }
  void SetUp() {
    Send(TCM_SETPADDING, 0, MAKELPARAM(fonts().Scaled(8), fonts().Scaled(4)));
    const COLORREF color = ThemeColor(window()).value_or(GetSysColor(COLOR_BTNFACE));
    for (Panel& panel : panels_) panel.SetColor(color);
  }
  /// What the control needs around a page.
  [[nodiscard]] SIZE Frame() const {
    RECT outside{0, 0, 100, 100};
    Send(TCM_ADJUSTRECT, TRUE, reinterpret_cast<LPARAM>(&outside));
    return {outside.right - outside.left - 100, outside.bottom - outside.top - 100};
  }
  /// Width of all tabs side by side.
  [[nodiscard]] int TabsWidth() const {
    int width = fonts().Scaled(4);
    for (int i = 0; i < pages_.page_count(); ++i) {
      RECT tab{};
      Send(TCM_GETITEMRECT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&tab));
      width += static_cast<int>(tab.right - tab.left);
    }
    return std::min(width, fonts().normal.Width(kWidestTabs));
  }
  void ShowPage(int shown) {
    for (int i = 0; i < pages_.page_count(); ++i) {
      ShowWindow(panel(i).window(), i == shown ? SW_SHOWNA : SW_HIDE);
    }
  }
  [[nodiscard]] std::string Caption(int index) const {
    wchar_t text[kLongestCaption]{};
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = kLongestCaption;
    Send(TCM_GETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    return ToUtf8(item.pszText == nullptr ? L"" : item.pszText);
  }
  void SyncContent() override {
    for (int i = 0; i < pages_.page_count(); ++i) {
      if (Caption(i) == pages_.page(i).caption()) continue;
      std::wstring caption = ToWide(pages_.page(i).caption());
      TCITEMW item{};
      item.mask = TCIF_TEXT;
      item.pszText = caption.data();
      Send(TCM_SETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
    if (Send(TCM_GETCURSEL) != pages_.tab()) Send(TCM_SETCURSEL, static_cast<WPARAM>(pages_.tab()));
    ShowPage(static_cast<int>(Send(TCM_GETCURSEL)));
  }
  void ReadContent(forms::ControlReading& reading) const override {
    const int count = static_cast<int>(Send(TCM_GETITEMCOUNT));
    for (int i = 0; i < count; ++i) reading.texts.push_back(Caption(i));
    reading.index = static_cast<int>(Send(TCM_GETCURSEL));
  }

  forms::TabPages& pages_;
  std::deque<Panel> panels_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::TabPages& pages, HWND parent, BindingOwner& owner) {
  return std::make_unique<TabPagesBinding>(pages, parent, owner);
}

}  // namespace kestro::adapters::win32
