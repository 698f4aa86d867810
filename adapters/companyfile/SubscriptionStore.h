// Who is subscribed to what, as it stands in a company file: at most one subscription of each type under one
// subscriber.
//
// A part of the file's storage beside CompanyStore: it keeps what it is told, and every change belongs to a transaction
// that the caller opened. A subscriber's identifier matches without regard to case.
#pragma once

#include <string_view>

#include "adapters/companyfile/CompanyStore.h"

namespace twqb::company {

class SubscriptionStore {
 public:
  explicit SubscriptionStore(CompanyStore& store) : database_(store.Database()) {}

  // `type` is a name of the SubscriptionType enumeration: "Data", "UI", "UIExtension".
  [[nodiscard]] bool Has(std::string_view subscriberId, std::string_view type);
  [[nodiscard]] bool HasAny(std::string_view subscriberId);
  // `body` is what was subscribed to, as XML.
  void Insert(std::string_view subscriberId, std::string_view type, std::string_view body);
  void Remove(std::string_view subscriberId, std::string_view type);

 private:
  SqliteDatabase& database_;
};

}  // namespace twqb::company
