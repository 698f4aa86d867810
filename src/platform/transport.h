// The QuickBooks seam: one session with QuickBooks, text in and text out.
//
// Documents are qbXML in UTF-8. What QuickBooks answers, refusals of single requests included, is the returned text;
// PlatformError is for a call that failed as a whole, with QuickBooks' published number.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace twqb {

enum class OpenMode : std::uint8_t { SingleUser = 0, MultiUser = 1, DoNotCare = 2 };

struct InterfaceVersion {
  int major = 0;
  int minor = 0;
  int releaseLevel = 0;
  int releaseNumber = 0;
};

class Transport {
 public:
  virtual ~Transport() = default;

  [[nodiscard]] virtual InterfaceVersion GetVersion() = 0;
  virtual void OpenConnection(std::string_view applicationId, std::string_view applicationName) = 0;
  // An empty file name means the file that QuickBooks has open.
  virtual void BeginSession(std::string_view fileName, OpenMode mode) = 0;
  [[nodiscard]] virtual std::string GetCurrentCompanyFileName() = 0;
  [[nodiscard]] virtual std::string ProcessDocument(std::string_view document) = 0;
  [[nodiscard]] virtual std::string ProcessSubscription(std::string_view document) = 0;
  virtual void EndSession() = 0;
  virtual void CloseConnection() = 0;
};

// Makes the session object; raises when QuickBooks' interface is not installed.
class TransportFactory {
 public:
  virtual ~TransportFactory() = default;
  virtual std::unique_ptr<Transport> CreateTransport() = 0;
};

}  // namespace twqb
