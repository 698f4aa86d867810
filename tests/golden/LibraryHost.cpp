#include "tests/golden/LibraryHost.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/faults/Faults.h"
#include "adapters/scripted/ScriptedDesk.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/Callbacks.h"
#include "adapters/system/FrozenMachine.h"
#include "adapters/transcript/Transcript.h"
#include "adapters/transcript/TranscriptWriter.h"
#include "bridge/Tables.h"
#include "bridge/modTWQBBridge.h"
#include "engine/DependentPull.h"
#include "platform/Forwarding.h"
#include "quickbooks/IsCustomer.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/ModuleVariables.h"
#include "services/Settings.h"
#include "twqb/CTWQBBridge.h"

namespace twqb {

namespace {

using Arguments = std::vector<std::string>;

class WaitingDesk : public ForwardingDesk {
 public:
  WaitingDesk(Desk& inner, std::function<void(int)> beforeAnswer)
      : ForwardingDesk(inner), beforeAnswer_(std::move(beforeAnswer)) {}

  BoxAnswer ShowMessageBox(const MessageBox& box) override {
    if (box.buttons != BoxButtons::Ok) Wait();
    return ForwardingDesk::ShowMessageBox(box);
  }
  std::string OpenFileDialog(const FileDialog& dialog) override {
    Wait();
    return ForwardingDesk::OpenFileDialog(dialog);
  }

 private:
  void Wait() {
    ++questions_;
    if (beforeAnswer_) beforeAnswer_(questions_);
  }

