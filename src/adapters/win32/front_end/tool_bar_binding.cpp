#include "adapters/win32/front_end/tool_bar_binding.h"

#include <algorithm>

#include "adapters/win32/front_end/bindings.h"
#include "adapters/win32/front_end/image.h"
#include "adapters/win32/wide_text.h"

namespace kestro::adapters::win32 {
namespace {

constexpr int kIcon = 24;  // pixels of a plain screen

/// The smallest drawing of a tool that is large enough, scaled to that size;
/// empty when the program has none. The drawings are resources "TOOL_NEW_24".
Image ToolPicture(const std::string& name, int size) {
  const HMODULE program = GetModuleHandleW(nullptr);
  for (const int drawn : {24, 48, 96}) {
    if (drawn < size && drawn < 96) continue;
    std::wstring resource = L"TOOL_" + ToWide(name) + L"_" + std::to_wstring(drawn);
    CharUpperBuffW(resource.data(), static_cast<DWORD>(resource.size()));
    const HRSRC found = FindResourceW(program, resource.c_str(), RT_RCDATA);
    if (found == nullptr) continue;
    const auto* bytes = static_cast<const std::byte*>(LockResource(LoadResource(program, found)));
    return ScaledTo(LoadPicture(std::span(bytes, SizeofResource(program, found)), drawn), size, size);
  }
  return {};
}

}  // namespace

ToolBarBinding::ToolBarBinding(forms::ToolBar& bar, HWND parent, BindingOwner& owner)
    : ControlBinding(bar, owner), bar_(bar) {
  Create(parent, TOOLBARCLASSNAMEW,
         TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | TBSTYLE_LIST | TBSTYLE_TRANSPARENT | CCS_NODIVIDER | CCS_NORESIZE |
             CCS_NOPARENTALIGN);
  Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
  Send(TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
  LoadPictures();
  AddButtons();
}

void ToolBarBinding::LoadPictures() {
  const int size = std::max(fonts().Scaled(kIcon), fonts().normal.line() * 3 / 2);
  OwnedImageList pictures(ImageList_Create(size, size, ILC_COLOR32, bar_.count(), 0));
  bool complete = true;
  for (int number = 1; number <= bar_.count(); ++number) {
    const std::string& name = bar_.item(number).picture;
    const Image image = name.empty() ? Image() : ToolPicture(name, size);
    if (!name.empty() && image.empty()) complete = false;
    const Image blank{size, size, std::vector<std::byte>(static_cast<std::size_t>(size * size * 4))};
    const OwnedBitmap bitmap = BitmapOf(image.empty() ? blank : image);
    ImageList_Add(pictures.get(), bitmap.get(), nullptr);
  }
  if (!complete) pictures.reset();
  Send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(pictures.get()));
  pictures_ = std::move(pictures);
}

void ToolBarBinding::AddButtons() {
  for (int number = 1; number <= bar_.count(); ++number) {
    TBBUTTON button{};
    const bool gap = bar_.item(number).picture.empty();
    button.idCommand = number;
    button.iBitmap = gap ? fonts().Scaled(8) : pictures_ ? number - 1 : I_IMAGENONE;
    button.fsState = TBSTATE_ENABLED;
    const int look = BTNS_BUTTON | BTNS_AUTOSIZE | BTNS_NOPREFIX | (pictures_ ? 0 : BTNS_SHOWTEXT);
    button.fsStyle = static_cast<BYTE>(gap ? BTNS_SEP : look);
    button.iString = reinterpret_cast<INT_PTR>(L"");
    Send(TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
  }
  Send(TB_AUTOSIZE);
}

void ToolBarBinding::UseFonts() {
  ControlBinding::UseFonts();
  LoadPictures();
  Send(TB_AUTOSIZE);
}

SizeHint ToolBarBinding::Measure() const {
  SIZE size{};
  Send(TB_GETMAXSIZE, 0, reinterpret_cast<LPARAM>(&size));
  const int height =
      std::max<int>(HIWORD(Send(TB_GETBUTTONSIZE)), static_cast<int>(size.cy)) + fonts().Scaled(2);
  return {static_cast<int>(size.cx), static_cast<int>(size.cx), height, height, true, false};
}

void ToolBarBinding::OnCommand(int id, int /*notification*/) {
  owner().UserActed(bar_, [this, id] { bar_.Press(id); });
}

DWORD ToolBarBinding::State(int number) const {
  return static_cast<DWORD>(Send(TB_GETSTATE, static_cast<WPARAM>(number)));
}

bool ToolBarBinding::CanPress(int number) const {
  if (number < 1 || number > Send(TB_BUTTONCOUNT)) return false;
  TBBUTTON button{};
  Send(TB_GETBUTTON, static_cast<WPARAM>(number - 1), reinterpret_cast<LPARAM>(&button));
  return (button.fsStyle & BTNS_SEP) == 0 && (button.fsState & TBSTATE_ENABLED) != 0 &&
         (button.fsState & TBSTATE_HIDDEN) == 0;
}

void ToolBarBinding::Press(int number) const {
  SendMessageW(GetParent(window()), WM_COMMAND, MAKEWPARAM(number, BN_CLICKED),
               reinterpret_cast<LPARAM>(window()));
}

void ToolBarBinding::SetText(int number, std::wstring text) {
  TBBUTTONINFOW info{};
  info.cbSize = sizeof info;
  info.dwMask = TBIF_TEXT;
  info.pszText = text.data();
  Send(TB_SETBUTTONINFOW, static_cast<WPARAM>(number), reinterpret_cast<LPARAM>(&info));
}

std::wstring ToolBarBinding::Text(int number) const {
  const LRESULT length = Send(TB_GETBUTTONTEXTW, static_cast<WPARAM>(number), 0);
  if (length <= 0) return {};
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  Send(TB_GETBUTTONTEXTW, static_cast<WPARAM>(number), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

void ToolBarBinding::SyncContent() {
  for (int number = 1; number <= bar_.count(); ++number) {
    const forms::ToolBar::Item& item = bar_.item(number);
    if (std::wstring text = ToWide(item.tool_tip); text != Text(number)) SetText(number, std::move(text));
    const DWORD state = (item.enabled ? TBSTATE_ENABLED : 0U) | (item.visible ? 0U : TBSTATE_HIDDEN);
    if (state != (State(number) & (TBSTATE_ENABLED | TBSTATE_HIDDEN))) {
      Send(TB_SETSTATE, static_cast<WPARAM>(number), static_cast<LPARAM>(state));
    }
  }
}

void ToolBarBinding::ReadContent(forms::ControlReading& reading) const {
  const int count = static_cast<int>(Send(TB_BUTTONCOUNT));
  for (int number = 1; number <= count; ++number) {
    reading.texts.push_back(ToUtf8(Text(number)));
    TBBUTTON button{};
    Send(TB_GETBUTTON, static_cast<WPARAM>(number - 1), reinterpret_cast<LPARAM>(&button));
    if ((button.fsState & TBSTATE_HIDDEN) != 0) {
      reading.hidden_buttons.push_back(number);
    } else if ((button.fsStyle & BTNS_SEP) == 0 && (button.fsState & TBSTATE_ENABLED) == 0) {
      reading.disabled_buttons.push_back(number);
    }
  }
}

std::unique_ptr<ControlBinding> Bind(forms::ToolBar& bar, HWND parent, BindingOwner& owner) {
  return std::make_unique<ToolBarBinding>(bar, parent, owner);
}

}  // namespace kestro::adapters::win32
