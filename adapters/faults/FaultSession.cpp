#include "adapters/faults/FaultSession.h"

#include <string>
#include <utility>

#include "platform/Forwarding.h"

namespace twqb::faults {

namespace {

class FaultTransport : public ForwardingTransport {
 public:
  FaultTransport(std::unique_ptr<Transport> inner, FaultGate& gate, FaultAnswers& answers)
      : ForwardingTransport(std::move(inner)), gate_(gate), answers_(answers) {}

  InterfaceVersion GetVersion() override {
    return gate_.Run({"Transport.GetVersion", FaultPoint::GetVersion},
                     [&] { return ForwardingTransport::GetVersion(); });
  }
  void OpenConnection(std::string_view applicationId, std::string_view applicationName) override {
    gate_.Run({"Transport.OpenConnection", FaultPoint::OpenConnection},
              [&] { ForwardingTransport::OpenConnection(applicationId, applicationName); });
  }
  void BeginSession(std::string_view fileName, OpenMode mode) override {
    gate_.Run({"Transport.BeginSession", FaultPoint::BeginSession},
              [&] { ForwardingTransport::BeginSession(fileName, mode); });
  }
  std::string GetCurrentCompanyFileName() override {
    return gate_.Run({"Transport.GetCurrentCompanyFileName", FaultPoint::GetCurrentCompanyFileName},
                     [&] { return ForwardingTransport::GetCurrentCompanyFileName(); });
  }
  std::string ProcessDocument(std::string_view document) override {
    return gate_.Run({"Transport.ProcessDocument", FaultPoint::DoRequests}, [&] {
      return answers_.Process(document,
                              [&](std::string_view rest) { return ForwardingTransport::ProcessDocument(rest); });
    });
  }
  std::string ProcessSubscription(std::string_view document) override {
    return gate_.Run({"Transport.ProcessSubscription", FaultPoint::DoSubscriptionRequests}, [&] {
      return answers_.Process(document,
                              [&](std::string_view rest) { return ForwardingTransport::ProcessSubscription(rest); });
    });
  }
  void EndSession() override {
    gate_.Run({"Transport.EndSession", FaultPoint::EndSession}, [&] { ForwardingTransport::EndSession(); });
  }
  void CloseConnection() override {
    gate_.Run({"Transport.CloseConnection", FaultPoint::CloseConnection},
              [&] { ForwardingTransport::CloseConnection(); });
  }

 private:
  FaultGate& gate_;
  FaultAnswers& answers_;
};

}  // namespace

std::unique_ptr<Transport> FaultTransportFactory::CreateTransport() {
  auto inner = gate_.Run({"TransportFactory.CreateTransport", FaultPoint::CreateTransport},
                         [&] { return inner_.CreateTransport(); });
  return std::make_unique<FaultTransport>(std::move(inner), gate_, answers_);
}

}  // namespace twqb::faults