  std::function<void(int)> beforeAnswer_;
  int questions_ = 0;
};

bool IsTrue(const std::string& word) {
  if (word != "True" && word != "False") throw std::runtime_error("neither True nor False: " + word);
  return word == "True";
}

EventValue Recorded(const std::string& word) {
  return word == "True" || word == "False" ? EventValue(IsTrue(word)) : EventValue(word);
}

enTables TableOf(const std::string& word) {
  if (word == "enAll") return enAll;
  if (word == "enCreditMemo") return enCreditMemo;
  for (const auto* table : BuiltInTables()) {
    if (word == "en" + std::string(table->name)) return table->number;
  }
  throw std::runtime_error("no table: " + word);
}

struct Operation {
  std::string_view name;
  std::size_t arguments;
  EventValue (*run)(CTWQBBridge& bridge, const Arguments& arguments);
};

// A property that is set.
template <auto kSet, auto kRead>
constexpr auto kSetter = [](CTWQBBridge& bridge, const Arguments& arguments) -> EventValue {
  (bridge.*kSet)(kRead(arguments[0]));
  return nullptr;
};
constexpr auto kText = [](const std::string& word) { return word; };

// A lookup; of the list the number of its records.
EventValue CountOf(const ReturnedList& list) { return list.IsNothing() ? EventValue() : EventValue(list.Count()); }
template <auto kOperation>
constexpr auto kList = [](CTWQBBridge& bridge, const Arguments&) { return CountOf((bridge.*kOperation)()); };
template <auto kOperation>
constexpr auto kListOfAll =
    [](CTWQBBridge& bridge, const Arguments& arguments) { return CountOf((bridge.*kOperation)(IsTrue(arguments[0]))); };

constexpr std::array kOperations = {
    Operation{"ConnectToQB", 1, [](auto& b, auto& a) -> EventValue { return b.ConnectToQB(IsTrue(a[0])); }},
    Operation{"SendDataToQB", 1, [](auto& b, auto& a) -> EventValue { return b.SendDataToQB(TableOf(a[0])); }},
    Operation{"GetDataFromQB", 1, [](auto& b, auto& a) -> EventValue { return b.GetDataFromQB(TableOf(a[0])); }},
    Operation{"DeleteTWRecord", 2, [](auto& b, auto& a) -> EventValue { return b.DeleteTWRecord(TableOf(a[0]), a[1]); }},
    Operation{"DeleteQBRecord", 2, [](auto& b, auto& a) -> EventValue { return b.DeleteQBRecord(TableOf(a[0]), a[1]); }},
    Operation{"SubscribeToQBEvents", 1, [](auto& b, auto& a) -> EventValue { return b.SubscribeToQBEvents(IsTrue(a[0])); }},
    Operation{"SaveSettings", 4, [](auto& b, auto& a) -> EventValue { return b.SaveSettings(a[0], a[1], a[2], a[3]); }},
    Operation{"GetAccounts", 0, kList<&CTWQBBridge::GetAccounts>},
    Operation{"GetEmployees", 1, kListOfAll<&CTWQBBridge::GetEmployees>},
    Operation{"GetCustomers", 1, kListOfAll<&CTWQBBridge::GetCustomers>},
    Operation{"GetVendors", 1, kListOfAll<&CTWQBBridge::GetVendors>},
    Operation{"GetInvoices", 0, kList<&CTWQBBridge::GetInvoices>},
    Operation{"GetPayments", 0, kList<&CTWQBBridge::GetPayments>},
    Operation{"GetExpCodes", 1, kListOfAll<&CTWQBBridge::GetExpCodes>},
    Operation{"GetActivities", 1, kListOfAll<&CTWQBBridge::GetActivities>},
    Operation{"GetTimeEntries", 0, kList<&CTWQBBridge::GetTimeEntries>},
    Operation{"GetChecks", 0, kList<&CTWQBBridge::GetChecks>},
    Operation{"GetBills", 0, kList<&CTWQBBridge::GetBills>},
    Operation{"GetClassItems", 0, kList<&CTWQBBridge::GetClassItems>},
    Operation{"GetPayrollItems", 0, kList<&CTWQBBridge::GetPayrollItems>},
    // The columns of the array, one for each account; False without one.
    Operation{"GetQBAccounts", 0,
              [](auto& b, auto&) -> EventValue {
                AccountArray accounts;
                return b.GetQBAccounts(accounts) ? EventValue(ListOf(accounts)) : EventValue(false);
              }},
    Operation{"HasQBAccounts", 0,
              [](auto& b, auto&) -> EventValue {
                AccountArray accounts;
                return b.GetQBAccounts(accounts);
              }},
    Operation{"IsJob", 1, [](auto& b, auto& a) -> EventValue { return b.IsJob(a[0]); }},
    Operation{"DisplaySettings", 0,
              [](auto& b, auto&) -> EventValue {
                b.DisplaySettings();
                return nullptr;
              }},
    Operation{"CloseProgressScreen", 0,
              [](auto& b, auto&) -> EventValue {
                b.CloseProgressScreen();
                return nullptr;
              }},
    // Properties.
    Operation{"NoRecsInQBTable", 0, [](auto& b, auto&) -> EventValue { return b.NoRecsInQBTable(); }},
    Operation{"IsSubscribedToQBEvents", 0, [](auto& b, auto&) -> EventValue { return b.IsSubscribedToQBEvents(); }},
    Operation{"QBDB", 0, [](auto& b, auto&) -> EventValue { return b.QBDB(); }},
    Operation{"QBCountry", 0, [](auto& b, auto&) -> EventValue { return b.QBCountry(); }},
    Operation{"QBHostVer", 0, [](auto& b, auto&) -> EventValue { return b.QBHostVer(); }},
    Operation{"UseTWSTable", 0, [](auto& b, auto&) -> EventValue { return b.UseTWSTable(); }},
    Operation{"IsSilentMode", 0, [](auto& b, auto&) -> EventValue { return b.IsSilentMode(); }},
    Operation{"SetIsSilentMode", 1, kSetter<&CTWQBBridge::SetIsSilentMode, IsTrue>},
    Operation{"SetUsePreferencesTW", 1, kSetter<&CTWQBBridge::SetUsePreferencesTW, IsTrue>},
    Operation{"SetPassedID", 1, kSetter<&CTWQBBridge::SetPassedID, kText>},
    Operation{"SetIsQBSingleMode", 1, kSetter<&CTWQBBridge::SetIsQBSingleMode, IsTrue>},
    Operation{"SetLeaveMsgBoxOpen", 1, kSetter<&CTWQBBridge::SetLeaveMsgBoxOpen, IsTrue>},
    Operation{"SetIsSync", 1, kSetter<&CTWQBBridge::SetIsSync, IsTrue>},
    Operation{"SetNoProgressBar", 1, kSetter<&CTWQBBridge::SetNoProgressBar, IsTrue>},
    Operation{"SetUseTWSTable", 1, kSetter<&CTWQBBridge::SetUseTWSTable, IsTrue>},
    Operation{"SetTWSettingsPath", 1, kSetter<&CTWQBBridge::SetTWSettingsPath, kText>},
    Operation{"SetConnectString", 1, kSetter<&CTWQBBridge::SetConnectString, kText>},
    // Routines that nothing calls yet, or that no operation shows alone.
    Operation{"GenerateGUID", 0, [](auto&, auto&) -> EventValue { return GenerateGUID(); }},
    Operation{"GetQBLinkIDOf", 2, [](auto&, auto& a) -> EventValue { return GetQBLinkIDOf(a[0], a[1]); }},
    Operation{"LoadActivityCodes", 0,
              [](auto&, auto&) -> EventValue {
                LoadActivityCodes();
                const auto& v = Vars();
                return EventList{v.g_ActivityComp, v.g_ActivityHol, v.g_ActivitySick, v.g_ActivityVac};
              }},
    // A table's routine for one record, outside of a transfer.
    Operation{"SendTableToQB", 2,
              [](auto&, auto& a) -> EventValue {
                return SendTableToQB(TableOf(a[0]), {.Filter1a = a[1], .Filter1b = a[1]});
              }},
    Operation{"GetTableFromQB", 2,
              [](auto&, auto& a) -> EventValue {
                return GetTableFromQB(TableOf(a[0]), SavedFilters::OneToGet(a[1]), ActiveOnly::False, false, nullptr);
              }},
    // On a connection of its own, as a transaction's routine has one.
    Operation{"TransferCustomerOrJobFromQB", 2,
              [](auto&, auto& a) -> EventValue {
                const auto connection = Vars().platform.database->CreateConnection();
                OpenConnection(*connection, nullptr, "");
                TransferCustomerOrJobFromQB(a[0], connection.get(), a[1]);
                return nullptr;
              }},
    // Of a record in an answer.
    Operation{"IsCustomer", 1,
              [](auto&, auto& a) -> EventValue {
                const MsgSetResponse answer(
                    "<QBXML><QBXMLMsgsRs><CustomerQueryRs statusCode=\"0\" statusSeverity=\"Info\">" + a[0] +
                    "</CustomerQueryRs></QBXMLMsgsRs></QBXML>");
                return IsCustomer(answer.GetAt(0).Detail());
              }},
    Operation{"gf_ReadSettings", 3,
              [](auto&, auto& a) -> EventValue { return gf_ReadSettings(a[0], a[1], Vars().g_TWSettingsPath, a[2]); }},
    Operation{"gf_WriteSettings", 3,
              [](auto&, auto& a) -> EventValue { return gf_WriteSettings(a[0], a[1], a[2], Vars().g_TWSettingsPath); }},
};

// The operation that the words call, with so many arguments.
const Operation& OperationOf(const HostWords& words) {
  const auto* const operation = std::ranges::find(kOperations, words.at(0), &Operation::name);
  if (operation == kOperations.end()) throw std::runtime_error("no operation of these runs: " + words[0]);
  if (words.size() - 1 != operation->arguments) throw std::runtime_error("wrong number of arguments: " + words[0]);
  return *operation;
}

bool IsFalse(const EventValue& value) {
  const auto* const flag = std::get_if<bool>(&value.Get());
  return flag != nullptr && !*flag;
}

}  // namespace

struct LibraryHost::Parts {
  explicit Parts(const HostOptions& options)
      : folder(options.folder),
        connect(options.connect),
        machine({.libraryFolder = folder, .registryFile = folder + "/registry.ini"},
                {.now = options.now, .zone = options.zone, .seed = 1}),
        quickbooks(options.company, machine),
        script(ParseAnswers(options.answers)),
        faults({.database = &database,
                .quickbooks = &quickbooks,
                .desk = &script,
                .machine = &machine,
                .callback = &callback},
               ParseFaults(options.faults)),
        writer(record),
        transcript(faults.Decorated(), writer),
        desk(*transcript.Decorated().desk, options.beforeAnswer) {
    auto seams = transcript.Decorated();
    seams.desk = &desk;
    Compose(seams, options.tables, nullptr, options.lostLinks);
  }
  ~Parts() {
    while (!objects.empty()) objects.pop_back();
    Compose({});
  }

