// The host of golden runs through COM: it makes objects of the registered class, binds to the interface itself, and
// calls what it is ordered on standard input, one order a line, its words with tabs between:
//   object                        another object; calls go to the last one
//   set NAME ARGUMENTS            a property is set, or an operation called, unrecorded
//   first NAME ARGUMENTS          the same inside of the next call, ahead of it; after a False that is nothing itself
//   call RECORDED NAME ARGUMENTS  an operation is called or a property read, recorded under that name
//   release                       the end of the last object
//   hold MODE                     the program itself has a session with QuickBooks, of that mode, to its end
// Each is answered by "done", or by "failed" and what was wrong. The library's desk asks in between (GoldenHouse.cpp).

#include <oaidl.h>
#include <windows.h>

// clang-format off
#include <initguid.h>
#include "TWQBClient90_h.h"
// clang-format on

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <stdexcept>
#include <vector>

#include "adapters/transcript/Transcript.h"
#include "adapters/transcript/TranscriptWriter.h"
#include "adapters/windows/late/LateObject.h"
#include "platform/Text.h"
#include "tests/windows/EnvironmentClock.h"

namespace {

using twqb::EventList;
using twqb::EventValue;
using twqb::windows::Bstr;
using twqb::windows::LateObject;
using twqb::windows::Reference;
using twqb::windows::Variant;

using Link = _CTWQBBridge;
using Words = std::vector<std::string>;

void Require(HRESULT result) {
  if (result != S_OK) throw std::runtime_error("HRESULT " + std::to_string(static_cast<unsigned long>(result)));
}

VARIANT_BOOL FlagOf(const std::string& word) {
  if (word != "True" && word != "False") throw std::runtime_error("neither True nor False: " + word);
  return word == "True" ? VARIANT_TRUE : VARIANT_FALSE;
}

::enTables TableOf(const std::string& word) {
  static const std::map<std::string, ::enTables> kTables = {
      {"enEmployees", enEmployees},     {"enVendors", enVendors},
      {"enClients", enClients},         {"enProjects", enProjects},
      {"enActivities", enActivities},   {"enExpenseCodes", enExpenseCodes},
      {"enAccounts", enAccounts},       {"enExpenseLog", enExpenseLog},
      {"enTimeEntries", enTimeEntries}, {"enInvoices", enInvoices},
      {"enPayments", enPayments},       {"enVendorBill", enVendorBill},
      {"enEstimates", enEstimates},     {"enAll", enAll},
      {"enCreditMemo", enCreditMemo}};
  const auto table = kTables.find(word);
  if (table == kTables.end()) throw std::runtime_error("no table: " + word);
  return table->second;
}

// Each kind of operation, by what it takes and gives.
template <auto kOperation>
EventValue Flag(Link* link, const Words&) {
  VARIANT_BOOL result = VARIANT_FALSE;
  Require((link->*kOperation)(&result));
  return result != VARIANT_FALSE;
}
template <auto kOperation>
EventValue Number(Link* link, const Words&) {
  short result = 0;
  Require((link->*kOperation)(&result));
  return static_cast<int>(result);
}
template <auto kOperation>
EventValue Text(Link* link, const Words&) {
  BSTR result = nullptr;
  Require((link->*kOperation)(&result));
  auto text = twqb::windows::TextOf(result);
  SysFreeString(result);
  return text;
}
template <auto kOperation>
EventValue Nothing(Link* link, const Words&) {
  Require((link->*kOperation)());
  return nullptr;
}
template <auto kOperation>
EventValue SetFlag(Link* link, const Words& words) {
  Require((link->*kOperation)(FlagOf(words.at(0))));
  return nullptr;
}
template <auto kOperation>
EventValue SetText(Link* link, const Words& words) {
  Require((link->*kOperation)(Bstr(words.at(0)).Get()));
  return nullptr;
}
template <auto kOperation>
EventValue OfTable(Link* link, const Words& words) {
  VARIANT_BOOL result = VARIANT_FALSE;
  Require((link->*kOperation)(TableOf(words.at(0)), &result));
  return result != VARIANT_FALSE;
}
template <auto kOperation>
EventValue OfRecord(Link* link, const Words& words) {
  VARIANT_BOOL result = VARIANT_FALSE;
  Require((link->*kOperation)(TableOf(words.at(0)), Bstr(words.at(1)).Get(), &result));
  return result != VARIANT_FALSE;
}
template <auto kOperation>
EventValue OfFlag(Link* link, const Words& words) {
  VARIANT_BOOL result = VARIANT_FALSE;
  Require((link->*kOperation)(FlagOf(words.at(0)), &result));
  return result != VARIANT_FALSE;
}
// Of a list the number of its records.
EventValue CountOf(IDispatch* list) {
  if (list == nullptr) return nullptr;
  return static_cast<std::int64_t>(LateObject(list).Get("Count").Number());
}
template <auto kOperation>
EventValue List(Link* link, const Words&) {
  IDispatch* list = nullptr;
  Require((link->*kOperation)(&list));
  return CountOf(list);
}
template <auto kOperation>
EventValue ListOfAll(Link* link, const Words& words) {
  IDispatch* list = nullptr;
  Require((link->*kOperation)(FlagOf(words.at(0)), &list));
  return CountOf(list);
}

// The columns of the array, one for each account.
EventList AccountsOf(SAFEARRAY* accounts) {
  LONG lastRow = -1;
  LONG lastColumn = -1;
  Require(SafeArrayGetUBound(accounts, 1, &lastRow));
  Require(SafeArrayGetUBound(accounts, 2, &lastColumn));
  EventList columns;
  for (LONG column = 0; column <= lastColumn; ++column) {
    EventList account;
    for (LONG row = 0; row <= lastRow; ++row) {
      std::array<LONG, 2> place = {row, column};
      BSTR text = nullptr;
      Require(SafeArrayGetElement(accounts, place.data(), &text));
      account.emplace_back(twqb::windows::TextOf(text));
      SysFreeString(text);
    }
    columns.emplace_back(std::move(account));
  }
  return columns;
}

EventValue Accounts(Link* link, bool andTheirTexts) {
  SAFEARRAY* accounts = nullptr;
  VARIANT_BOOL done = VARIANT_FALSE;
  Require(link->GetQBAccounts(&accounts, &done));
  EventValue told = done != VARIANT_FALSE;
  if (done != VARIANT_FALSE && andTheirTexts) told = AccountsOf(accounts);
  if (accounts != nullptr) SafeArrayDestroy(accounts);
  return told;
}

EventValue SaveSettings(Link* link, const Words& words) {
  VARIANT_BOOL result = VARIANT_FALSE;
  Require(link->SaveSettings(Bstr(words.at(0)).Get(), Bstr(words.at(1)).Get(), Bstr(words.at(2)).Get(),
                             Bstr(words.at(3)).Get(), &result));
  return result != VARIANT_FALSE;
}

EventValue IsJob(Link* link, const Words& words) {
  VARIANT_BOOL result = VARIANT_FALSE;
  Require(link->IsJob(Bstr(words.at(0)).Get(), &result));
  return result != VARIANT_FALSE;
}

struct Operation {
  std::size_t arguments;
  std::function<EventValue(Link*, const Words&)> run;
};

const std::map<std::string, Operation>& Operations() {
  using L = Link;
  static const std::map<std::string, Operation> operations = {
      {"ConnectToQB", {1, OfFlag<&L::ConnectToQB>}},
      {"SendDataToQB", {1, OfTable<&L::SendDataToQB>}},
      {"GetDataFromQB", {1, OfTable<&L::GetDataFromQB>}},
      {"DeleteTWRecord", {2, OfRecord<&L::DeleteTWRecord>}},
      {"DeleteQBRecord", {2, OfRecord<&L::DeleteQBRecord>}},
      {"SubscribeToQBEvents", {1, OfFlag<&L::SubscribeToQBEvents>}},
      {"SaveSettings", {4, SaveSettings}},
      {"GetAccounts", {0, List<&L::GetAccounts>}},
      {"GetEmployees", {1, ListOfAll<&L::GetEmployees>}},
      {"GetCustomers", {1, ListOfAll<&L::GetCustomers>}},
      {"GetVendors", {1, ListOfAll<&L::GetVendors>}},
      {"GetInvoices", {0, List<&L::GetInvoices>}},
      {"GetPayments", {0, List<&L::GetPayments>}},
      {"GetExpCodes", {1, ListOfAll<&L::GetExpCodes>}},
      {"GetActivities", {1, ListOfAll<&L::GetActivities>}},
      {"GetTimeEntries", {0, List<&L::GetTimeEntries>}},
      {"GetChecks", {0, List<&L::GetChecks>}},
      {"GetBills", {0, List<&L::GetBills>}},
      {"GetClassItems", {0, List<&L::GetClassItems>}},
      {"GetPayrollItems", {0, List<&L::GetPayrollItems>}},
      {"GetQBAccounts", {0, [](L* link, const Words&) { return Accounts(link, true); }}},
      {"HasQBAccounts", {0, [](L* link, const Words&) { return Accounts(link, false); }}},
      {"IsJob", {1, IsJob}},
      {"DisplaySettings", {0, Nothing<&L::DisplaySettings>}},
      {"CloseProgressScreen", {0, Nothing<&L::CloseProgressScreen>}},
      {"NoRecsInQBTable", {0, Flag<&L::get_NoRecsInQBTable>}},
      {"IsSubscribedToQBEvents", {0, Flag<&L::get_IsSubscribedToQBEvents>}},
      {"QBDB", {0, Text<&L::get_QBDB>}},
      {"QBCountry", {0, Text<&L::get_QBCountry>}},
      {"QBHostVer", {0, Number<&L::get_QBHostVer>}},
      {"UseTWSTable", {0, Flag<&L::get_UseTWSTable>}},
      {"IsSilentMode", {0, Flag<&L::get_IsSilentMode>}},
      {"SetIsSilentMode", {1, SetFlag<&L::put_IsSilentMode>}},
      {"SetUsePreferencesTW", {1, SetFlag<&L::put_UsePreferencesTW>}},
      {"SetPassedID", {1, SetText<&L::put_PassedID>}},
      {"SetIsQBSingleMode", {1, SetFlag<&L::put_IsQBSingleMode>}},
      {"SetLeaveMsgBoxOpen", {1, SetFlag<&L::put_LeaveMsgBoxOpen>}},
      {"SetIsSync", {1, SetFlag<&L::put_IsSync>}},
      {"SetNoProgressBar", {1, SetFlag<&L::put_NoProgressBar>}},
      {"SetUseTWSTable", {1, SetFlag<&L::put_UseTWSTable>}},
      {"SetTWSettingsPath", {1, SetText<&L::put_TWSettingsPath>}},
      {"SetConnectString", {1, SetText<&L::put_ConnectString>}}};
  return operations;
}

class Host {
 public:
  void Obey(Words words) {
    const auto order = words.at(0);
    words.erase(words.begin());
    if (order == "object") return Begin();
    if (order == "release") return Release();
    if (order == "set") return static_cast<void>(Run(words));
    if (order == "first") return first_.push_back(words);
    if (order == "call") return Call(words);
    if (order == "hold") return Hold(std::stol(words.at(0)));
    throw std::runtime_error("no order: " + order);
  }

