#include "adapters/windows/late/LateObject.h"

#include <fmt/core.h>

#include <algorithm>
#include <string>

#include "platform/PlatformError.h"

namespace twqb::windows {

namespace {

ErrorNumber NumberOf(HRESULT failure) { return static_cast<ErrorNumber>(failure); }

std::string SystemText(HRESULT failure) {
  wchar_t* text = nullptr;
  const auto size =
      FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, static_cast<DWORD>(failure), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  if (size == 0) return "Automation error";
  auto words = Utf8({text, size});
  LocalFree(text);
  while (words.ends_with('\n') || words.ends_with('\r') || words.ends_with(' ')) words.pop_back();
  return words;
}

// What an object tells of its own failure; its texts are ours to free.
class Told {
 public:
  Told() = default;
  Told(const Told&) = delete;
  Told& operator=(const Told&) = delete;
  ~Told() {
    SysFreeString(about_.bstrSource);
    SysFreeString(about_.bstrDescription);
    SysFreeString(about_.bstrHelpFile);
  }
  [[nodiscard]] EXCEPINFO* Out() { return &about_; }

  [[noreturn]] void Raise() {
    // It may have left its texts until they are asked for.
    if (about_.pfnDeferredFillIn != nullptr) about_.pfnDeferredFillIn(&about_);
    const auto number = about_.scode != 0 ? NumberOf(about_.scode) : ErrorNumber{about_.wCode};
    auto text = TextOf(about_.bstrDescription);
    throw PlatformError(number, text.empty() ? SystemText(about_.scode) : text);
  }

 private:
  EXCEPINFO about_ = {};
};

LateObject ObjectOf(Variant result) {
  // Both kinds are a pointer in the same place; the one without names may have them all the same.
  const bool isObject = result.Value().vt == VT_DISPATCH || result.Value().vt == VT_UNKNOWN;
  if (!isObject || result.Value().punkVal == nullptr) throw PlatformError(error::kObjectNothing);
  if (result.Value().vt == VT_DISPATCH) return LateObject(result.Release().pdispVal);
  Reference<IDispatch> named;
  const auto failure = result.Value().punkVal->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(named.Out()));
  if (FAILED(failure)) throw PlatformError(NumberOf(failure), SystemText(failure));
  return LateObject(named.Release());
}

}  // namespace

LateObject LateObject::Create(std::string_view className) {
  CLSID id = {};
  const auto raise = [&](HRESULT failure) {
    throw PlatformError(NumberOf(failure), fmt::format("{} ({})", SystemText(failure), className));
  };
  if (const auto failure = CLSIDFromProgID(Wide(className).c_str(), &id); FAILED(failure)) raise(failure);
  Reference<IDispatch> made;
  const auto failure = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                        reinterpret_cast<void**>(made.Out()));
  if (FAILED(failure)) raise(failure);
  return LateObject(made.Release());
}

Variant LateObject::Call(std::string_view method, std::vector<Variant> arguments) {
  return Invoke(method, DISPATCH_METHOD, std::move(arguments));
}

Variant LateObject::Get(std::string_view property, std::vector<Variant> arguments) {
  return Invoke(property, DISPATCH_PROPERTYGET, std::move(arguments));
}

void LateObject::Put(std::string_view property, Variant value) {
  std::vector<Variant> arguments;
  arguments.push_back(std::move(value));
  Invoke(property, DISPATCH_PROPERTYPUT, std::move(arguments));
}

LateObject LateObject::CallObject(std::string_view method, std::vector<Variant> arguments) {
  return ObjectOf(Call(method, std::move(arguments)));
}

LateObject LateObject::GetObject(std::string_view property, std::vector<Variant> arguments) {
  return ObjectOf(Get(property, std::move(arguments)));
}

Variant LateObject::AsVariant() const {
  Variant object;
  object.Get()->vt = VT_DISPATCH;
  object.Get()->pdispVal = object_.Get();
  if (object_) object_->AddRef();
  return object;
}

Variant LateObject::Invoke(std::string_view name, WORD kind, std::vector<Variant> arguments) {
  if (!object_) throw PlatformError(error::kObjectNothing);
  auto wide = Wide(name);
  wchar_t* names = wide.data();
  DISPID id = 0;
  const auto unknown = object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
  if (unknown == DISP_E_UNKNOWNNAME || unknown == DISP_E_MEMBERNOTFOUND) {
    throw PlatformError(error::kNameUnknown, fmt::format("{}: {}", ErrorText(error::kNameUnknown), name));
  }
  // It is not to be had itself: its program has ended, say.
  if (FAILED(unknown)) throw PlatformError(NumberOf(unknown), SystemText(unknown));
  // The last one comes first. Ours keep what they hold.
  std::vector<VARIANT> given;
  for (auto& argument : arguments) given.push_back(argument.Value());
  std::ranges::reverse(given);
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS parameters = {.rgvarg = given.data(), .cArgs = static_cast<UINT>(given.size())};
  if (kind == DISPATCH_PROPERTYPUT) {
    parameters.rgdispidNamedArgs = &put;
    parameters.cNamedArgs = 1;
  }
  Variant result;
  Told told;
  const auto failure =
      object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, result.Get(), told.Out(), nullptr);
  if (failure == DISP_E_EXCEPTION) told.Raise();
  if (FAILED(failure)) throw PlatformError(NumberOf(failure), SystemText(failure));
  return result;
}

}  // namespace twqb::windows
