// CTWQBBridge: the one public class of TWQBClient90. A host composes the library with a platform, creates an object,
// sets its properties, and moves tables between BillingDb and a QuickBooks company file.
//
// Calling order: Compose once; then per object ConnectString, TWSettingsPath and the other properties; then the
// operations, each of which connects by itself. No operation raises a PlatformError: False means that something failed
// and the user has been told. DeskGaveUp, from a desk without an answer, passes through.
//
// One thread. All state but the four per-object fields belongs to the process: two objects share the session, the
// connection and every other property.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>

#include "platform/Platform.h"
#include "quickbooks/ResponseModel.h"
#include "twqb/AccountArray.h"
#include "twqb/enTables.h"

namespace twqb {

enum class LookupList : std::uint8_t;
enum class LookupScope : std::uint8_t;

class RunObserver;
struct Table;
enum class LostLinks : bool { Leave, FindAgain };

// Sets what the library stands on. Nothing in `platform` is owned; all of it must outlive every object. Forgets all
// state of the process, so it must not be called while an object exists. `tables` are a host's own in the place of the
// built-in ones (bridge/Tables.h), in the order of a run over all; none: the built-in ones. `observer` hears what
// becomes of records (services/RunObserver.h) and is not owned either; nothing: nobody does. `lostLinks` says whether
// transfers look for links that an earlier send did not get to write, and sends add so that this can be done for them;
// a setting (GENERAL, FindLostLinks, "False") says No for all hosts.
void Compose(const Platform& platform, std::span<const Table* const> tables = {}, RunObserver* observer = nullptr,
             LostLinks lostLinks = LostLinks::FindAgain);

// An object was asked for while something is missing that the library stands on: a mistake of the host, which `what()`
// tells it.
class NotComposed : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

class CTWQBBridge {
 public:
  // Writes three lines to the log and puts QBHostVer to 0, even when a session stands. Raises NotComposed ahead of
  // Compose, and where one of the five seams has nothing behind it.
  CTWQBBridge();
  // Ends the session, of the other objects too.
  ~CTWQBBridge();
  CTWQBBridge(const CTWQBBridge&) = delete;
  CTWQBBridge& operator=(const CTWQBBridge&) = delete;

  // Takes the progress form down, if there is one.
  void CloseProgressScreen();

  // Asks QuickBooks at each read, and so may open the session.
  [[nodiscard]] bool IsSubscribedToQBEvents();
  [[nodiscard]] bool LeaveMsgBoxOpen() const;
  void SetLeaveMsgBoxOpen(bool value);
  // Whether QuickBooks had no record for the last list that was asked for. Classes and payroll items never tell.
  [[nodiscard]] bool NoRecsInQBTable() const { return noRecsInQBTable_; }
  [[nodiscard]] std::int16_t QBHostVer() const;
  [[nodiscard]] std::string QBCountry() const;
  [[nodiscard]] std::int16_t HelpID() const;
  void SetHelpID(std::int16_t value);
  // ADO connection string of BillingDb.
  [[nodiscard]] std::string ConnectString() const;
  void SetConnectString(std::string value);
  // Full path of the settings' INI file.
  [[nodiscard]] std::string TWSettingsPath() const;
  void SetTWSettingsPath(std::string value);
  // Identifier of the record last added to QuickBooks.
  [[nodiscard]] std::string NewQBLinkID() const;
  void SetNewQBLinkID(std::string value);
  // The record of a one-record transfer: the host's key for a send, QuickBooks' identifier for a get.
  [[nodiscard]] std::string PassedID() const;
  void SetPassedID(std::string value);
  [[nodiscard]] std::string HelpFilePath() const;
  void SetHelpFilePath(std::string value);
  // Stored and returned; has no effect.
  [[nodiscard]] bool IsSilentMode() const;
  void SetIsSilentMode(bool value);
  [[nodiscard]] bool NoProgressBar() const;
  void SetNoProgressBar(bool value);
  // Opens the company file in single-user mode when a session is started.
  [[nodiscard]] bool IsQBSingleMode() const { return isQBSingleMode_; }
  void SetIsQBSingleMode(bool value) { isQBSingleMode_ = value; }
  // Settings live in the table TWSTable instead of the INI file.
  [[nodiscard]] bool UseTWSTable() const;
  void SetUseTWSTable(bool value);
  // Forces "the newer record wins" for the tables of a run.
  [[nodiscard]] bool IsSync() const { return isSync_; }
  void SetIsSync(bool value) { isSync_ = value; }
  // True: the saved filters apply. False: the one record of PassedID.
  [[nodiscard]] bool UsePreferencesTW() const { return usePreferencesTW_; }
  void SetUsePreferencesTW(bool value) { usePreferencesTW_ = value; }
  // The company file last used, from the settings; empty when it can't be read.
  [[nodiscard]] std::string QBDB() const;

