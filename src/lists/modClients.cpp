#include "lists/modClients.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <vector>

#include "platform/Text.h"
#include "quickbooks/IsCustomer.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "twqb/enTables.h"

namespace twqb {

namespace {

void ReadClientRow(const ado::Recordset& row, SendRecord& record);
void WriteClientFields(ado::Recordset& row, const Record& customer);

// The column is spelled without the final d, and the date goes in as the machine prints it: installations have both
// columns, and the conflict rule goes on comparing the other one.
std::string LastUpdatedStatement(std::string_view key, Date utc) {
  return fmt::format("UPDATE Client SET LastUpdate = '{}' WHERE ClientID = '{}';", GeneralDate(utc), key);
}

// --- Description -----------------------------------------------------------------------------------------------------

constexpr TableDescription kClients = {
    .table = enClients,
    .tableName = "Client",
    .keyColumn = "ClientID",
    .fallbackDateColumn = "ClientSince",
    .addRequest = "CustomerAddRq",
    .modRequest = "CustomerModRq",
    .sendRoutine = "MoveClientsToQB",
    .getRoutine = "MoveClientsToTW",
    .sendingText = "Sending Clients to QuickBooks...",
    .gettingText = "Getting Clients from QuickBooks...",
    .recordLabel = "Client ID",
    .sendLogText = "Error tranfering Client to QB. Client ID = ",
    .getLogText = "Error transfering Client to Tallywick. Client = ",
    .missingConnectionText = "MoveClientsToTW - Connection Object is required!",
    .lastUpdatedStatement = LastUpdatedStatement,
    .sendPassesOver = error::kRequestIncomplete,
    .readRow = ReadClientRow,
    .assign = Fill<AssignClientFldValues>,
    .belongs = IsCustomer,
    .writeFields = WriteClientFields,
};

// --- Field mapping ---------------------------------------------------------------------------------------------------
// The spellings Clientcity, Clientstate, Clientfax and Clientsince are the hosts'; columns match without case.

using When = SendField::When;
using Cut = SendField::Cut;

constexpr std::array kSendNames = {
    SendField{.path = "CompanyName", .column = "ClientCompany"},
    SendField{.path = "FirstName", .column = "ClientFName"},
    SendField{.path = "LastName", .column = "ClientLName"},
    SendField{.path = "MiddleName", .column = "ClientMI"},
    SendField{.path = "Salutation", .column = "ClientMainSalt", .when = When::NotBlank, .cut = Cut::Uncut},
};
// A client without any of these three is sent with a dot as its first line.
constexpr std::array kSendAddressLines = {
    SendField{.path = "BillAddress.Addr1", .column = "ClientCompany", .when = When::NotEmpty},
    SendField{.path = "BillAddress.Addr2", .column = "ClientStreet", .when = When::NotNull},
    SendField{.path = "BillAddress.Addr3", .column = "ClientStreet2", .when = When::NotNull},
};
constexpr std::array kSendContacts = {
    SendField{.path = "BillAddress.PostalCode", .column = "ClientZip"},
    SendField{.path = "Phone", .column = "ClientPhone", .convert = FormatPhoneForQB},
    SendField{.path = "AltPhone", .column = "ClientMainPhone", .convert = FormatPhoneForQB},
    SendField{.path = "Fax", .column = "Clientfax", .convert = FormatPhoneForQB},
    SendField{.path = "Email", .column = "ClientEmail", .cut = Cut::Uncut},
};

// Blanked before the record is read, so that a field which QuickBooks leaves out blanks the column.
constexpr std::array<std::string_view, 11> kBlankedColumns = {
    "ClientStreet",    "ClientStreet2", "ClientCity",  "ClientState",    "ClientZip",    "ClientPhone",
    "ClientMainPhone", "ClientFax",     "ClientEmail", "ClientMainSalt", "ClientCompany"};

constexpr std::array kGetSalutation = {GetField{.path = "Salutation", .column = "ClientMainSalt"}};
constexpr std::array kGetCompany = {GetField{.path = "CompanyName", .column = "ClientCompany"}};
// Addr1 and Addr4 are not read: the first line is the company, as on the way out.
constexpr std::array kGetStreets = {
    GetField{.path = "Addr2", .column = "ClientStreet"},
    GetField{.path = "Addr3", .column = "ClientStreet2"},
    GetField{.path = "City", .column = "ClientCity"},
};
constexpr std::array kGetPostalCode = {GetField{.path = "PostalCode", .column = "ClientZip"}};
constexpr std::array kGetContacts = {
    GetField{.path = "Phone", .column = "ClientPhone", .convert = CleanPhoneFromQB},
    GetField{.path = "AltPhone", .column = "ClientMainPhone", .convert = CleanPhoneFromQB},
    GetField{.path = "Fax", .column = "ClientFax", .convert = CleanPhoneFromQB},
    GetField{.path = "Email", .column = "ClientEmail"},
};

// --- Hooks -----------------------------------------------------------------------------------------------------------

void ReadClientRow(const ado::Recordset& row, SendRecord& record) { record.qbName = GetQBClientName(row); }

struct ContactName {
  std::string first;
  std::string last;
};

// The last word is the last name; all words before it are joined without a blank into the first name.
ContactName SplitContact(std::string_view contact) {
  auto words = Split(contact, ' ');
  std::erase_if(words, [](const std::string& word) { return word.empty(); });
  if (words.empty()) return {};
  if (words.size() == 1) return {.first = words[0], .last = {}};
  ContactName name;
  name.last = words.back();
  words.pop_back();
  for (const auto& word : words) name.first += word;
  return name;
}

void WriteNames(ado::Recordset& row, const Record& customer) {
  ContactName name{.first = customer["FirstName"].GetValueOrEmpty(), .last = customer["LastName"].GetValueOrEmpty()};
  if (name.first.empty() && name.last.empty()) name = SplitContact(customer["Contact"].GetValueOrEmpty());
  WriteCut(row, "ClientFName", name.first);
  WriteCut(row, "ClientLName", name.last);
  WriteCut(row, "ClientMI", customer["MiddleName"].GetValueOrEmpty());
}

void WriteClientFields(ado::Recordset& row, const Record& customer) {
  // 1. to 3.
  WriteNames(row, customer);
  // 4.
  for (const auto column : kBlankedColumns) row.SetField(column, std::string());
  // 5. to 7.
  GetFields(row, customer, kGetSalutation);
  row.SetField("QBLinkID", customer["ListID"].GetValue());
  GetFields(row, customer, kGetCompany);
  // 8.
  if (const auto address = customer["BillAddress"]; !address.IsNothing()) {
    GetFields(row, address, kGetStreets);
    GetFields(row, address, std::array{GetField{.path = StateFieldName(), .column = "ClientState"}});
    GetFields(row, address, kGetPostalCode);
  }
  // 9., 10.
  GetFields(row, customer, kGetContacts);
  // 11.
  if (const auto created = customer["TimeCreated"]; !created.IsNothing()) {
    row.SetField("Clientsince", ShortDate(created.GetDate()));
  }
  // 12.
  const auto active = customer["IsActive"];
  row.SetField("Status", std::string(!active.IsNothing() && active.GetBoolean() ? "Active" : "InActive"));
}

}  // namespace

// --- Public routines -------------------------------------------------------------------------------------------------

void MoveClientsToQB(const std::string& strSQL, bool optNever, bool optMostRecent, QBSessionManager& session) {
  SendTable(kClients, strSQL, optNever, optMostRecent, session);
}

void MoveClientsToTW(const RecordList& records, bool optNever, bool optMostRecent, Dependent isDependent,
                     ado::Connection* connection) {
  GetTable(kClients, records, optNever, optMostRecent, isDependent, connection);
}

std::string GetQBClientName(const ado::Recordset& row) {
  auto key = ColumnText(row, "ClientID");
  const auto company = ColumnText(row, "ClientCompany");
  if (company.empty() || UpperCase(company) == UpperCase(key)) return key;
  return fmt::format("{} ({})", company, key);
}

void AssignClientFldValues(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                           const SendRecord& record) {
  SendFields(request, row, kSendNames);
  if (SendFields(request, row, kSendAddressLines) == 0) request["BillAddress"]["Addr1"].SetValue(".");
  const std::array places = {
      SendField{.path = "City", .column = "Clientcity"},
      SendField{.path = StateFieldName(), .column = "Clientstate"},
  };
  SendFields(request["BillAddress"], row, places);
  SendFields(request, row, kSendContacts);
  if (kind == RequestKind::Add) SetCut(request["Name"], record.qbName);
}

bool QBCustomerExistsInTW(const Record& customerRet, std::string& clientID) {
  return RunAs("QBCustomerExistsInTW", false, [&] {
    if (IsCustomer(customerRet)) {
      TheDesk().ShowMessageBox({.text = "\"QBCustomerExistsInTW\" called in the wrong context!"});
      return false;
    }
    const auto parent = customerRet["ParentRef"]["ListID"].GetValue();
    return WithGlobalConnection([&] {
      auto& cn = GlobalConnection();
      const auto rs = cn.OpenRecordset(fmt::format("SELECT ClientID from Client WHERE QBLinkID = '{}';", parent),
                                       ado::CursorType::Static, ado::LockType::ReadOnly);
      if (!rs->Eof()) {
        clientID = FirstField(*rs);
        return true;
      }
      if (customerRet["Sublevel"].GetInteger() <= 1) return false;
      // The parent is itself a job: its project knows the client.
      std::string found;
      IgnoreErrors([&] {
        found = FirstField(
            *cn.Execute(fmt::format("SELECT ClientID FROM Project WHERE QBLinkID = '{}';", parent), nullptr));
      });
      if (found.empty()) return false;
      clientID = found;
      return true;
    });
  });
}

}  // namespace twqb
