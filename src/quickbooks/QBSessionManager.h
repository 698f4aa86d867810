// The session manager: the operations that the library uses of QuickBooks' interface, over a transport of text.
//
// Every call may raise PlatformError with the transport's number.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/machine.h"
#include "platform/transport.h"
#include "quickbooks/Recovery.h"
#include "quickbooks/RequestModel.h"
#include "quickbooks/ResponseModel.h"

namespace twqb {

class QBSessionManager {
 public:
  // `machine` tells which moments in answers lie in daylight time; it must outlive them.
  QBSessionManager(std::unique_ptr<Transport> transport, Machine& machine)
      : transport_(std::move(transport)), machine_(&machine) {}

  void OpenConnection(std::string_view applicationId, std::string_view applicationName);
  // An empty file name means the file that QuickBooks has open.
  void BeginSession(std::string_view fileName, OpenMode mode);
  void EndSession();
  void CloseConnection();
  [[nodiscard]] std::string GetCurrentCompanyFileName();
  [[nodiscard]] InterfaceVersion GetVersion();

  // An empty message set of that form. Raises 438 for a country that has no form.
  [[nodiscard]] MsgSetRequest CreateMsgSetRequest(std::string_view country, int major, int minor);
  [[nodiscard]] MsgSetResponse DoRequests(const MsgSetRequest& set);
  // The same for a set whose outcome QuickBooks is to keep, or is asked for. Nobody but Recovery calls it.
  [[nodiscard]] MsgSetResponse DoRequests(const MsgSetRequest& set, const MessageSetIds& ids);
  // The same in its steps: written, sent, read.
  [[nodiscard]] std::string DocumentOf(const MsgSetRequest& set, const MessageSetIds* ids);
  [[nodiscard]] std::string AnswerTo(std::string_view document);
  [[nodiscard]] MsgSetResponse Read(std::string answer) const;
  [[nodiscard]] MsgSetResponse DoDocument(std::string_view document);
  // What QuickBooks keeps of the additions of this session.
  [[nodiscard]] twqb::Recovery& Recovery() { return recovery_; }
  // Whether a text could not go as it was since this was last asked.
  [[nodiscard]] bool TakeMended() { return std::exchange(mended_, false); }

  [[nodiscard]] MsgSetRequest CreateSubscriptionMsgSetRequest(int major, int minor);
  [[nodiscard]] MsgSetResponse DoSubscriptionRequests(const MsgSetRequest& set);
  // The same from the set's XML text.
  [[nodiscard]] MsgSetResponse DoSubscriptionRequests(std::string_view xml);

 private:
  std::unique_ptr<Transport> transport_;
  Machine* machine_;
  bool mended_ = false;
  twqb::Recovery recovery_;
};

}  // namespace twqb