  // The transfers, of one table or of all (enAll).
  bool SendDataToQB(enTables enTableName);
  bool GetDataFromQB(enTables enTableName);

  // Does nothing; hosts call it.
  void DisplaySettings();

  // Lists of QuickBooks for the host's own dialogs, as they come. Nothing where QuickBooks has no such record, refuses,
  // or a call fails; all but the first have been told. GetAll takes inactive records in.
  [[nodiscard]] ReturnedList GetAccounts();
  [[nodiscard]] ReturnedList GetEmployees(bool GetAll = false);
  [[nodiscard]] ReturnedList GetCustomers(bool GetAll = false);
  [[nodiscard]] ReturnedList GetVendors(bool GetAll = false);
  [[nodiscard]] ReturnedList GetInvoices();
  [[nodiscard]] ReturnedList GetPayments();
  [[nodiscard]] ReturnedList GetExpCodes(bool GetAll = false);
  [[nodiscard]] ReturnedList GetActivities(bool GetAll = false);
  [[nodiscard]] ReturnedList GetTimeEntries();
  [[nodiscard]] ReturnedList GetChecks();
  [[nodiscard]] ReturnedList GetBills();
  [[nodiscard]] ReturnedList GetClassItems();
  [[nodiscard]] ReturnedList GetPayrollItems();

  // The active accounts, one column each; the row of the type stays empty. False, and the array as it was, when
  // QuickBooks refuses, which nobody is told, or a call fails.
  bool GetQBAccounts(AccountArray& strAccounts);

  // Whether the customer of that ListID is a job. False for one that is not there, too.
  [[nodiscard]] bool IsJob(const std::string& strListID);

  // Deletes the twin of a record that went on the other side, once the user has said Yes to it: the record of BillingDb
  // that is linked to that identifier of QuickBooks, or QuickBooks' record itself. False for the answer No, too. In
  // BillingDb a record that is not there, or can't be deleted, is not noticed.
  bool DeleteTWRecord(enTables enTableName, const std::string& strListOrTxnID);
  bool DeleteQBRecord(enTables enTableName, const std::string& strQBLinkID);

  // Subscribes to QuickBooks events, or takes the subscription back. Ends the session and starts a new one.
  bool SubscribeToQBEvents(bool blnSubscribe);

  // Remembers the four default accounts, in TWSTable, which all settings live in from here on. An empty one is
  // forgotten. False at the first that can't be written.
  bool SaveSettings(const std::string& ACIncAcct, const std::string& ACExpAcct, const std::string& InvServAcct,
                    const std::string& InvExpAcct);

  // Starts or ends the session. False for ending one that is not there.
  bool ConnectToQB(bool blnConnect);

 private:
  // Without a scope: the plain query.
  ReturnedList List(LookupList list, LookupScope scope = {});

  bool usePreferencesTW_ = false;
  bool isSync_ = false;
  bool isQBSingleMode_ = false;
  bool noRecsInQBTable_ = false;
};

}  // namespace twqb
