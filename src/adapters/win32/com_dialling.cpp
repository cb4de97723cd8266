#include "adapters/win32/com_dialling.h"

#include <windows.h>

#include <oleauto.h>
#include <string>

#include "adapters/win32/system_error.h"
#include "adapters/win32/wide_text.h"
#include "base/runtime_error.h"

namespace kestro::adapters {
namespace {

constexpr const wchar_t* kProgramId = L"CTI.DialCom";
constexpr const wchar_t* kMethod = L"Dial";

struct Releaser {
  void operator()(IUnknown* object) const { object->Release(); }
};
using Dispatch = std::unique_ptr<IDispatch, Releaser>;

/// A VARIANT that gives back what it holds.
class Variant {
 public:
  Variant() { ::VariantInit(&value_); }
  explicit Variant(const std::wstring& text) : Variant() {
    value_.vt = VT_BSTR;
    value_.bstrVal = ::SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  }
  ~Variant() { ::VariantClear(&value_); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  [[nodiscard]] VARIANT* get() { return &value_; }

 private:
  VARIANT value_{};
};

/// What the object says about its failure; its texts are given back.
std::string TakeWords(EXCEPINFO& exception, HRESULT result) {
  if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
  std::string words;
  if (exception.bstrDescription != nullptr) words = ToUtf8(exception.bstrDescription);
  ::SysFreeString(exception.bstrDescription);
  ::SysFreeString(exception.bstrSource);
  ::SysFreeString(exception.bstrHelpFile);
  return words.empty() ? SystemErrorText(static_cast<std::uint32_t>(result)) : words;
}

[[noreturn]] void RaiseAutomationError(const std::string& words) {
  throw base::RuntimeError(base::kAutomationError, "CTI.DialCom: " + words);
}

class ComDialCom final : public ports::DiallingObject {
 public:
  explicit ComDialCom(Dispatch object) : object_(std::move(object)) {}

  std::int32_t Dial(std::string_view number) override {
    Variant argument(ToWide(number));
    DISPPARAMS parameters{};
    parameters.rgvarg = argument.get();
    parameters.cArgs = 1;
    Variant answer;
    EXCEPINFO exception{};
    const HRESULT result = object_->Invoke(MethodId(), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                           &parameters, answer.get(), &exception, nullptr);
    if (FAILED(result)) RaiseAutomationError(TakeWords(exception, result));
    // A method without a result has succeeded.
    if (answer.get()->vt == VT_EMPTY) return 0;
    if (FAILED(::VariantChangeType(answer.get(), answer.get(), 0, VT_I4))) {
      RaiseAutomationError("the result is no number");
    }
    return answer.get()->lVal;
  }

 private:
  [[nodiscard]] DISPID MethodId() {
    std::wstring name(kMethod);
    LPOLESTR names = name.data();
    DISPID id = 0;
    const HRESULT result = object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(result)) RaiseAutomationError(SystemErrorText(static_cast<std::uint32_t>(result)));
    return id;
  }

  Dispatch object_;
};

[[noreturn]] void RaiseNoObject(HRESULT result) {
  throw base::RuntimeError(
      base::kCannotCreateObject,
      "ActiveX component can't create object: " + SystemErrorText(static_cast<std::uint32_t>(result)));
}

}  // namespace

std::unique_ptr<ports::DiallingObject> ComDialling::CreateDialCom() {
  CLSID id{};
  const HRESULT known = ::CLSIDFromProgID(kProgramId, &id);
  if (FAILED(known)) RaiseNoObject(known);
  void* object = nullptr;
  const HRESULT made =
      ::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch, &object);
  if (FAILED(made) || object == nullptr) RaiseNoObject(made);
  return std::make_unique<ComDialCom>(Dispatch(static_cast<IDispatch*>(object)));
}

ComApartment::ComApartment() : entered_(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}

ComApartment::~ComApartment() {
  if (entered_) ::CoUninitialize();
}

}  // namespace kestro::adapters
