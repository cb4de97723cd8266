#include "adapters/win32/front_end/window.h"

#include <system_error>

#include "adapters/win32/front_end/native_text.h"
#include "adapters/win32/wide_text.h"

namespace kestro::adapters::win32 {

using forms::Control;
using forms::Form;

namespace {

constexpr const wchar_t* kWindowClass = L"KestroWindow";
constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
constexpr int kProgramIcon = 1;
constexpr UINT kFitMessage = WM_APP + 1;

HICON ProgramIcon(int width_metric, int height_metric) {
  return static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kProgramIcon), IMAGE_ICON,
                                       GetSystemMetrics(width_metric), GetSystemMetrics(height_metric),
                                       LR_SHARED));
}

/// Does nothing when the class is there already.
void RegisterWindowClass(WNDPROC procedure) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  description.hIcon = ProgramIcon(SM_CXICON, SM_CYICON);
  description.hIconSm = ProgramIcon(SM_CXSMICON, SM_CYSMICON);
  description.lpszClassName = kWindowClass;
  RegisterClassExW(&description);
}

void LoadControlClasses() {
  INITCOMMONCONTROLSEX wanted{};
  wanted.dwSize = sizeof wanted;
  wanted.dwICC =
      ICC_STANDARD_CLASSES | ICC_LISTVIEW_CLASSES | ICC_TAB_CLASSES | ICC_BAR_CLASSES | ICC_PROGRESS_CLASS;
  InitCommonControlsEx(&wanted);
}

bool Has(HWND window, DWORD style) {
  return (static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)) & style) != 0;
}

}  // namespace

Window::Window(Form& form, forms::WindowHandle handle, Win32EventBoundary& boundary, WindowListener& listener)
    : form_(&form), handle_(handle), boundary_(boundary), listener_(listener) {
  LoadControlClasses();
  RegisterWindowClass(&Window::Procedure);
  Create();
  fonts_ = std::make_unique<Fonts>(DpiOf(window()));
  PanelListener& listens = *this;
  BindingOwner& owner = *this;
  content_ = std::make_unique<Panel>(window(), listens);
  menus_ = std::make_unique<Menus>(form, window(), owner);
  if (menus_->bar() != nullptr) SetMenu(window(), menus_->bar());
  BuildControls();
  for (const auto& binding : bindings_) binding->Sync();
  SyncWindow();
  MarkDefaultButton();
  SendMessageW(window(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_INITIALIZE, 0), 0);
}

Window::~Window() {
  form_ = nullptr;
  SetMenu(window(), nullptr);
  window_.reset();
}

