// The double of QBFC5.QBSessionManager, on the company file that the environment names in TWQB_DOUBLE_COMPANY.

#include <cstdlib>
#include <memory>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/system/SystemMachine.h"
#include "tests/windows/Doubles.h"

namespace twqb::doubles {

namespace {

using windows::Variant;

Machine& TheMachine() {
  static SystemMachine machine({.libraryFolder = ".", .registryFile = {}});
  return machine;
}

company::CompanyTransportFactory& QuickBooks() {
  static const char* const company = std::getenv("TWQB_DOUBLE_COMPANY");
  static company::CompanyTransportFactory quickbooks(company == nullptr ? "" : company, TheMachine());
  return quickbooks;
}

class AnswerDouble : public Double<AnswerDouble> {
 public:
  explicit AnswerDouble(std::string text) : text_(std::move(text)) {}

 protected:
  [[nodiscard]] const Table& Members() const override {
    static const Table members = {{"toxmlstring", [](const AnswerDouble& own, const Arguments&) {
                                     return Variant(std::string_view(own.text_));
                                   }}};
    return members;
  }

 private:
  std::string text_;
};

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
           return Variant(std::string_view(own.session_->GetCurrentCompanyFileName()));
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
           return ObjectVariant(new AnswerDouble(own.session_->ProcessDocument(given.at(0).Text())));
         }},
        {"dosubscriptionrequestsfromxmlstring",
         [](const SessionDouble& own, const Arguments& given) {
           return ObjectVariant(new AnswerDouble(own.session_->ProcessSubscription(given.at(0).Text())));
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
