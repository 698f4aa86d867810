// The state of the process: all module variables in one struct with one instance, and the platform that the host
// composed the library with.
//
// Two bridge objects in a process share everything here. Nothing resets a variable between calls unless a routine says
// so; tests start from `ModuleVariables{}`.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "services/Run.h"

namespace twqb {

enum class ActiveOnly : std::int16_t;
struct CutText;
class QBSessionManager;
class RecordInHand;
class RunObserver;
struct SavedFilters;
struct Table;
struct TableInHand;

// The dispatch's get of one table, handed down for the pull of single records (see engine/DependentPull.h).
using GetTableRoutine = bool (*)(std::int32_t table, const SavedFilters& filters, ActiveOnly activeOnly, bool blnByID,
                                 ado::Connection* connection);

// The progress form: what it tells, and when it was loaded.
struct MsgForm {
  MsgFormState state;
  Date startTime;
};

// What a send does about rows without a link that look like records which QuickBooks has.
enum class LikelyTwins : std::uint8_t { NotLookedFor, Told, Stop };

struct ModuleVariables : Run {
  Platform platform;
  std::span<const Table* const> tables;  // that a host brings in place of the built-in ones; empty: these
  GetTableRoutine pull = nullptr;        // nothing while no dispatch stands above

  bool findsLostLinks = false;                          // of the host; a setting can say No
  LikelyTwins likelyTwins = LikelyTwins::NotLookedFor;  // of the host

  std::vector<CutText>* cuts = nullptr;  // where texts that are cut are noted (engine/Mapping.h); nothing: nobody asks

  RunObserver* observer = nullptr;           // of the host; nothing: nobody hears what becomes of records
  const TableInHand* tableInHand = nullptr;  // what it hears of; nothing between tables
  RecordInHand* inHand = nullptr;            // and between records

  std::shared_ptr<QBSessionManager> g_QBSession;  // nothing when not connected
  std::unique_ptr<Callback> g_QBCallback;         // made on demand while subscribed
  bool g_CallbackHeld = false;  // a whole transfer holds the call-back in mode 3; record loops leave it alone
  bool g_IsSubscribed = false;

  std::string g_QBCountry;    // "US", "CA", "UK", "AU"; empty while unknown
  std::string g_HostCountry;  // as the host query told it
  std::int16_t g_QBMajorVer = 0;
  std::int16_t g_QBMinorVer = 0;
  std::int16_t g_QBHostVer = 0;

  std::unique_ptr<ado::Connection> g_cnGlobal;  // created on first use, never released
  std::int16_t g_CnRefCount = 0;
  std::string g_DbKind;  // "SQL" or "JET"

  std::string g_ConnectString;
  std::string g_TWSettingsPath;
  bool g_UseTWSTable = false;
  std::string g_PassedID;
  std::string g_NewQBLinkID;
  std::string g_HelpFilePath;
  std::int16_t g_HelpID = 0;
  bool g_IsSilentMode = false;

  std::string g_ActivityComp = "GEN:COMP";
  std::string g_ActivityHol = "GEN:HOL";
  std::string g_ActivitySick = "GEN:SICK";
  std::string g_ActivityVac = "GEN:VAC";

  std::string g_PickedVendor;  // what frmPickVendor was closed with; whoever reads it empties it

  // Of a send of time entries, as the settings said ahead of the first row.
  bool MapTENotes = false;      // the long note goes
  bool leavesCompTime = false;  // entries with comp time do not go

  std::optional<MsgForm> msgForm;  // nothing while no form is loaded
};

[[nodiscard]] ModuleVariables& Vars();

[[nodiscard]] inline Desk& TheDesk() { return *Vars().platform.desk; }
[[nodiscard]] inline Machine& TheMachine() { return *Vars().platform.machine; }

}  // namespace twqb