void Window::Create() {
  // The procedure learns the object before the first message that it handles.
  window_.reset(CreateWindowExW(0, kWindowClass, L"", kStyle, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                                CW_USEDEFAULT, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr));
  if (!window_) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                            "the window " + form_->name());
  }
  SetWindowLongPtrW(window(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void Window::BuildControls() {
  for (Control* control : form_->controls()) {
    if (control->kind() == forms::ControlKind::kMenuItem) continue;
    bindings_.push_back(MakeBinding(*control, HolderOf(control->parent()), *this));
    ControlBinding& binding = *bindings_.back();
    by_control_[control] = &binding;
    by_window_[binding.window()] = &binding;
  }
}

HWND Window::HolderOf(const forms::Container* container) const {
  if (container != nullptr) {
    for (const auto& binding : bindings_) {
      const HWND holder = binding->ContainerWindow(*container);
      if (holder != nullptr) return holder;
    }
  }
  return content_->window();
}

ControlBinding* Window::Binding(const Control& control) const {
  const auto found = by_control_.find(&control);
  return found == by_control_.end() ? nullptr : found->second;
}

ControlBinding* Window::BindingOf(HWND window) const {
  // The field of an editable list is a window inside the list.
  for (HWND place = window; place != nullptr && place != this->window();
       place = GetAncestor(place, GA_PARENT)) {
    const auto found = by_window_.find(place);
    if (found != by_window_.end()) return found->second;
  }
  return nullptr;
}

ContainerLayout Window::LayoutOf(const forms::Container& container, Margins margins) const {
  return {container, margins, *fonts_,
          [this](const Control& control) -> LayoutElement* { return Binding(control); }};
}

bool Window::Operable(const ControlBinding& binding) const {
  for (HWND place = binding.window(); place != nullptr && place != window();
       place = GetAncestor(place, GA_PARENT)) {
    if (Has(place, WS_DISABLED) || !Has(place, WS_VISIBLE)) return false;
  }
  return true;
}

std::string Window::Caption() const { return ToUtf8(TextOf(window())); }

forms::WindowState Window::State() const {
  // What a hidden window is shown as comes to it with the showing.
  if (!Has(window(), WS_VISIBLE)) return shown_state_;
  if (IsIconic(window()) != 0) return forms::WindowState::kMinimized;
  return IsZoomed(window()) != 0 ? forms::WindowState::kMaximized : forms::WindowState::kNormal;
}

void Window::Detach() {
  form_ = nullptr;
  for (const auto& binding : bindings_) binding->Detach();
  Disappear();
}

void Window::SyncControl(Control& control) {
  if (menus_->Knows(control)) return menus_->Sync(dynamic_cast<forms::MenuItem&>(control));
  ControlBinding* binding = Binding(control);
  if (binding == nullptr) return;
  binding->Sync();
  MoveFocusOn();
  FitToContentSoon();
}

void Window::SyncMenu(forms::MenuItem& parent) {
  if (menus_->Knows(parent)) menus_->Rebuild(parent);
}

void Window::UserActed(Control& control, const std::function<void()>& action) {
  if (form_ == nullptr) return;
  boundary_.Run(Win32EventBoundary::Cause::kUser, action);
  if (form_ != nullptr) SyncControl(control);
}

std::string Window::NativePath(const std::string& system_path) const {
  return listener_.NativePath(system_path);
}

// --- what the native controls report ---

void Window::OnCommand(HWND control, int id, int notification) {
  if (form_ == nullptr) return;
  ControlBinding* binding = BindingOf(control);
  if (binding == nullptr) return;
  const forms::ControlKind kind = binding->control().kind();
  const int focus_code = kind == forms::ControlKind::kTextBox    ? EN_SETFOCUS
                         : kind == forms::ControlKind::kComboBox ? CBN_SETFOCUS
                                                                 : BN_SETFOCUS;
  if (notification == focus_code && kind != forms::ControlKind::kToolBar) return TakeFocusFrom(control);
  binding->OnCommand(id, notification);
}

LRESULT Window::OnNotify(NMHDR& header) {
  if (form_ == nullptr) return 0;
  ControlBinding* binding = BindingOf(header.hwndFrom);
  if (binding == nullptr) return 0;
  if (header.code == static_cast<UINT>(NM_SETFOCUS)) {
    TakeFocusFrom(header.hwndFrom);
    return 0;
  }
  return binding->window() == header.hwndFrom ? binding->OnNotify(header) : 0;
}

void Window::OnDraw(const DRAWITEMSTRUCT& item) {
  if (ControlBinding* binding = BindingOf(item.hwndItem)) binding->OnDraw(item);
}

// --- the user and the window ---

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
  auto* object = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  // Built, and not yet on its way to be destroyed.
  if (object == nullptr || object->menus_ == nullptr || object->form_ == nullptr) {
    if (message == WM_CLOSE) return 0;
    return DefWindowProcW(window, message, wparam, lparam);
  }
  return object->Handle(message, wparam, lparam);
}

LRESULT Window::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_CLOSE:
      CloseAsked();
      return 0;
    case WM_COMMAND:
      if (lparam == 0) menus_->Choose(LOWORD(wparam));
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(wparam) != WA_INACTIVE && HIWORD(wparam) == 0) Activated();
      return 0;
    case WM_SETFOCUS:
      GiveFocus(focus_);
      return 0;
    case WM_SIZE:
      StateChanged(wparam);
      return 0;
    case WM_GETMINMAXINFO:
      LimitSize(*reinterpret_cast<MINMAXINFO*>(lparam));
      return 0;
    case WM_HSCROLL:
      Scroll(SB_HORZ, LOWORD(wparam));
      return 0;
    case WM_VSCROLL:
      Scroll(SB_VERT, LOWORD(wparam));
      return 0;
    case WM_MOUSEWHEEL:
      OnWheel(GET_WHEEL_DELTA_WPARAM(wparam));
      return 0;
    case WM_SETCURSOR:
      if (listener_.pointer() != forms::Pointer::kHourglass) break;
      SetCursor(LoadCursorW(nullptr, IDC_WAIT));
      return TRUE;
    case WM_ENTERIDLE:
      if (wparam == MSGF_MENU) listener_.MenuWaits();
      return 0;
    case WM_DPICHANGED:
      UseDensity(HIWORD(wparam), *reinterpret_cast<const RECT*>(lparam));
      return 0;
    case WM_SYSCOLORCHANGE:
      for (const auto& binding : bindings_) SendMessageW(binding->window(), message, wparam, lparam);
      UseFonts(fonts_->dpi);
      break;
    case WM_SETTINGCHANGE:
    case WM_THEMECHANGED:
      UseFonts(fonts_->dpi);
      FitToContentSoon();
      break;
    case kFitMessage:
      fit_is_due_ = false;
      if (Has(this->window(), WS_VISIBLE)) FitToContent();
      return 0;
    default:
      break;
  }
  return DefWindowProcW(window(), message, wparam, lparam);
}

void Window::CloseAsked() {
  // Only the form decides; when it goes, Detach hides the window.
  boundary_.Run(Win32EventBoundary::Cause::kUser, [this] { form_->RequestUnload(forms::kControlMenu); });
}

void Window::Activated() {
  listener_.WindowActivated(*this);
  if (form_ != nullptr) GiveFocus(focus_);
}

void Window::StateChanged(WPARAM size_kind) {
  if (size_kind != SIZE_MINIMIZED) LayOut();
  if (!Has(window(), WS_VISIBLE)) return;
  const auto state = size_kind == SIZE_MINIMIZED   ? forms::WindowState::kMinimized
                     : size_kind == SIZE_MAXIMIZED ? forms::WindowState::kMaximized
                                                   : forms::WindowState::kNormal;
  if (state == shown_state_) return;
  shown_state_ = state;
  boundary_.Run(Win32EventBoundary::Cause::kUser, [this, state] { form_->UserChangedWindowState(state); });
}

void Window::FitToContentSoon() {
  if (fit_is_due_ || !Has(window(), WS_VISIBLE)) return;
  fit_is_due_ = true;
  PostMessageW(window(), kFitMessage, 0, 0);
}

}  // namespace kestro::adapters::win32