  std::string folder;
  std::string connect;
  FrozenMachine machine;
  SqliteProvider database;
  company::CompanyTransportFactory quickbooks;
  ScriptedDesk script;
  RecordingCallbackFactory callback;
  FaultPlatform faults;
  std::ostringstream record;
  TranscriptWriter writer;
  TranscriptPlatform transcript;
  WaitingDesk desk;
  std::vector<std::unique_ptr<CTWQBBridge>> objects;
};

LibraryHost::LibraryHost(const HostOptions& options) : parts_(std::make_unique<Parts>(options)) {}
LibraryHost::~LibraryHost() = default;

void LibraryHost::BeginObject() {
  const bool isFirst = parts_->objects.empty();
  auto& bridge = *parts_->objects.emplace_back(std::make_unique<CTWQBBridge>());
  bridge.SetUsePreferencesTW(true);
  if (!isFirst) return;  // the rest belongs to the process
  bridge.SetConnectString(parts_->connect);
  bridge.SetTWSettingsPath(parts_->folder + "/twqb.ini");
}

void LibraryHost::EndObject() { parts_->objects.pop_back(); }
bool LibraryHost::HasObjects() const { return !parts_->objects.empty(); }

EventValue LibraryHost::Run(const HostWords& words) {
  return OperationOf(words).run(*parts_->objects.back(), {words.begin() + 1, words.end()});
}

void LibraryHost::Set(const HostWords& words) { Run(words); }

void LibraryHost::Call(const HostCall& call) {
  const auto name = call.recordedAs.empty() ? call.words.at(0) : call.recordedAs;
  static_cast<void>(OperationOf(call.words));
  EventList recorded;
  for (std::size_t i = 1; i < call.words.size(); ++i) recorded.push_back(Recorded(call.words[i]));

  auto& transcript = parts_->transcript;
  transcript.Call(name, recorded);
  try {
    const bool goesOn = std::ranges::all_of(call.first, [&](const auto& words) { return !IsFalse(Run(words)); });
    transcript.Return(name, goesOn ? Run(call.words) : EventValue());
  } catch (const PlatformError& raised) {
    transcript.Return(name, raised);
  }
}

std::string LibraryHost::TakeRecord() {
  auto record = parts_->record.str();
  parts_->record.str({});
  return record;
}

}  // namespace twqb
