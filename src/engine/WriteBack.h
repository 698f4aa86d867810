// What a send writes into BillingDb behind QuickBooks' answer: the link of a row, and the date of one that has none.
#pragma once

#include <string>
#include <string_view>

#include "platform/Date.h"
#include "platform/ado.h"
#include "services/Sql.h"

namespace twqb {

// The rows that are written to: "WHERE" stands between the two.
struct RowPlace {
  std::string_view table;
  Sql condition;
};
// The row of that key, which goes in as it is: with a quote in it the statement fails.
[[nodiscard]] Sql KeyCondition(std::string_view keyColumn, std::string_view key);

// How many rows a link goes to. A link that went to none, or to several where one was meant, leads astray: the log says
// so.
enum class Linked : bool { OneRow, AnyRows };
void WriteLink(ado::Connection& connection, const RowPlace& place, std::string_view link,
               Linked linked = Linked::OneRow);

// Stamps the rows with the present moment.
void WriteStamp(ado::Connection& connection, const RowPlace& place);
// The same with another one.
void WriteStamp(ado::Connection& connection, const RowPlace& place, Date utc);

}  // namespace twqb
