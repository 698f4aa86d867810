#include "lists/modClients.h"

#include <array>
#include <vector>

#include "lists/SharedNames.h"
#include "platform/Text.h"
#include "quickbooks/IsCustomer.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/Sql.h"

namespace twqb {

namespace {

// --- Field mapping ---------------------------------------------------------------------------------------------------
// The spellings Clientcity, Clientstate, Clientfax and Clientsince are the hosts'; columns match without case.

using When = SendField::When;
using Cut = SendField::Cut;

constexpr std::array kSendFields = {
    SendField{.path = "CompanyName", .column = "ClientCompany"},
    SendField{.path = "FirstName", .column = "ClientFName"},
    SendField{.path = "LastName", .column = "ClientLName"},
    SendField{.path = "MiddleName", .column = "ClientMI"},
    SendField{.path = "Salutation", .column = "ClientMainSalt", .when = When::NotBlank, .cut = Cut::Uncut},
    SendField{.path = "BillAddress.Addr1", .column = "ClientCompany", .when = When::NotEmpty},
    SendField{.path = "BillAddress.Addr2", .column = "ClientStreet", .when = When::NotNull},
    SendField{.path = "BillAddress.Addr3", .column = "ClientStreet2", .when = When::NotNull},
    SendField{.path = "BillAddress.City", .column = "Clientcity"},
    SendField{.path = "BillAddress.State|Province|County", .column = "Clientstate"},
    SendField{.path = "BillAddress.PostalCode", .column = "ClientZip"},
    SendField{.path = "Phone", .column = "ClientPhone", .convert = FormatPhoneForQB},
    SendField{.path = "AltPhone", .column = "ClientMainPhone", .convert = FormatPhoneForQB},
    SendField{.path = "Fax", .column = "Clientfax", .convert = FormatPhoneForQB},
    SendField{.path = "Email", .column = "ClientEmail", .cut = Cut::Uncut},
};

constexpr std::array<std::string_view, 11> kBlankedColumns = {
    "ClientStreet",    "ClientStreet2", "ClientCity",  "ClientState",    "ClientZip",    "ClientPhone",
    "ClientMainPhone", "ClientFax",     "ClientEmail", "ClientMainSalt", "ClientCompany"};

// Addr1 and Addr4 are not read: the first line is the company, as on the way out.
constexpr std::array kGetFields = {
    GetField{.path = "Salutation", .column = "ClientMainSalt"},
    GetField{.path = "ListID", .column = "QBLinkID"},
    GetField{.path = "CompanyName", .column = "ClientCompany"},
    GetField{.path = "BillAddress.Addr2", .column = "ClientStreet"},
    GetField{.path = "BillAddress.Addr3", .column = "ClientStreet2"},
    GetField{.path = "BillAddress.City", .column = "ClientCity"},
    GetField{.path = "BillAddress.State|Province|County", .column = "ClientState"},
    GetField{.path = "BillAddress.PostalCode", .column = "ClientZip"},
    GetField{.path = "Phone", .column = "ClientPhone", .convert = CleanPhoneFromQB},
    GetField{.path = "AltPhone", .column = "ClientMainPhone", .convert = CleanPhoneFromQB},
    GetField{.path = "Fax", .column = "ClientFax", .convert = CleanPhoneFromQB},
    GetField{.path = "Email", .column = "ClientEmail"},
};

// --- Hooks of the send -----------------------------------------------------------------------------------------------

// The column is spelled without the final d, and the date goes in as the machine prints it: installations have both
// columns, and the conflict rule goes on comparing the other one.
Sql LastUpdatedStatement(std::string_view key, Date utc) {
  return Sql("UPDATE Client SET LastUpdate = '{}' WHERE ClientID = '{}';", GeneralDate(utc), key);
}

void ReadClientRow(const ado::Recordset& row, SendRecord& record) { record.countedName = GetQBClientName(row); }

// A client without any line of its address is sent with a dot as the first.
void FillDot(const RequestField& request, const ado::Recordset& /*row*/, RequestKind /*kind*/,
             const SendRecord& /*record*/) {
  const auto address = request["BillAddress"];
  for (const std::string_view line : {"Addr1", "Addr2", "Addr3"}) {
    if (address[line].IsSet()) return;
  }
  address["Addr1"].SetValue(".");
}

bool IsIncomplete(const PlatformError& raised) { return raised.number() == error::kRequestIncomplete; }

// --- Hooks of the get ------------------------------------------------------------------------------------------------

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

void WriteSinceAndStatus(ado::Recordset& row, const Record& customer) {
  if (const auto created = customer["TimeCreated"]; !created.IsNothing()) {
    row.SetField("Clientsince", ShortDate(created.GetDate()));
  }
  const auto active = customer["IsActive"];
  row.SetField("Status", std::string(!active.IsNothing() && active.GetBoolean() ? "Active" : "InActive"));
}

// --- Description -----------------------------------------------------------------------------------------------------

constexpr ListTable kClients = {
    .tableName = "Client",
    .keyColumn = "ClientID",
    .fallbackDateColumn = "ClientSince",
    .send =
        {
            .texts = {.routine = "MoveClientsToQB",
                      .shown = "Sending Clients to QuickBooks...",
                      .log = "Error tranfering Client to QB. Client ID = "},
            .recordLabel = "Client ID",
            .addRequest = "CustomerAddRq",
            .modRequest = "CustomerModRq",
            .fields = kSendFields,
            .readRow = ReadClientRow,
            .fillMore = FillDot,
            .lastUpdatedStatement = LastUpdatedStatement,
            .passesOver = IsIncomplete,
        },
    .get =
        {
            .texts = {.routine = "MoveClientsToTW",
                      .shown = "Getting Clients from QuickBooks...",
                      .log = "Error transfering Client to Tallywick. Client = ",
                      .missingConnection = "MoveClientsToTW - Connection Object is required!"},
            .blankedColumns = kBlankedColumns,
            .fields = kGetFields,
            .admit = AdmitThose<IsCustomer>,
            .writeFirst = WriteNames,
            .writeLast = WriteSinceAndStatus,
        },
};

constexpr std::array kClauses = {
    Clause{ClauseOn::LastSend,
           "{K}(({P}LastUpdated > {a})  OR {P}QBLinkID IS NULL OR {P}QBLinkID = '' OR {P}LastUpdated IS NULL) "},
    Clause{ClauseOn::Range, kChangedInRange},
    Clause{ClauseOn::Filter1, "{K}ClientID BETWEEN '{a}' AND '{b}' "},
    Clause{ClauseOn::Filter2,
           "{K}(ClientID IN(SELECT ClientID FROM ClientGroupDetail  WHERE CGID BETWEEN '{a}' AND '{b}')) "},
};

constexpr std::array kReads = {QuickBooksRead{
    .filterRoutine = "ApplyQBClientFilters",
    .copyRoutine = "GetQBClientRecordsInCollectionObject",
    .requests = {"CustomerQueryRq"},
    .choice = "ORCustomerListQuery",
    .readingText = "Reading Clients from QuickBooks...",
    .keeps = Keeps::Customers,
}};

constexpr std::array<std::string_view, 2> kCalled = {"ClientID", "ClientCompany"};
constexpr std::array<std::string_view, 3> kPerson = {"ClientFName", "ClientMI", "ClientLName"};
constexpr std::array<std::string_view, 2> kCustomerCalled = {"Name", "CompanyName"};

}  // namespace

constinit const Table kClientsTable = {
    .number = enClients,
    .name = "Clients",
    .names = {.send = "Clients", .get = "Customers"},
    .rows = {.table = "Client"},
    .selection =
        {
            .base = "SELECT ClientID, ClientFName, ClientLName, ClientMI, ClientCompany, ClientStreet, ClientStreet2, "
                    "ClientCity, ClientState, ClientZip,ClientPhone, ClientMainPhone, ClientFax, ClientEmail, "
                    "QBLinkID, LastUpdated, ClientSince, ClientMainSalt FROM Client ",
            .clauses = kClauses,
            .activeOnly = " AND (Client.Status IS NULL OR Client.Status = 'Active') ",
        },
    .send = MoveClientsToQB,
    .lostLink =
        {.row = "client",
         .record = "customer",
         .keys = {.table = "Client", .column = "ClientID", .adds = "CustomerAdd"},
         .called = {.columns = kCalled, .person = kPerson, .elements = kCustomerCalled, .sharing = kListsOfPeople},
         .takeUp = [](const LostAddition& lost) { return TakeUpListLink(kClientsTable, kClients, lost); }},
    .reads = kReads,
    .get = MoveClientsToTW,
    .billingDeletion = {.rows = "Client"},
    .quickBooksDeletion = {.kind = QuickBooksKind::List, .type = 2},
};

// --- Public routines -------------------------------------------------------------------------------------------------

void MoveClientsToQB(const SendCall& call) { SendList(kClientsTable, kClients, call); }

void MoveClientsToTW(const GetCall& call) { GetList(kClients, call); }

std::string GetQBClientName(const ado::Recordset& row) {
  auto key = ColumnText(row, "ClientID");
  auto name = ColumnText(row, "ClientCompany");
  if (name.empty() || UpperCase(name) == UpperCase(key)) return key;
  name.append(" (").append(key).append(")");
  return name;
}

void AssignClientFldValues(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                           const SendRecord& record) {
  FillRequest(kClients.send, request, row, kind, record);
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
      const auto rs = cn.OpenRecordset(Sql("SELECT ClientID from Client WHERE QBLinkID = '{}';", parent),
                                       ado::CursorType::Static, ado::LockType::ReadOnly);
      if (!rs->Eof()) {
        clientID = FirstField(*rs);
        return true;
      }
      if (customerRet["Sublevel"].GetInteger() <= 1) return false;
      // The parent is itself a job: its project knows the client.
      std::string found;
      IgnoreErrors([&] {
        found = FirstField(*cn.Execute(Sql("SELECT ClientID FROM Project WHERE QBLinkID = '{}';", parent), nullptr));
      });
      if (found.empty()) return false;
      clientID = found;
      return true;
    });
  });
}

}  // namespace twqb