 private:
  void Begin() {
    Reference<Link> link;
    Require(CoCreateInstance(CLSID_CTWQBBridge, nullptr, CLSCTX_INPROC_SERVER, IID__CTWQBBridge,
                             reinterpret_cast<void**>(link.Out())));
    links_.push_back(std::move(link));
  }
  void Release() {
    if (links_.empty()) throw std::runtime_error("no object");
    links_.pop_back();
  }
  void Hold(long mode) {
    quickbooks_ = LateObject::Create("QBFC5.QBSessionManager");
    std::vector<Variant> name;
    name.emplace_back(std::string_view("HOLDER"));
    name.emplace_back(std::string_view("Another program"));
    quickbooks_.Call("OpenConnection", std::move(name));
    std::vector<Variant> file;
    file.emplace_back(std::string_view());
    file.emplace_back(mode);
    quickbooks_.Call("BeginSession", std::move(file));
  }
  EventValue Run(const Words& words) {
    if (links_.empty()) throw std::runtime_error("no object");
    const auto operation = Operations().find(words.at(0));
    if (operation == Operations().end()) throw std::runtime_error("no operation: " + words[0]);
    if (words.size() - 1 != operation->second.arguments) throw std::runtime_error("wrong number: " + words[0]);
    return operation->second.run(links_.back().Get(), {words.begin() + 1, words.end()});
  }
  void Call(const Words& words) {
    const auto& recorded = words.at(0);
    EventList arguments;
    for (std::size_t i = 2; i < words.size(); ++i) {
      const bool isFlag = words[i] == "True" || words[i] == "False";
      arguments.push_back(isFlag ? EventValue(words[i] == "True") : EventValue(words[i]));
    }
    transcript_.Call(recorded, arguments);
    const auto isFalse = [](const EventValue& value) {
      const auto* const flag = std::get_if<bool>(&value.Get());
      return flag != nullptr && !*flag;
    };
    const bool goesOn = std::ranges::none_of(first_, [&](const auto& ahead) { return isFalse(Run(ahead)); });
    first_.clear();
    transcript_.Return(recorded, goesOn ? Run({words.begin() + 1, words.end()}) : EventValue());
  }

  std::vector<Reference<Link>> links_;
  LateObject quickbooks_;
  std::vector<Words> first_;
  // The library's own events go to the same file.
  std::ofstream record_{twqb::FromEnvironment("TWQB_GOLDEN_NOTES") + "/record", std::ios::binary | std::ios::app};
  twqb::TranscriptWriter writer_{record_};
  twqb::TranscriptPlatform transcript_{{}, writer_};
};

bool ReadLine(std::string& line) {
  line.clear();
  for (int c = std::getchar(); c != '\n'; c = std::getchar()) {
    if (c == EOF) return false;
    line += static_cast<char>(c);
  }
  return true;
}

}  // namespace

int main() {
  if (FAILED(CoInitialize(nullptr))) return 2;
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  {
    Host host;
    std::printf("ready\n");
    std::fflush(stdout);
    for (std::string line; ReadLine(line);) {
      try {
        host.Obey(twqb::Split(line, '\t'));
        std::printf("done\n");
      } catch (const std::exception& failure) {
        std::printf("failed\t%s\n", failure.what());
      }
      std::fflush(stdout);
    }
  }
  CoUninitialize();
  return 0;
}
