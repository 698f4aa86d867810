// A QuickBooks that is written down beforehand: what version it reports, which file is open, and what it answers.
//
// It keeps no order of calls and no state; the noting house in front of it records what it was asked.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/transport.h"

namespace twqb {

struct Canned {
  InterfaceVersion version = {.major = 5, .minor = 0};
  std::string currentFile = "C:\\QB\\Firm.qbw";
  std::function<std::string(std::string_view document)> answer;
};

// An answer of one response. `status` are its attributes behind the request's number.
inline std::string CannedAnswer(std::string_view response, std::string_view status, std::string_view inside,
                                std::string_view set = "QBXMLMsgsRs") {
  std::string text = "<?xml version=\"1.0\" ?><QBXML><";
  text.append(set).append("><").append(response).append(" requestID=\"1\" ").append(status).append(">");
  text.append(inside).append("</").append(response).append("></").append(set).append("></QBXML>");
  return text;
}

inline constexpr std::string_view kStatusOk = "statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\"";

// The answer to the host query.
inline std::string HostAnswer(std::string_view fields) {
  return CannedAnswer("HostQueryRs", kStatusOk, "<HostRet>" + std::string(fields) + "</HostRet>");
}

class CannedQuickBooks : public TransportFactory {
 public:
  explicit CannedQuickBooks(Canned canned) : canned_(std::move(canned)) {
    if (!canned_.answer) {
      canned_.answer = [](std::string_view) { return HostAnswer("<MajorVersion>16</MajorVersion>"); };
    }
  }

  std::unique_ptr<Transport> CreateTransport() override { return std::make_unique<CannedTransport>(canned_); }

 private:
  class CannedTransport : public Transport {
   public:
    explicit CannedTransport(Canned canned) : canned_(std::move(canned)) {}
    InterfaceVersion GetVersion() override { return canned_.version; }
    void OpenConnection(std::string_view, std::string_view) override {}
    void BeginSession(std::string_view, OpenMode) override {}
    std::string GetCurrentCompanyFileName() override { return canned_.currentFile; }
    std::string ProcessDocument(std::string_view document) override { return canned_.answer(document); }
    std::string ProcessSubscription(std::string_view document) override { return canned_.answer(document); }
    void EndSession() override {}
    void CloseConnection() override {}

   private:
    Canned canned_;
  };

  Canned canned_;
};

}  // namespace twqb
