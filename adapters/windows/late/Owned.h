// What COM hands out and takes back, owned by types: texts, variants, references to objects.
//
// Adapters and the COM server share it. Text is UTF-8 on this side and UTF-16 on the other. It calls no object.
#pragma once

#include <oaidl.h>
#include <oleauto.h>
#include <windows.h>

#include <string>
#include <string_view>
#include <utility>

namespace twqb::windows {

[[nodiscard]] std::wstring Wide(std::string_view text);
[[nodiscard]] std::string Utf8(std::wstring_view text);
// A null text is an empty one.
[[nodiscard]] std::string TextOf(BSTR text);

// A text that COM frees.
class Bstr {
 public:
  explicit Bstr(std::string_view text);
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  ~Bstr() { SysFreeString(value_); }

  [[nodiscard]] BSTR Get() const { return value_; }
  // Hands it over to whoever frees it then.
  [[nodiscard]] BSTR Release() { return std::exchange(value_, nullptr); }

 private:
  BSTR value_;
};

// A variant and what it holds.
class Variant {
 public:
  Variant() { VariantInit(&value_); }
  explicit Variant(std::string_view text);
  explicit Variant(bool value);
  explicit Variant(long value);
  // An argument that is left out.
  [[nodiscard]] static Variant Missing();
  // The deep copy of another one; what is passed by reference as a variant is looked up, other references stay.
  [[nodiscard]] static Variant CopyOf(const VARIANT& other);
  // The same, with every reference looked up.
  [[nodiscard]] static Variant ValueOf(const VARIANT& other);
  Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
  Variant& operator=(Variant&& other) noexcept;
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  ~Variant() { VariantClear(&value_); }

  [[nodiscard]] VARIANT* Get() { return &value_; }
  [[nodiscard]] const VARIANT& Value() const { return value_; }
  // Hands the content over: bits that whoever takes them clears.
  [[nodiscard]] VARIANT Release();

  // Converted by the rules of no language; raises 13 where it does not convert. Nothing said and NULL are "" and 0.
  [[nodiscard]] std::string Text() const;
  [[nodiscard]] long Number() const;

 private:
  VARIANT value_ = {};
};

// A counted reference to an object.
template <typename Interface>
class Reference {
 public:
  Reference() = default;
  // Takes over a reference that is counted already.
  explicit Reference(Interface* counted) : object_(counted) {}
  Reference(Reference&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Reference& operator=(Reference&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  Reference(const Reference&) = delete;
  Reference& operator=(const Reference&) = delete;
  ~Reference() {
    if (object_ != nullptr) object_->Release();
  }

  [[nodiscard]] Interface* Get() const { return object_; }
  [[nodiscard]] Interface** Out() { return &object_; }
  [[nodiscard]] explicit operator bool() const { return object_ != nullptr; }
  Interface* operator->() const { return object_; }
  // Hands the reference over, still counted.
  [[nodiscard]] Interface* Release() { return std::exchange(object_, nullptr); }

 private:
  Interface* object_ = nullptr;
};

}  // namespace twqb::windows
