// An object of another program's, called by the names of its members as scripts do.
//
// What stands behind the seams on Windows is reached through it: QuickBooks' session library, the call-back class. A
// failure is a PlatformError with the number and the text that the object gave, as the error box prints them.
#pragma once

#include <string_view>
#include <vector>

#include "adapters/windows/late/Owned.h"

namespace twqb::windows {

class LateObject {
 public:
  // Nothing: each call raises 91.
  LateObject() = default;
  // Takes over a counted reference.
  explicit LateObject(IDispatch* counted) : object_(counted) {}

  // Makes an object of the class; raises the system's number where it is not there.
  [[nodiscard]] static LateObject Create(std::string_view className);

  // Raises 438 for a name that the object does not know, and the system's number where it can't be asked.
  Variant Call(std::string_view method, std::vector<Variant> arguments = {});
  [[nodiscard]] Variant Get(std::string_view property, std::vector<Variant> arguments = {});
  void Put(std::string_view property, Variant value);
  // An object that a call, or a property, gave; raises 91 where it gave none.
  [[nodiscard]] LateObject CallObject(std::string_view method, std::vector<Variant> arguments = {});
  [[nodiscard]] LateObject GetObject(std::string_view property, std::vector<Variant> arguments = {});
  // This object as an argument of another one's call.
  [[nodiscard]] Variant AsVariant() const;

 private:
  Variant Invoke(std::string_view name, WORD kind, std::vector<Variant> arguments);

  Reference<IDispatch> object_;
};

}  // namespace twqb::windows
