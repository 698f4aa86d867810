// The row in hand of a send, as hooks and rules see it.
#pragma once

#include <optional>
#include <string>

#include "platform/Date.h"
#include "quickbooks/ResponseModel.h"

namespace twqb {

// The row in hand of a send.
struct SendRecord {
  std::string key;
  std::string linkId;  // empty: no twin
  bool lastUpdatedIsNull = false;
  std::string countedName;  // as built; the request cuts it
  bool isAtTop = false;     // what it belongs under has no link yet, so it would go above its place
  std::string parentLink;   // what it hangs under in QuickBooks, where a hook looked for it
  Record twin;              // nothing where there is none
  bool passedOver = false;  // a hook wants no more of the row than its progress
  // The row's date for the conflict rule, where a hook worked it out ahead of the rule; in it nothing: it could not be
  // read, which has been told.
  std::optional<std::optional<Date>> date = {};
};

}  // namespace twqb
