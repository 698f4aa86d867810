// Doubles of what is not to be had under wine: ADO on the embedded engine, and QuickBooks' session library on a company
// file of the embedded kind. They have the members that the adapters use, with the manners of the real ones.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "com/NamedObject.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

namespace twqb::doubles {

using Arguments = std::vector<windows::Variant>;

// An object whose members stand in a table.
template <typename Own>
class Double : public com::NamedObject {
 protected:
  using Read = windows::Variant (*)(const Own&, const Arguments&);
  using Table = std::map<std::string, Read>;

  [[nodiscard]] virtual const Table& Members() const = 0;

  [[nodiscard]] bool Knows(const std::string& name) const override { return Members().contains(FoldCase(name)); }
  [[nodiscard]] windows::Variant Member(const std::string& name, const Arguments& arguments) const override {
    return Members().at(FoldCase(name))(static_cast<const Own&>(*this), arguments);
  }
};

[[nodiscard]] inline windows::Variant ObjectVariant(IDispatch* counted) {
  windows::Variant object;
  object.Get()->vt = VT_DISPATCH;
  object.Get()->pdispVal = counted;
  return object;
}

[[nodiscard]] IDispatch* MakeConnection();
[[nodiscard]] IDispatch* MakeRecordset();
[[nodiscard]] IDispatch* MakeSession();

}  // namespace twqb::doubles
