#include "tests/engine/SpiedHouse.h"

#include <utility>

#include "platform/Forwarding.h"
#include "tests/support/Decorating.h"

namespace twqb {

namespace {

class SpyTransport : public ForwardingTransport {
 public:
  SpyTransport(std::unique_ptr<Transport> inner, Traffic& traffic)
      : ForwardingTransport(std::move(inner)), traffic_(traffic) {}
  std::string ProcessDocument(std::string_view document) override {
    traffic_.documents.emplace_back(document);
    if (traffic_.canned.empty()) return ForwardingTransport::ProcessDocument(document);
    auto answer = std::move(traffic_.canned.front());
    traffic_.canned.pop_front();
    return answer;
  }

 private:
  Traffic& traffic_;
};

class SpyConnection : public ado::ForwardingConnection {
 public:
  SpyConnection(std::unique_ptr<ado::Connection> inner, Traffic& traffic)
      : ForwardingConnection(std::move(inner)), traffic_(traffic) {}
  std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
    traffic_.statements.emplace_back(statement);
    return ForwardingConnection::Execute(statement, rowsAffected);
  }
  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                ado::LockType lock) override {
    traffic_.statements.emplace_back(statement);
    return ForwardingConnection::OpenRecordset(statement, cursor, lock);
  }

 private:
  Traffic& traffic_;
};

}  // namespace

struct SpiedHouse::Spies {
  Spies(const Platform& seams, std::string_view script, Traffic& traffic)
      : faults(seams, ParseFaults(script)),
        wire(*faults.Decorated().quickbooks, traffic),
        statements(*faults.Decorated().database, traffic) {}

  FaultPlatform faults;
  DecoratingTransportFactory<SpyTransport, Traffic> wire;
  DecoratingProvider<SpyConnection, Traffic> statements;
};

SpiedHouse::SpiedHouse(HouseOptions options, std::string_view faults)
    : TestHouse(std::move(options)), spies_(std::make_unique<Spies>(Seams(), faults, traffic)) {
  EnterSpied();
}

SpiedHouse::~SpiedHouse() { Vars() = ModuleVariables{}; }

Platform SpiedHouse::Spied() {
  auto platform = spies_->faults.Decorated();
  platform.quickbooks = &spies_->wire;
  platform.database = &spies_->statements;
  return platform;
}

void SpiedHouse::EnterSpied() { Enter(Spied()); }
FaultPlatform& SpiedHouse::Faults() { return spies_->faults; }

void SpiedHouse::Connect(std::string_view country) {
  auto session = std::make_shared<QBSessionManager>(spies_->wire.CreateTransport(), TheMachine());
  session->OpenConnection("TWCLIENT", "test");
  session->BeginSession("", OpenMode::DoNotCare);
  Vars().g_QBSession = std::move(session);
  Vars().g_QBCountry = country;
  Vars().g_QBMajorVer = 3;
  Vars().g_QBMinorVer = 0;
}

QBSessionManager& SpiedHouse::Session() { return *Vars().g_QBSession; }

void SpiedHouse::Setting(std::string_view section, std::string_view key, std::string_view value) {
  machine.WritePrivateProfileString(section, key, value, Path("twqb.ini"));
}

std::string SpiedHouse::SettingOf(std::string_view section, std::string_view key) {
  return machine.GetPrivateProfileString(section, key, "(none)", 255, Path("twqb.ini"));
}

std::string SpiedHouse::AddCustomer(std::string_view fields, std::string_view tag) {
  return TextOf(Company("<CustomerAddRq><CustomerAdd>" + std::string(fields) + "</CustomerAdd></CustomerAddRq>", tag),
                "ListID");
}

std::string SpiedHouse::AddJob(std::string_view name, std::string_view parentId) {
  return AddCustomer("<Name>" + std::string(name) + "</Name><ParentRef><ListID>" + std::string(parentId) +
                     "</ListID></ParentRef>");
}

std::string SpiedHouse::CustomerField(std::string_view listId, std::string_view element, std::string_view tag) {
  return TextOf(Company("<CustomerQueryRq><ListID>" + std::string(listId) + "</ListID></CustomerQueryRq>", tag),
                element);
}

std::vector<std::string> SpiedHouse::Requests(std::string_view name) const {
  std::vector<std::string> found;
  for (const auto& document : traffic.documents) {
    for (auto& body : RequestsOf(document, name)) found.push_back(std::move(body));
  }
  return found;
}

std::vector<std::string> SpiedHouse::RequestsOf(std::string_view document, std::string_view name) {
  std::vector<std::string> found;
  const auto open = "<" + std::string(name) + " requestID=";
  const auto close = "</" + std::string(name) + ">";
  for (auto at = document.find(open); at != std::string_view::npos; at = document.find(open, at + 1)) {
    const auto from = document.find('>', at) + 1;
    found.emplace_back(document.substr(from, document.find(close, from) - from));
  }
  return found;
}

std::string SpiedHouse::TextOf(std::string_view xml, std::string_view element) {
  const auto open = "<" + std::string(element) + ">";
  const auto at = xml.find(open);
  if (at == std::string_view::npos) return "(none)";
  const auto from = at + open.size();
  return std::string(xml.substr(from, xml.find('<', from) - from));
}

std::vector<std::string> SpiedHouse::FormTexts() const {
  std::vector<std::string> texts;
  for (const auto& event : desk.FormEvents()) {
    if (event.kind == FormEventKind::Show) texts.push_back(event.state.action);
  }
  return texts;
}

std::string ErrorBoxEnd(std::string_view routine) {
  return " has occurred in the following procedure: " + std::string(routine) +
         ". Please contact Technical Support for assistance.";
}

std::string RefusalText(std::string_view message, int code, std::string_view severity) {
  return "QuickBooks has reported the following error:\r\n\r\n" + std::string(message) +
         "\r\nError Code: " + std::to_string(code) + "\r\nSeverity: " + std::string(severity) +
         "\r\nPlease contact your software vendor.";
}

}  // namespace twqb
