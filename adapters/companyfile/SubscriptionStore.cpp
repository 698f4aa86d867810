#include "adapters/companyfile/SubscriptionStore.h"

namespace twqb::company {

bool SubscriptionStore::Has(std::string_view subscriberId, std::string_view type) {
  return database_
      .Query("SELECT 1 FROM subscription WHERE subscriber_id = ? COLLATE NOCASE AND kind = ?", {subscriberId, type})
      .Next();
}

bool SubscriptionStore::HasAny(std::string_view subscriberId) {
  return database_.Query("SELECT 1 FROM subscription WHERE subscriber_id = ? COLLATE NOCASE LIMIT 1", {subscriberId})
      .Next();
}

void SubscriptionStore::Insert(std::string_view subscriberId, std::string_view type, std::string_view body) {
  database_.Execute("INSERT INTO subscription VALUES (?, ?, ?)", {subscriberId, type, body});
}

void SubscriptionStore::Remove(std::string_view subscriberId, std::string_view type) {
  database_.Execute("DELETE FROM subscription WHERE subscriber_id = ? COLLATE NOCASE AND kind = ?",
                    {subscriberId, type});
}

}  // namespace twqb::company
