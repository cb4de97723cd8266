// A dialling object for the tests: notes the number in the file that KESTRO_DIALLED_FILE names; refuses "0".

#include <windows.h>

#include <atomic>
#include <cstdlib>
#include <cwchar>
#include <filesystem>
#include <fstream>
#include <oleauto.h>

#include "adapters/win32/wide_text.h"

// COM's interfaces have no virtual destructor: objects end themselves.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace {

constexpr DISPID kDial = 1;

template <class Interface>
class Object : public Interface {
 public:
  virtual ~Object() = default;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) final {
    const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, __uuidof(Interface));
    *object = known ? this : nullptr;
    if (known) this->AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
};

class DialCom final : public Object<IDispatch> {
 public:
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    if (::_wcsicmp(names[0], L"Dial") != 0) return DISP_E_UNKNOWNNAME;
    ids[0] = kDial;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                   EXCEPINFO* exception, UINT*) override {
    if (id != kDial || parameters->cArgs != 1) return DISP_E_MEMBERNOTFOUND;
    if (parameters->rgvarg[0].vt != VT_BSTR) return DISP_E_TYPEMISMATCH;
    const std::string number = kestro::adapters::ToUtf8(parameters->rgvarg[0].bstrVal);
    if (number == "0") {
      exception->bstrDescription = ::SysAllocString(L"no such number");
      exception->scode = E_FAIL;
      return DISP_E_EXCEPTION;
    }
    const std::filesystem::path file(::_wgetenv(L"KESTRO_DIALLED_FILE"));
    std::ofstream(file, std::ios::app) << number << "\n";
    if (result != nullptr) {
      result->vt = VT_I2;
      result->iVal = 7;
    }
    return S_OK;
  }

 private:
  std::atomic<ULONG> references_{0};
};

class Factory final : public Object<IClassFactory> {
 public:
  // The factory lives as long as the library.
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
    auto* const made = new DialCom;
    const HRESULT result = made->QueryInterface(id, object);
    if (FAILED(result)) delete made;
    return result;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

}  // namespace

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE
    DllGetClassObject(REFCLSID, REFIID id, void** object) {
  static Factory factory;
  return factory.QueryInterface(id, object);
}
