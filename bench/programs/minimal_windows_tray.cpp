// The least that a Windows program with a window and a notification icon can be: the start-up benchmark
// measures CTI.exe against it. It comes up, says so by showing its icon, handles its messages and ends with
// its window.

#include <windows.h>

#include <shellapi.h>

namespace {

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_ENDSESSION) {
    ::DestroyWindow(window);
    return 0;
  }
  if (message == WM_DESTROY) ::PostQuitMessage(0);
  return ::DefWindowProcW(window, message, wparam, lparam);
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE /*previous*/, LPSTR command_line, int /*show*/) {
  WNDCLASSW description{};
  description.lpfnWndProc = &WindowProcedure;
  description.hInstance = instance;
  description.lpszClassName = L"minimal";
  ::RegisterClassW(&description);
  const HWND window = ::CreateWindowExW(0, L"minimal", L"minimal", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200,
                                        nullptr, nullptr, instance, nullptr);
  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof(icon);
  icon.hWnd = window;
  icon.uFlags = NIF_ICON | NIF_MESSAGE;
  icon.uCallbackMessage = WM_APP;
  icon.hIcon = ::LoadIconW(nullptr, IDI_APPLICATION);
  ::Shell_NotifyIconW(NIM_ADD, &icon);
  if (*command_line != '\0') ::PostMessageW(window, WM_ENDSESSION, TRUE, 0);  // comes up and ends
  MSG message{};
  while (::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);
  ::Shell_NotifyIconW(NIM_DELETE, &icon);
  return 0;
}
