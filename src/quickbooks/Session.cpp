#include "quickbooks/Session.h"

#include "quickbooks/CompanyFileChecks.h"
#include "quickbooks/QBSessionManager.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

constexpr int kOldestMajor = 3;
constexpr int kOldestMinor = 0;

bool RefuseOldInterface() {
  TheDesk().ShowMessageBox({.text = "You are using an older version of QuickBooks. This\r\n"
                                    "application requires QuickBooks 2002 Pro or better\r\n"
                                    "version. If you are using QuickBooks 2002 Pro,\r\n"
                                    "please make sure you have downloaded the latest free\r\n"
                                    "update from Intuit's web site at www.quickbooks.com, or\r\n"
                                    "simply click on the Update option on your QuickBook's\r\n"
                                    "File menu.\r\n\r\n",
                            .title = "Message",
                            .icon = BoxIcon::Information});
  Vars().g_QBSession->CloseConnection();
  DropSession();
  return false;
}

bool Connect(OpenMode mode) {
  Vars().g_QBSession = std::make_shared<QBSessionManager>(Vars().platform.quickbooks->CreateTransport(), TheMachine());
  const auto session = Vars().g_QBSession;
  const auto version = session->GetVersion();
  if (version.major < kOldestMajor || (version.major == kOldestMajor && version.minor < kOldestMinor)) {
    return RefuseOldInterface();
  }
  session->OpenConnection(kApplicationId, kApplicationName);
  // QuickBooks first gets the chance to use whatever file it has open.
  if (IgnoreErrors([&] { session->BeginSession("", mode); })) return CheckCompanyFile();
  return RetryBeginSession(mode);
}

void Disconnect() {
  if (!Vars().g_QBSession) return;
  Vars().g_QBSession->EndSession();
  Vars().g_QBSession->CloseConnection();
  DropSession();
}

}  // namespace

std::shared_ptr<QBSessionManager> TheSession() {
  auto session = Vars().g_QBSession;
  if (!session) throw PlatformError(error::kObjectNothing);
  return session;
}

void DropSession() { Vars().g_QBSession.reset(); }

bool StartQBSession(bool blnConnect, bool blnSingleMode) {
  if (blnConnect && Vars().g_QBSession) return true;
  bool result = false;
  const auto raised = CatchError([&] {
    if (blnConnect) {
      result = Connect(blnSingleMode ? OpenMode::SingleUser : OpenMode::DoNotCare);
    } else {
      Disconnect();
      result = true;
    }
  });
  if (!raised) return result;
  ErrorHandler(raised->number(), raised->description(), "StartQBSession");
  // No session is left behind.
  if (const auto session = Vars().g_QBSession) {
    IgnoreErrors([&] { session->EndSession(); });
    IgnoreErrors([&] { session->CloseConnection(); });
    DropSession();
  }
  return false;
}

bool CheckQBSession(bool blnConnect, bool blnSingleMode) {
  if (!Vars().g_QBSession) {
    if (!blnConnect) {
      (void)StartQBSession(false, blnSingleMode);
      return false;
    }
    // If the edition check fails the session stays open, and the next call finds it.
    return StartQBSession(true, blnSingleMode) && GetQBEditionAndVersion();
  }
  if (blnConnect) return true;
  if (StartQBSession(false, blnSingleMode)) return true;
  DropSession();
  return false;
}

}  // namespace twqb
