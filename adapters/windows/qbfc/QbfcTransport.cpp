#include "adapters/windows/qbfc/QbfcTransport.h"

#include <array>
#include <optional>
#include <string>

#include "adapters/windows/late/LateObject.h"
#include "adapters/windows/qbfc/LastAnswer.h"
#include "platform/PlatformError.h"

namespace twqb::windows {

namespace {

// 5 is the one that this product has always been bound to; 9 has never been.
constexpr std::array<std::string_view, 12> kClasses = {
    "QBFC5.QBSessionManager",  "QBFC6.QBSessionManager",  "QBFC7.QBSessionManager",  "QBFC8.QBSessionManager",
    "QBFC10.QBSessionManager", "QBFC11.QBSessionManager", "QBFC12.QBSessionManager", "QBFC13.QBSessionManager",
    "QBFC14.QBSessionManager", "QBFC15.QBSessionManager", "QBFC16.QBSessionManager", "QBFC17.QBSessionManager"};

constexpr ErrorNumber kNotInstalled = 0x8007007E;  // a module is not there
constexpr ErrorNumber kNotRegistered = 0x80040154;

bool IsInstalled(std::string_view className) {
  CLSID id = {};
  return SUCCEEDED(CLSIDFromProgID(Wide(className).c_str(), &id));
}

// Programs of 32 and of 64 bits share the names of classes, but not what stands behind them: a name may be known where
// only the other width has its library. And one that was removed may have left its name.
bool IsMissing(const PlatformError& raised) {
  return raised.number() == kNotRegistered || raised.number() == kNotInstalled;
}

template <typename... Arguments>
std::vector<Variant> List(Arguments... arguments) {
  std::vector<Variant> list;
  (list.emplace_back(arguments), ...);
  return list;
}

// A number that the library writes through a reference.
template <typename Number>
Variant ByReference(Number& number) {
  Variant reference;
  if constexpr (sizeof(Number) == sizeof(short)) {
    reference.Get()->vt = VT_BYREF | VT_I2;
    reference.Get()->piVal = &number;
  } else {
    reference.Get()->vt = VT_BYREF | VT_I4;
    reference.Get()->plVal = &number;
  }
  return reference;
}

class QbfcTransport : public Transport {
 public:
  QbfcTransport(LateObject manager, LastAnswer& last) : manager_(std::move(manager)), last_(last) {}

  InterfaceVersion GetVersion() override {
    short major = 0;
    short minor = 0;
    short number = 0;
    long level = 0;
    std::vector<Variant> results;
    results.push_back(ByReference(major));
    results.push_back(ByReference(minor));
    results.push_back(ByReference(level));
    results.push_back(ByReference(number));
    manager_.Call("GetVersion", std::move(results));
    return {.major = major, .minor = minor, .releaseLevel = static_cast<int>(level), .releaseNumber = number};
  }

  void OpenConnection(std::string_view applicationId, std::string_view applicationName) override {
    manager_.Call("OpenConnection", List(applicationId, applicationName));
  }

  void BeginSession(std::string_view fileName, OpenMode mode) override {
    manager_.Call("BeginSession", List(fileName, static_cast<long>(mode)));
  }

  std::string GetCurrentCompanyFileName() override { return manager_.Call("GetCurrentCompanyFileName").Text(); }

  std::string ProcessDocument(std::string_view document) override {
    auto answer = manager_.CallObject("DoRequestsFromXMLString", List(document));
    auto text = answer.Call("ToXMLString").Text();
    last_.Note(std::move(answer));
    return text;
  }

  std::string ProcessSubscription(std::string_view document) override {
    return manager_.CallObject("DoSubscriptionRequestsFromXMLString", List(document)).Call("ToXMLString").Text();
  }

  void EndSession() override { manager_.Call("EndSession"); }
  void CloseConnection() override { manager_.Call("CloseConnection"); }

 private:
  LateObject manager_;
  LastAnswer& last_;
};

}  // namespace

QbfcTransportFactory::QbfcTransportFactory() : last_(std::make_unique<LastAnswer>()) {}
QbfcTransportFactory::~QbfcTransportFactory() = default;

std::unique_ptr<Transport> QbfcTransportFactory::CreateTransport() {
  std::optional<PlatformError> first;
  for (const auto className : kClasses) {
    if (!IsInstalled(className)) continue;
    try {
      return std::make_unique<QbfcTransport>(LateObject::Create(className), *last_);
    } catch (const PlatformError& raised) {
      if (!IsMissing(raised)) throw;
      if (!first) first = raised;
    }
  }
  if (first) throw PlatformError(*first);
  throw PlatformError(kNotInstalled, "QuickBooks' session library is not installed on this computer.");
}

}  // namespace twqb::windows
