#include "tests/windows/TimeEntryDouble.h"

#include <array>
#include <cstdlib>

#include "com/ListObject.h"
#include "tests/windows/Doubles.h"

namespace twqb::doubles {

namespace {

using windows::Variant;

constexpr ErrorNumber kTypeMismatch = 0x80020005;
constexpr UINT kResults = 4;

class DurationDouble : public Double<DurationDouble> {
 public:
  explicit DurationDouble(std::string text) : text_(std::move(text)) {}

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD kind, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* failure, UINT* wrongArgument) override {
    asked_ = parameters;
    return Double::Invoke(id, reserved, locale, kind, parameters, result, failure, wrongArgument);
  }

 protected:
  [[nodiscard]] const Table& Members() const override {
    static const Table members = {{"getvalue",
                                   [](const DurationDouble& own, const Arguments&) {
                                     own.Give();
                                     return Variant();
                                   }},
                                  {"getasstring", [](const DurationDouble& own, const Arguments&) {
                                     return Variant(std::string_view(own.text_));
                                   }}};
    return members;
  }

 private:
  void Give() const {
    if (asked_->cArgs != kResults || !text_.starts_with("PT")) throw PlatformError(kTypeMismatch, "Type mismatch.");
    // Each number ends at its unit.
    std::array<long, 3> parts = {};
    const char* rest = text_.c_str() + 2;
    for (auto& part : parts) {
      char* unit = nullptr;
      part = std::strtol(rest, &unit, 10);
      rest = unit + 1;
    }
    for (UINT i = 0; i < kResults; ++i) {
      const bool isSign = i == kResults - 1;
      const VARIANT& argument = asked_->rgvarg[kResults - 1 - i];
      VARIANT* const variable = argument.vt == (VT_BYREF | VT_VARIANT) ? argument.pvarVal : nullptr;
      if (variable != nullptr) {
        VariantClear(variable);
        variable->vt = isSign ? VT_BOOL : VT_I2;
      } else if (argument.vt != (VT_BYREF | (isSign ? VT_BOOL : VT_I2))) {
        throw PlatformError(kTypeMismatch, "Type mismatch.");
      }
      if (isSign) {
        *(variable != nullptr ? &variable->boolVal : argument.pboolVal) = VARIANT_FALSE;
      } else {
        *(variable != nullptr ? &variable->iVal : argument.piVal) = static_cast<short>(parts[i]);
      }
    }
  }

  std::string text_;
  const DISPPARAMS* asked_ = nullptr;
};

class TimeEntryDouble : public com::NamedObject {
 public:
  explicit TimeEntryDouble(const Record& record) : record_(record) {}

 protected:
  [[nodiscard]] bool Knows(const std::string& name) const override {
    try {
      static_cast<void>(record_[name]);
      return true;
    } catch (const PlatformError&) {
      return false;
    }
  }
  [[nodiscard]] Variant Member(const std::string& name, const Arguments& /*arguments*/) const override {
    const auto member = record_[name];
    if (!SameName(name, "Duration")) return ObjectVariant(com::MakeRecordObject(member));
    return ObjectVariant(member.IsNothing() ? nullptr : new DurationDouble(member.GetValue()));
  }

 private:
  Record record_;
};

}  // namespace

IDispatch* MakeTimeEntry(const Record& record) { return new TimeEntryDouble(record); }

}  // namespace twqb::doubles
