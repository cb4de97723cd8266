#include "adapters/win32/front_end/win32_form_host.h"

#include <algorithm>

#include "adapters/win32/front_end/dpi.h"
#include "base/scope_value.h"

namespace kestro::adapters {

using forms::Form;

Win32FormHost::Win32FormHost(Win32EventBoundary& boundary, PathTranslator native_path)
    : boundary_(boundary), native_path_(std::move(native_path)) {
  boundary_.SetFilter([this](const MSG& message) {
    if (boundary_.idle()) BuryUnloaded();
    return FilterKey(message);
  });
}

Win32FormHost::~Win32FormHost() {
  boundary_.SetFilter({});
  for (const auto& [form, loaded] : windows_) {
    if (loaded.window) loaded.window->Detach();
  }
}

forms::WindowHandle Win32FormHost::Load(Form& form) {
  windows_[&form] = {&form, ++last_handle_, nullptr};
  return last_handle_;
}

std::unique_ptr<win32::Window> Win32FormHost::MakeWindow(Form& form, forms::WindowHandle handle) {
  win32::WindowListener& listener = *this;
  return std::make_unique<win32::Window>(form, handle, boundary_, listener);
}

void Win32FormHost::Unload(Form& form) {
  const auto found = windows_.find(&form);
  if (found == windows_.end()) return;
  std::unique_ptr<win32::Window> window = std::move(found->second.window);
  windows_.erase(found);
  if (!window) return;
  LeaveModal(*window);
  Leave(*window);
  {
    const base::ScopeValue rearranging(rearranging_, true);
    window->Detach();
  }
  win32::Window& gone = *window;
  unloaded_.push_back(std::move(window));
  // A form that is still loaded is being destroyed with the application: no window hears of it any more.
  TakeOffScreen(gone, !form.loaded());
}

void Win32FormHost::BuryUnloaded() { unloaded_.clear(); }

void Win32FormHost::PutOnScreen(win32::Window& window, bool activate) {
  std::erase(shown_, &window);
  shown_.push_back(&window);
  const base::ScopeValue rearranging(rearranging_, true);
  window.Appear(activate);
}

void Win32FormHost::Show(Form& form) {
  win32::Window* window = Window(form);
  if (window == nullptr) return;
  if (!modal_.empty() && modal_.back().window != window) {
    EnableWindow(window->window(), FALSE);
    modal_.back().disabled.push_back(window->window());
  }
  PutOnScreen(*window, boundary_.user_action());
  form.Activated();
}

void Win32FormHost::Hide(Form& form) {
  win32::Window* window = Made(form);
  if (window == nullptr) return;
  LeaveModal(*window);
  Leave(*window);
  {
    const base::ScopeValue rearranging(rearranging_, true);
    window->Disappear();
  }
  TakeOffScreen(*window, true);
}

void Win32FormHost::Leave(win32::Window& window) {
  if (GetActiveWindow() != window.window()) return;
  const auto next = std::find_if(shown_.rbegin(), shown_.rend(), [&](const win32::Window* other) {
    return other != &window && IsWindowEnabled(other->window()) != 0 && IsIconic(other->window()) == 0;
  });
  if (next == shown_.rend()) return;
  const base::ScopeValue rearranging(rearranging_, true);
  SetActiveWindow((*next)->window());
}

void Win32FormHost::TakeOffScreen(win32::Window& window, bool tell) {
  const bool was_in_front = !shown_.empty() && shown_.back() == &window;
  std::erase(shown_, &window);
  if (!tell || !was_in_front || shown_.empty()) return;
  if (Form* next = shown_.back()->form()) next->Activated();
}

void Win32FormHost::EnterModal(win32::Window& window, const Form* owner) {
  // A window stays above its owner; without a given one it belongs to the window in front.
  const win32::Window* below = owner == nullptr ? nullptr : Made(*owner);
  if (below == nullptr && !shown_.empty() && shown_.back() != &window) below = shown_.back();
  const bool can_own =
      below != nullptr && IsWindowVisible(below->window()) != 0 && IsIconic(below->window()) == 0;
  const HWND parent = can_own ? below->window() : nullptr;
  SetWindowLongPtrW(window.window(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(parent));
  Modal modal{&window, {}};
  for (const auto& [form, other] : windows_) {
    if (!other.window || other.window.get() == &window) continue;
    const HWND native = other.window->window();
    if (IsWindowEnabled(native) == 0) continue;
    EnableWindow(native, FALSE);
    modal.disabled.push_back(native);
  }
  EnableWindow(window.window(), TRUE);
  modal_.push_back(std::move(modal));
}

void Win32FormHost::LeaveModal(const win32::Window& window) {
  const auto found =
      std::find_if(modal_.begin(), modal_.end(), [&](const Modal& modal) { return modal.window == &window; });
  if (found == modal_.end()) return;
  // The next one inwards goes on waiting: what this one disabled stays so for that one.
  if (const auto inner = std::next(found); inner != modal_.end()) {
    inner->disabled.insert(inner->disabled.end(), found->disabled.begin(), found->disabled.end());
  } else {
    for (const HWND other : found->disabled) EnableWindow(other, TRUE);
  }
  modal_.erase(found);
  SetWindowLongPtrW(window.window(), GWLP_HWNDPARENT, 0);
}

void Win32FormHost::ShowModal(Form& form, Form* owner) {
  win32::Window* window = Window(form);
  if (window == nullptr) return;
  boundary_.ThrowIfEnded();
  class Scope {
   public:
    Scope(Win32FormHost& host, Form& form) : host_(host), form_(form) {}
    ~Scope() {
      if (const win32::Window* left = host_.Made(form_)) host_.LeaveModal(*left);
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    Win32FormHost& host_;
    Form& form_;
  };
  const Scope scope(*this, form);
  EnterModal(*window, owner);
  PutOnScreen(*window, true);  // nothing else can be typed into meanwhile
  form.Activated();
  boundary_.RunWhile([&form] { return form.visible(); });
}

void Win32FormHost::WindowChanged(Form& form) {
  const base::ScopeValue rearranging(rearranging_, true);
  if (win32::Window* window = Made(form)) window->SyncWindow();
}

void Win32FormHost::ControlChanged(Form& form, forms::Control& control) {
  if (win32::Window* window = Made(form)) window->SyncControl(control);
}

void Win32FormHost::MenuChanged(Form& form, forms::MenuItem& parent) {
  if (win32::Window* window = Made(form)) window->SyncMenu(parent);
}

void Win32FormHost::FocusControl(Form& form, forms::Control& control) {
  if (win32::Window* window = Window(form)) window->FocusControl(control);
}

void Win32FormHost::PopupMenu(Form& form, forms::MenuItem& menu) {
  win32::Window* window = Window(form);
  if (window == nullptr || !window->menus().Knows(menu)) return;
  const HMENU popup = window->menus().Menu(menu);
  if (popup == nullptr || GetMenuItemCount(popup) == 0) return;
  POINT pointer{};
  GetCursorPos(&pointer);
  const HWND owner = window->window();
  {
    const base::ScopeValue rearranging(rearranging_, true);
    SetForegroundWindow(owner);  // else a press beside the menu would not close it
    const Win32EventBoundary::ForeignLoop loop(boundary_);
    TrackPopupMenu(popup, TPM_RIGHTBUTTON, pointer.x, pointer.y, 0, owner, nullptr);
    PostMessageW(owner, WM_NULL, 0, 0);
  }
  boundary_.ThrowIfEnded();
}

void Win32FormHost::MenuWaits() {
  if (closes_menus_ || boundary_.ended()) EndMenu();
}

forms::ScreenSize Win32FormHost::Screen() const {
  if (fixed_screen_) return *fixed_screen_;
  const RECT area = win32::WorkArea(nullptr);
  const int dpi = win32::SystemDpi();
  return {win32::ToTwips(static_cast<int>(area.right - area.left), dpi),
          win32::ToTwips(static_cast<int>(area.bottom - area.top), dpi)};
}

void Win32FormHost::SetPointer(forms::Pointer pointer) {
  if (pointer == pointer_) return;
  pointer_ = pointer;
  SetCursor(LoadCursorW(nullptr, pointer == forms::Pointer::kHourglass ? IDC_WAIT : IDC_ARROW));
}

void Win32FormHost::DoEvents() {
  boundary_.DispatchWaiting();
  boundary_.ThrowIfEnded();
}

win32::Window* Win32FormHost::Made(const Form& form) const {
  const auto found = windows_.find(&form);
  return found == windows_.end() ? nullptr : found->second.window.get();
}

win32::Window* Win32FormHost::Make(Loaded& loaded) {
  if (!loaded.window) loaded.window = MakeWindow(*loaded.form, loaded.handle);
  return loaded.window.get();
}

win32::Window* Win32FormHost::Window(const Form& form) {
  const auto found = windows_.find(&form);
  return found == windows_.end() ? nullptr : Make(found->second);
}

win32::Window* Win32FormHost::Window(forms::WindowHandle handle) {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&](const auto& entry) { return entry.second.handle == handle; });
  return found == windows_.end() ? nullptr : Make(found->second);
}

HWND Win32FormHost::NativeHandle(forms::WindowHandle handle) {
  const win32::Window* window = Window(handle);
  return window == nullptr ? nullptr : window->window();
}

forms::WindowHandle Win32FormHost::FrontWindow() const {
  return shown_.empty() ? 0 : shown_.back()->handle();
}

bool Win32FormHost::BringToFront(forms::WindowHandle handle) {
  win32::Window* window = Window(handle);
  const auto place = std::find(shown_.begin(), shown_.end(), window);
  if (window == nullptr || place == shown_.end()) return false;
  const bool was_in_front = window == shown_.back();
  std::rotate(place, std::next(place), shown_.end());
  {
    const base::ScopeValue rearranging(rearranging_, true);
    window->BringToFront(boundary_.user_action());
  }
  if (!was_in_front) window->form()->Activated();
  return true;
}

void Win32FormHost::WindowActivated(win32::Window& window) {
  const auto place = std::find(shown_.begin(), shown_.end(), &window);
  if (rearranging_ || place == shown_.end() || shown_.back() == &window) return;
  std::rotate(place, std::next(place), shown_.end());
  boundary_.Run(Win32EventBoundary::Cause::kUser, [&window] {
    if (window.form() != nullptr) window.form()->Activated();
  });
}

std::string Win32FormHost::NativePath(const std::string& system_path) const {
  return native_path_(system_path);
}

bool Win32FormHost::FilterKey(const MSG& message) const {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  const HWND top = GetAncestor(message.hwnd, GA_ROOT);
  for (const auto& [form, loaded] : windows_) {
    if (loaded.window && loaded.window->window() == top) return loaded.window->FilterKey(message);
  }
  return false;
}

}  // namespace kestro::adapters
