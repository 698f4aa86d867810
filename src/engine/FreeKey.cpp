#include "engine/FreeKey.h"

#include <fmt/core.h>

#include <set>

#include "platform/PlatformError.h"
#include "services/Sql.h"

namespace twqb {

std::string FreeKey(ado::Connection& connection, const KeyColumn& place, std::string_view recordName,
                    const std::function<std::string(int counter)>& keyOf) {
  std::set<std::string> tried;
  for (int counter = 0;; ++counter) {
    auto key = keyOf(counter);
    if (!tried.insert(key).second) {
      throw PlatformError(error::kKeyInUse,
                          fmt::format("Every {} that can be made of the name \"{}\" is taken. Rename the "
                                      "record in QuickBooks or the rows in {}.",
                                      place.column, recordName, place.table));
    }
    const auto rows =
        connection.OpenRecordset(Sql("SELECT {0} from {1} WHERE {0} = '{2}';", place.column, place.table, key),
                                 ado::CursorType::Static, ado::LockType::ReadOnly);
    if (rows->Eof()) return key;
    rows->Close();
  }
}

}  // namespace twqb
