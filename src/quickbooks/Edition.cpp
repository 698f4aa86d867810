#include <fmt/core.h>

#include <array>

#include "messages/StatusCodes.h"
#include "platform/Value.h"
#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Requests.h"
#include "quickbooks/Session.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

// The probe always asks in this version, whatever later requests use: a QuickBooks that can't answer it counts as not
// supported.
constexpr int kProbeMajor = 3;
constexpr int kProbeMinor = 0;
constexpr std::array<std::string_view, 4> kCountries = {"US", "CA", "UK", "AU"};

enum class Probe { Found, Refused, NotSupported };

struct ProbeResult {
  Probe outcome = Probe::NotSupported;
  std::optional<MsgSetResponse> answer;
};

// Asks in each country's form until one is answered. A raised error is how an edition turns down another's form.
ProbeResult FindCountry(QBSessionManager& session) {
  for (const auto country : kCountries) {
    std::optional<MsgSetResponse> answer;
    const bool answered = IgnoreErrors([&] {
      auto set = session.CreateMsgSetRequest(country, kProbeMajor, kProbeMinor);
      set.SetOnError(OnError::Continue);
      set.Append("HostQueryRq");
      answer = session.DoRequests(set);
      (void)answer->GetAt(0);
    });
    if (!answered) continue;
    if (answer->GetAt(0).StatusCode() != status::kOk) {
      ShowQBError(answer->GetAt(0), "GetQBEditionAndVersion : ");
      Vars().g_QBCountry.clear();
      return {.outcome = Probe::Refused};
    }
    Vars().g_QBCountry = country;
    return {.outcome = Probe::Found, .answer = std::move(answer)};
  }
  return {};
}

struct FormatVersion {
  std::int16_t major;
  std::int16_t minor;
};

FormatVersion VersionFor(std::int16_t host) {
  if (host >= 13) return {3, 0};
  if (host == 12) return Vars().g_QBCountry == "CA" ? FormatVersion{2, 0} : FormatVersion{2, 1};
  if (host == 10) return {1, 1};
  TheDesk().ShowMessageBox(
      {.text = "GetQBEditionAndVersion() - Undefined version. Using the default values, i.e. 1, 0"});
  return {1, 0};
}

void ReadHost(const Record& host) {
  const auto version = TextToInteger(host["MajorVersion"].GetValue());
  if (version != static_cast<std::int16_t>(version)) throw PlatformError(error::kOverflow);
  Vars().g_QBHostVer = static_cast<std::int16_t>(version);
  if (const auto country = host["Country"]; !country.IsNothing()) Vars().g_HostCountry = country.GetValue();
  const auto format = VersionFor(Vars().g_QBHostVer);
  Vars().g_QBMajorVer = format.major;
  Vars().g_QBMinorVer = format.minor;
}

}  // namespace

bool GetQBEditionAndVersion() {
  const auto session = Vars().g_QBSession;
  const auto probe = FindCountry(*session);
  if (probe.outcome == Probe::Refused) return false;
  // The country that an earlier session found stays until a probe replaces it; then the missing answer is the error.
  if (probe.outcome == Probe::NotSupported && Vars().g_QBCountry.empty()) {
    TheDesk().ShowMessageBox({.text = "GetQBEditionAndVersion : This edition of QuickBooks is not supported",
                              .title = "Error",
                              .icon = BoxIcon::Information});
    return false;
  }
  const auto raised = CatchError([&] {
    if (!probe.answer) throw PlatformError(error::kObjectNothing);
    ReadHost(probe.answer->GetAt(0).Detail());
  });
  if (!raised) return true;
  Vars().g_QBCountry.clear();
  Vars().g_QBHostVer = 0;
  ErrorHandler(raised->number(), raised->description(), "GetQBEditionAndVersion");
  return false;
}

}  // namespace twqb
