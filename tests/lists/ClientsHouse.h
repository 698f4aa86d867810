// A house in which the client routines are called as the dispatcher calls them.
#pragma once

#include "lists/modClients.h"
#include "tests/lists/ListHouse.h"

namespace twqb {

inline constexpr TestedTable kClientTable = {
    .table = enClients, .name = "Client", .keyColumn = "ClientID", .toQB = MoveClientsToQB, .toTW = MoveClientsToTW};

class ClientsHouse : public ListHouse {
 public:
  explicit ClientsHouse(HouseOptions options = {}, std::string_view faults = {}, std::string_view country = "US")
      : ListHouse(kClientTable, std::move(options), faults, country) {}

  void Client(std::string_view columns, std::string_view values) { Row(columns, values); }
};

}  // namespace twqb
