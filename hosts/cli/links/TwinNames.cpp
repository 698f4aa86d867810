#include "cli/links/TwinNames.h"

#include <fmt/core.h>

#include <memory>
#include <utility>
#include <vector>

#include "adapters/snapshot/Questions.h"
#include "cli/options/SystemSides.h"
#include "cli/options/TableArgument.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "quickbooks/Session.h"
#include "services/Conversions.h"
#include "services/Errors.h"

namespace twqb::cli {

namespace {

// An identifier that could be read as something else is none.
bool IsIdentifier(std::string_view id) {
  return !id.empty() && id.find_first_not_of("0123456789ABCDEFabcdef-") == std::string_view::npos;
}

std::string NameIn(const pugi::xml_node& record) {
  for (const auto* name : {"FullName", "Name", "RefNumber", "TxnDate"}) {
    if (const auto value = record.child(name)) return value.child_value();
  }
  return {};
}

// With the company that QuickBooks has open, for as long as this stands.
class Session {
 public:
  Session(TransportFactory& quickBooks, OpenMode mode) : transport_(quickBooks.CreateTransport()) {
    transport_->OpenConnection(kApplicationId, kApplicationName);
    try {
      transport_->BeginSession("", mode);
    } catch (const PlatformError&) {
      IgnoreErrors([&] { transport_->CloseConnection(); });
      throw;
    }
  }
  ~Session() {
    IgnoreErrors([&] { transport_->EndSession(); });
    IgnoreErrors([&] { transport_->CloseConnection(); });
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Asks for each kind that the table reads, until one has it.
  std::string NameOf(const Table& table, std::string_view id) {
    const snapshot::Watch nobody = [](std::string_view /*next*/) {};
    snapshot::Questions questions(*transport_, nobody);
    static_cast<void>(questions.AskHost());
    for (const auto& read : table.reads) {
      for (const auto request : read.requests) {
        if (request.empty()) continue;
        const auto answer = questions.AskIfKnown(
            "the record", fmt::format("<{0}><{1}>{2}</{1}></{0}>", request, read.transaction ? "TxnID" : "ListID", id));
        const auto record = answer ? answer->Response().first_child() : pugi::xml_node();
        if (record) return NameIn(record);
      }
    }
    return {};
  }

 private:
  std::unique_ptr<Transport> transport_;
};

}  // namespace

std::string WordForRow(const Table& table) {
  return table.lostLink.row.empty() ? TypedName(table.number) : std::string(table.lostLink.row);
}

std::string WordsOfRow(const ado::Recordset& row) {
  constexpr std::size_t kWords = 3;
  auto key = ToText(row.FieldAt(0));
  if (!key.starts_with('{')) return key;
  std::vector<std::string> words;
  for (int i = 1; i < row.FieldCount() && words.size() < kWords; ++i) {
    if (row.FieldName(i) == "QBLinkID" || IsNull(row.FieldAt(i))) continue;
    auto word = ToText(row.FieldAt(i));
    if (!word.empty() && !word.starts_with('{')) words.push_back(std::move(word));
  }
  return words.empty() ? key : Join(words, ", ");
}

std::string NameOfLinkedRow(const Workplace& place, const Table& table, std::string_view id) {
  if (!IsIdentifier(id)) return {};
  try {
    const auto provider = MakeBillingProvider();
    const auto connection = provider->CreateConnection();
    connection->SetConnectionString(place.billing);
    connection->Open();
    const auto rows = connection->Execute(
        Sql("SELECT * FROM {} WHERE {} AND QBLinkID = '{}'", table.rows.table, Sql::Own(table.rows.condition), id),
        nullptr);
    return rows->Eof() ? std::string() : WordsOfRow(*rows);
  } catch (const PlatformError&) {
    return {};
  }
}

std::string NameOfRecord(TransportFactory& quickBooks, OpenMode mode, const Table& table, std::string_view id) {
  if (!IsIdentifier(id)) return {};
  try {
    Session session(quickBooks, mode);
    return session.NameOf(table, id);
  } catch (const PlatformError&) {
    return {};
  } catch (const snapshot::SnapshotError&) {
    return {};
  }
}

}  // namespace twqb::cli
