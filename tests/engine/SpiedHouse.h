// A test house whose wire and statements are written down, and whose calls can be made to fail.
//
// For the tests of the engine and of the layers above it. The spies stand next to the library, scripted faults behind
// them: a document or statement counts as sent even when a fault strikes it.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/faults/Faults.h"
#include "platform/Forwarding.h"
#include "platform/Text.h"
#include "quickbooks/QBSessionManager.h"
#include "services/ModuleVariables.h"
#include "tests/support/TestHouse.h"

namespace twqb {

// What crossed a seam, in order.
struct Traffic {
  std::vector<std::string> documents;
  std::vector<std::string> statements;
  std::deque<std::string> canned;  // answers given instead of QuickBooks' own, first come first served
};

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

class SpyTransportFactory : public TransportFactory {
 public:
  SpyTransportFactory(TransportFactory& inner, Traffic& traffic) : inner_(inner), traffic_(traffic) {}
  std::unique_ptr<Transport> CreateTransport() override {
    return std::make_unique<SpyTransport>(inner_.CreateTransport(), traffic_);
  }

 private:
  TransportFactory& inner_;
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

class SpyProvider : public ado::Provider {
 public:
  SpyProvider(ado::Provider& inner, Traffic& traffic) : inner_(inner), traffic_(traffic) {}
  std::unique_ptr<ado::Connection> CreateConnection() override {
    return std::make_unique<SpyConnection>(inner_.CreateConnection(), traffic_);
  }

 private:
  ado::Provider& inner_;
  Traffic& traffic_;
};

class SpiedHouse : public TestHouse {
 public:
  // `faults` is the text of a faults file.
  explicit SpiedHouse(HouseOptions options = {}, std::string_view faults = {})
      : TestHouse(std::move(options)),
        faults_(Seams(), ParseFaults(faults)),
        wire_(*faults_.Decorated().quickbooks, traffic),
        statements_(*faults_.Decorated().database, traffic) {
    EnterSpied();
  }
  ~SpiedHouse() { Vars() = ModuleVariables{}; }

  // The seams that the library is composed with.
  [[nodiscard]] Platform Spied() {
    auto platform = faults_.Decorated();
    platform.quickbooks = &wire_;
    platform.database = &statements_;
    return platform;
  }
  void EnterSpied() { Enter(Spied()); }
  [[nodiscard]] FaultPlatform& Faults() { return faults_; }

  // A session as after a found edition, without the questions of a first run.
  void Connect(std::string_view country = "US") {
    auto session = std::make_shared<QBSessionManager>(wire_.CreateTransport(), TheMachine());
    session->OpenConnection("TWCLIENT", "test");
    session->BeginSession("", OpenMode::DoNotCare);
    Vars().g_QBSession = std::move(session);
    Vars().g_QBCountry = country;
    Vars().g_QBMajorVer = 3;
    Vars().g_QBMinorVer = 0;
  }
  [[nodiscard]] static QBSessionManager& Session() { return *Vars().g_QBSession; }

  void Setting(std::string_view section, std::string_view key, std::string_view value) {
    machine.WritePrivateProfileString(section, key, value, Path("twqb.ini"));
  }
  [[nodiscard]] std::string SettingOf(std::string_view section, std::string_view key) {
    return machine.GetPrivateProfileString(section, key, "(none)", 255, Path("twqb.ini"));
  }

  // Adds a customer with its fields in wire order, names included; its ListID.
  std::string AddCustomer(std::string_view fields, std::string_view tag = "3.0") {
    return TextOf(Company("<CustomerAddRq><CustomerAdd>" + std::string(fields) + "</CustomerAdd></CustomerAddRq>", tag),
                  "ListID");
  }
  // Adds a job below a customer; its ListID.
  std::string AddJob(std::string_view name, std::string_view parentId) {
    return AddCustomer("<Name>" + std::string(name) + "</Name><ParentRef><ListID>" + std::string(parentId) +
                       "</ListID></ParentRef>");
  }
  // The value of an element of the customer with that identifier; "(none)" when it has none.
  std::string CustomerField(std::string_view listId, std::string_view element, std::string_view tag = "3.0") {
    return TextOf(Company("<CustomerQueryRq><ListID>" + std::string(listId) + "</ListID></CustomerQueryRq>", tag),
                  element);
  }

  // The insides of all requests of that name that went over the wire, in order.
  [[nodiscard]] std::vector<std::string> Requests(std::string_view name) const {
    std::vector<std::string> found;
    for (const auto& document : traffic.documents) {
      for (auto& body : RequestsOf(document, name)) found.push_back(std::move(body));
    }
    return found;
  }
  [[nodiscard]] static std::vector<std::string> RequestsOf(std::string_view document, std::string_view name) {
    std::vector<std::string> found;
    const auto open = "<" + std::string(name) + " requestID=";
    const auto close = "</" + std::string(name) + ">";
    for (auto at = document.find(open); at != std::string_view::npos; at = document.find(open, at + 1)) {
      const auto from = document.find('>', at) + 1;
      found.emplace_back(document.substr(from, document.find(close, from) - from));
    }
    return found;
  }
  // The text of the first element of that name; "(none)" without one.
  [[nodiscard]] static std::string TextOf(std::string_view xml, std::string_view element) {
    const auto open = "<" + std::string(element) + ">";
    const auto at = xml.find(open);
    if (at == std::string_view::npos) return "(none)";
    const auto from = at + open.size();
    return std::string(xml.substr(from, xml.find('<', from) - from));
  }

  // The actions that the progress form was shown with.
  [[nodiscard]] std::vector<std::string> FormTexts() const {
    std::vector<std::string> texts;
    for (const auto& event : desk.FormEvents()) {
      if (event.kind == FormEventKind::Show) texts.push_back(event.state.action);
    }
    return texts;
  }

  Traffic traffic;

 private:
  FaultPlatform faults_;
  SpyTransportFactory wire_;
  SpyProvider statements_;
};

// The same machine in another time zone.
class MachineInZone : public ForwardingMachine {
 public:
  MachineInZone(Machine& inner, const TimeZoneInformation& zone) : ForwardingMachine(inner), zone_(zone) {}
  TimeZoneInformation GetTimeZoneInformation() override { return zone_; }
  int DaylightMinutes(Date /*standardTime*/) override {
    return zone_.state == TimeZoneState::Daylight ? -zone_.daylightBias : 0;
  }

 private:
  TimeZoneInformation zone_;
};

// What ErrorHandler shows for an error of the general kind.
inline std::string ErrorBoxEnd(std::string_view routine) {
  return " has occurred in the following procedure: " + std::string(routine) +
         ". Please contact Technical Support for assistance.";
}

// QuickBooks' refusal in the common words.
inline std::string RefusalText(std::string_view message, int code, std::string_view severity) {
  return "QuickBooks has reported the following error:\r\n\r\n" + std::string(message) +
         "\r\nError Code: " + std::to_string(code) + "\r\nSeverity: " + std::string(severity) +
         "\r\nPlease contact your software vendor.";
}

}  // namespace twqb
