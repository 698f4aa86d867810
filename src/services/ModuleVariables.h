// The state of the process: all module variables in one struct with one instance, and the platform that the host
// composed the library with.
//
// Two bridge objects in a process share everything here. Nothing resets a variable between calls unless a routine says
// so; tests start from `ModuleVariables{}`.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/Platform.h"

namespace twqb {

class QBSessionManager;

// Outcome of the table in hand. `GoOn` is left by a failed record of a get when the user chose to go on; readers that
// ask whether it is set count it as set.
enum class TableOk : std::int16_t { False = 0, True = -1, GoOn = 2 };

// The progress form: what it tells, and when it was loaded.
struct MsgForm {
  MsgFormState state;
  Date startTime;
};

struct ModuleVariables {
  Platform platform;

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
  bool g_NoProgressBar = false;
  bool g_LeaveMsgBoxOpen = false;

  bool g_AllTablesRun = false;  // an enAll run keeps the form open between tables
  bool g_Cancelled = false;     // read after every record
  TableOk g_TableOk = TableOk::False;
  bool g_FiltersActive = false;  // a filter narrowed the run, or the table was skipped
  bool g_NoQBRecords = false;    // QuickBooks had no records for the query

  std::string g_ActivityComp = "GEN:COMP";
  std::string g_ActivityHol = "GEN:HOL";
  std::string g_ActivitySick = "GEN:SICK";
  std::string g_ActivityVac = "GEN:VAC";

  std::optional<MsgForm> msgForm;  // nothing while no form is loaded
};

[[nodiscard]] ModuleVariables& Vars();

[[nodiscard]] inline Desk& TheDesk() { return *Vars().platform.desk; }
[[nodiscard]] inline Machine& TheMachine() { return *Vars().platform.machine; }

}  // namespace twqb
