// What a transfer would do, found by running it on copies of all that it would write: as values, for whoever tells of
// it or goes on with it.
//
// Nothing of the user's is changed: neither BillingDb nor company file, neither settings nor log. What is printed of it
// is PreviewText's and the commands'.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli/options/Options.h"
#include "cli/runs/Transfers.h"
#include "services/RunObserver.h"

namespace twqb::cli {

// A column of a row, or a field of a record by its path: "BillAddress/City", "InvoiceLineRet[2]/Desc". Nothing: it is
// NULL, or is not there.
struct FieldChange {
  std::string field;
  std::optional<std::string> before = {};
  std::optional<std::string> after = {};

  friend bool operator==(const FieldChange&, const FieldChange&) = default;
};

enum class ChangedSide : std::uint8_t { Billing, QuickBooks };
enum class ChangeKind : std::uint8_t { Added, Changed, Removed };

// A row or a record that is another one behind the run.
struct RecordChange {
  ChangedSide side = ChangedSide::Billing;
  ChangeKind kind = ChangeKind::Changed;
  std::string place = {};       // the table of BillingDb, as "Client"; the kind of record, as "Customer"
  std::string key = {};         // of the row, parts of it with commas between; the identifier
  std::string name = {};        // QuickBooks': full name or number
  std::string identifier = {};  // of the record; of a row the one that it is linked to, empty where there is none
  std::vector<FieldChange> fields = {};
  bool areAmountsUnknown =
      false;  // what QuickBooks would make of them nobody knows here: they are not among the fields

  friend bool operator==(const RecordChange&, const RecordChange&) = default;
};

// What would be done about a record. Link: it gets its link, and nothing else of it changes.
enum class Doing : std::uint8_t { Add, Change, Link, LeaveAsItIs, PassOver, Refuse, Fail };

struct PreviewedRecord {
  RecordAccount account;  // identifiers of what would be added are made up
  Doing doing = Doing::PassOver;
  std::vector<RecordChange> changes = {};
  bool hangsOnUnknown = false;  // a payment of an invoice of which it is not known what it comes to: so does `doing`
};

// Who gave the answer that the preview went on with: nobody, so it is the box's first but a retry; or --answers.
enum class AnsweredBy : std::uint8_t { Default, File };

struct PreviewedBox {
  std::string title;
  std::string text;
  std::string answer;  // as it is labelled; empty for a box with OK alone
  AnsweredBy by = AnsweredBy::Default;
};

struct SettingChange {
  std::string section;
  std::string key;
  std::optional<std::string> before;
  std::string after;
};

struct Preview {
  TransferRequest request;
  bool done = false;                           // the transfer returned True; each of them
  std::optional<std::string> unanswered = {};  // the question of which --answers has no answer: the run ended there
  std::vector<PreviewedRecord> records = {};   // in the order in which they were told
  std::vector<RecordChange> beside = {};       // what changes with no record that was told
  std::vector<ErrorAccount> errors = {};
  std::vector<TableInHand> skipped = {};  // by the settings
  std::vector<PreviewedBox> boxes = {};
  std::vector<SettingChange> settings = {};
  std::vector<std::string> told = {};  // the sentences that it would say of lost links, on standard error
  std::vector<std::string> log = {};   // the lines that it would get
  std::string summary = {};            // the lines of a transfer's own account, each with its end
  std::string troubles = {};           // "1 error was told"; empty: none
};

class PreviewSources;  // PreviewSeams.h

// Whether what becomes of any of its records hangs on amounts that are not known.
[[nodiscard]] bool HangsOnUnknown(const Preview& preview);

// What is done to the copies ahead of the run, by who asks what would be if. It is called twice: for the copies that
// the run works on, and for those that they are compared with. What it raises ends the preview.
using Arrange = std::function<void(const Workplace& copies)>;

// Raises UsageError for a file that can't be used, in the words of a transfer, and for a side that can't be read.
[[nodiscard]] Preview RunPreview(const Options& options, const TransferRequest& request);

// The same of several transfers, one behind the other on the same copies; what is told of the request is that of
// the one that it ended with. Ends behind the first that is not done. What is no file is read once for all previews of
// one `sources`.
[[nodiscard]] Preview RunPreview(const Options& options, const std::vector<TransferRequest>& requests,
                                 const Arrange& arrange, PreviewSources& sources);

}  // namespace twqb::cli
