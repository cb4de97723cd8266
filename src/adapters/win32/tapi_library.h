#pragma once

#include <windows.h>

#include <memory>
#include <string>

namespace kestro::adapters {

/// The line functions of tapi32.dll as the system publishes them for API version
/// 1.4. Handles are 32-bit numbers; they are passed and received in the width of a
/// pointer because both widths are in use. A function that the library does not
/// have, or all of them when there is no library, is null.
struct TapiLibrary {
  using Handle = DWORD_PTR;
  using Callback = void(CALLBACK*)(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR parameter1,
                                   DWORD_PTR parameter2, DWORD_PTR parameter3);

  /// Loads the library. Nothing is raised.
  explicit TapiLibrary(const std::wstring& name = L"tapi32.dll");

  LONG(WINAPI* lineInitialize)
  (Handle* application, HINSTANCE instance, Callback callback, LPCSTR name, DWORD* devices) = nullptr;
  LONG(WINAPI* lineNegotiateAPIVersion)
  (Handle application, DWORD device, DWORD lowest, DWORD highest, DWORD* version, void* extension) = nullptr;
  LONG(WINAPI* lineGetDevCaps)
  (Handle application, DWORD device, DWORD version, DWORD extension_version, void* dev_caps) = nullptr;
  LONG(WINAPI* lineOpen)
  (Handle application, DWORD device, Handle* line, DWORD version, DWORD extension_version, DWORD_PTR instance,
   DWORD privileges, DWORD media_modes, const void* call_parameters) = nullptr;
  LONG(WINAPI* lineSetStatusMessages)(Handle line, DWORD line_states, DWORD address_states) = nullptr;
  LONG(WINAPI* lineGetCallInfo)(Handle call, void* call_info) = nullptr;
  LONG(WINAPI* lineDrop)(Handle call, LPCSTR user_info, DWORD size) = nullptr;
  LONG(WINAPI* lineDeallocateCall)(Handle call) = nullptr;
  LONG(WINAPI* lineTranslateAddress)
  (Handle application, DWORD device, DWORD version, LPCSTR address, DWORD card, DWORD options,
   void* translate_output) = nullptr;
  LONG(WINAPI* lineBlindTransfer)(Handle call, LPCSTR address, DWORD country_code) = nullptr;
  LONG(WINAPI* lineClose)(Handle line) = nullptr;
  LONG(WINAPI* lineShutdown)(Handle application) = nullptr;

 private:
  struct Unloader {
    using pointer = HMODULE;
    void operator()(HMODULE module) const { ::FreeLibrary(module); }
  };

  template <class Function>
  void Find(const char* name, Function& function) const {
    auto* const found = reinterpret_cast<void (*)()>(::GetProcAddress(module_.get(), name));
    function = reinterpret_cast<Function>(found);
  }

  std::unique_ptr<HMODULE, Unloader> module_;
};

}  // namespace kestro::adapters
