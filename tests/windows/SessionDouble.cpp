// The double of QBFC5.QBSessionManager, on a company file of the embedded kind.

#include <cstdlib>
#include <memory>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/system/FrozenMachine.h"
#include "tests/windows/AnswerDouble.h"
#include "tests/windows/Doubles.h"
#include "tests/windows/EnvironmentClock.h"

namespace twqb::doubles {

namespace {

using windows::Variant;

// QuickBooks' clock, which stands still, is the environment's: whoever lets time go by sets it.
class ClockOfEnvironment : public FrozenMachine {
 public:
  ClockOfEnvironment() : FrozenMachine({.libraryFolder = ".", .registryFile = {}}, *EnvironmentClock()) {}
  [[nodiscard]] Date Now() override { return EnvironmentClock()->now; }
};

std::unique_ptr<Machine> MakeMachine() {
  if (EnvironmentClock()) return std::make_unique<ClockOfEnvironment>();
  return std::make_unique<SystemMachine>(SystemMachineOptions{.libraryFolder = ".", .registryFile = {}});
}

Machine& OwnMachine() {
  static const auto machine = MakeMachine();
  return *machine;
}

company::CompanyTransportFactory& QuickBooks() {
  static const char* const company = std::getenv("TWQB_DOUBLE_COMPANY");
  static company::CompanyTransportFactory quickbooks(company == nullptr ? "" : company, OwnMachine());
  return quickbooks;
}

// A path as the run has it: where TWQB_DOUBLE_DRIVE names the drive of all its files, without that and with slashes.
std::string Spelled(std::string path) {
  const auto drive = FromEnvironment("TWQB_DOUBLE_DRIVE");
  if (drive.empty() || !path.starts_with(drive)) return path;
  return ReplaceAll(path.substr(drive.size()), "\\", "/");
}

class SessionDouble : public Double<SessionDouble> {
 protected:
  [[nodiscard]] const Table& Members() const override {
    static const Table members = {
        {"openconnection",
         [](const SessionDouble& own, const Arguments& given) {
           own.session_->OpenConnection(given.at(0).Text(), given.at(1).Text());
           return Variant();
         }},
        {"beginsession",
         [](const SessionDouble& own, const Arguments& given) {
           own.session_->BeginSession(given.at(0).Text(), static_cast<OpenMode>(given.at(1).Number()));
           return Variant();
         }},
        {"getcurrentcompanyfilename",
         [](const SessionDouble& own, const Arguments&) {
           return Variant(std::string_view(Spelled(own.session_->GetCurrentCompanyFileName())));
         }},
        {"getversion",
         [](const SessionDouble& own, const Arguments& given) {
           const auto version = own.session_->GetVersion();
           // Exactly these types, as the real one has it.
           if (given.size() != 4 || given[0].Value().vt != (VT_BYREF | VT_I2) ||
               given[2].Value().vt != (VT_BYREF | VT_I4)) {
             throw PlatformError(0x80020005, "Type mismatch.");
           }
           *given[0].Value().piVal = static_cast<short>(version.major);
           *given[1].Value().piVal = static_cast<short>(version.minor);
           *given[2].Value().plVal = version.releaseLevel;
           *given[3].Value().piVal = static_cast<short>(version.releaseNumber);
           return Variant();
         }},
        {"dorequestsfromxmlstring",
         [](const SessionDouble& own, const Arguments& given) {
           return ObjectVariant(MakeAnswer(own.session_->ProcessDocument(given.at(0).Text()), OwnMachine()));
         }},
        {"dosubscriptionrequestsfromxmlstring",
         [](const SessionDouble& own, const Arguments& given) {
           return ObjectVariant(MakeAnswer(own.session_->ProcessSubscription(given.at(0).Text()), OwnMachine()));
         }},
        {"endsession",
         [](const SessionDouble& own, const Arguments&) {
           own.session_->EndSession();
           return Variant();
         }},
        {"closeconnection", [](const SessionDouble& own, const Arguments&) {
           own.session_->CloseConnection();
           return Variant();
         }}};
    return members;
  }

 private:
  std::unique_ptr<Transport> session_ = QuickBooks().CreateTransport();
};

}  // namespace

IDispatch* MakeSession() { return new SessionDouble; }

}  // namespace twqb::doubles
