#include "quickbooks/QBSessionManager.h"

#include <utility>

#include "platform/PlatformError.h"

namespace twqb {

void QBSessionManager::OpenConnection(std::string_view applicationId, std::string_view applicationName) {
  transport_->OpenConnection(applicationId, applicationName);
}

void QBSessionManager::BeginSession(std::string_view fileName, OpenMode mode) {
  transport_->BeginSession(fileName, mode);
}

void QBSessionManager::EndSession() { transport_->EndSession(); }
void QBSessionManager::CloseConnection() { transport_->CloseConnection(); }
std::string QBSessionManager::GetCurrentCompanyFileName() { return transport_->GetCurrentCompanyFileName(); }
InterfaceVersion QBSessionManager::GetVersion() { return transport_->GetVersion(); }

MsgSetRequest QBSessionManager::CreateMsgSetRequest(std::string_view country, int major, int minor) {
  const auto form = messages::CountryFromName(country);
  if (!form) throw PlatformError(error::kNameUnknown);
  return {{.country = *form, .version = {major, minor}}, messages::MessageSet::Company};
}

MsgSetResponse QBSessionManager::DoRequests(const MsgSetRequest& set) { return DoDocument(DocumentOf(set, nullptr)); }

MsgSetResponse QBSessionManager::DoRequests(const MsgSetRequest& set, const MessageSetIds& ids) {
  return DoDocument(DocumentOf(set, &ids));
}

std::string QBSessionManager::DocumentOf(const MsgSetRequest& set, const MessageSetIds* ids) {
  return set.ToXMLString(&mended_, ids);
}

MsgSetResponse QBSessionManager::DoDocument(std::string_view document) { return Read(AnswerTo(document)); }

std::string QBSessionManager::AnswerTo(std::string_view document) { return transport_->ProcessDocument(document); }

MsgSetResponse QBSessionManager::Read(std::string answer) const { return MsgSetResponse(std::move(answer), machine_); }

MsgSetRequest QBSessionManager::CreateSubscriptionMsgSetRequest(int major, int minor) {
  return {{.country = messages::Country::US, .version = {major, minor}}, messages::MessageSet::Subscription};
}

MsgSetResponse QBSessionManager::DoSubscriptionRequests(const MsgSetRequest& set) {
  return DoSubscriptionRequests(set.ToXMLString());
}

MsgSetResponse QBSessionManager::DoSubscriptionRequests(std::string_view xml) {
  return MsgSetResponse(transport_->ProcessSubscription(xml), machine_);
}

}  // namespace twqb
