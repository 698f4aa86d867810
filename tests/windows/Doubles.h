// Doubles of what is not to be had under wine: ADO on the embedded engine, QuickBooks' session library on a company
// file of the embedded kind, and a host's call-back class that writes down what it is told. They have the members that
// the adapters use, with the manners of the real ones.
//
// What they stand on the environment says: TWQB_DOUBLE_COMPANY names the company file, TWQB_DOUBLE_CLOCK the time that
// its clock stands still at and its zone ("2008-03-05T10:00:00 300", "daylight" behind it; none: the system's clock),
// TWQB_DOUBLE_DRIVE a drive whose files QuickBooks is to name without it (none: paths are full), TWQB_DOUBLE_CALLBACK
// the file for what the call-back hears (none: it forgets).
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
[[nodiscard]] IDispatch* MakeCallback();

}  // namespace twqb::doubles
