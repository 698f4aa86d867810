// What a run tells beside its results, boxes and log: what became of each record, and each error that was told.
//
// A host gives one to Compose. Nothing in the library hangs on it: without one nothing of this is worked out. It is
// called in the middle of a run, so it must not raise, and must not call the library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/PlatformError.h"
#include "services/Direction.h"

namespace twqb {

// A table on its way. A pull of one record for another table's sake is told with the table that is pulled.
struct TableInHand {
  std::int32_t number = 0;  // of enTables
  Direction direction = Direction::Send;

  friend bool operator==(const TableInHand&, const TableInHand&) = default;
};

enum class Fate : std::uint8_t {
  Added,        // to the other side
  Changed,      // there
  LeftAsItWas,  // it is there, and was not to be changed
  PassedOver,   // by a rule, or for lack of something
  Refused,      // by QuickBooks
  Failed,       // by an error, which was told
};

// A line is part of a record that is told itself: of a bill, an estimate, or the payment to one of several invoices.
enum class Standing : std::uint8_t { Record, Line };

// Why a record that had a twin was added once more.
enum class Parting : std::uint8_t {
  NameInUse,   // the twin can't be given the name of the record
  LinkUnread,  // whether there is a twin could not be looked up
};

// What QuickBooks answered in the place of doing what it was asked.
struct RefusalAccount {
  std::int32_t status = 0;
  std::string message;
};

// What became of a record. Texts that nobody knew are empty.
struct RecordAccount {
  TableInHand table;
  Standing standing = Standing::Record;
  std::string key = {};         // in BillingDb
  std::string identifier = {};  // QuickBooks'
  Fate fate = Fate::PassedOver;
  std::string why = {};
  std::optional<RefusalAccount> refusal = {};  // that `why` tells; nothing where it tells of anything else
  bool isOfItsLines = false;                   // the fate: they were told with it
  // The twin that it left, or would leave, for a new one.
  std::string former = {};
  Parting parting = Parting::NameInUse;
};

// How a person hears of an error beside the observer: by a box, by a line of the log alone, or not at all.
enum class ToldBy : std::uint8_t { Box, Log, Nobody };

struct ErrorAccount {
  std::string routine;
  ErrorNumber number = 0;  // of a refusal its status; 0 where there is none
  std::string text;
  ToldBy toldBy = ToldBy::Box;
  std::optional<TableInHand> table = {};  // nothing outside of tables
  std::string key = {};                   // of the record in hand
  std::string identifier = {};            //
};

// How far a table came. What lies behind `taken` was not looked at.
struct Extent {
  std::int64_t found = 0;
  std::int64_t taken = 0;
};

// A row that an earlier run, or a call that failed, left without its link: found again, or left to the user.
struct LostLinkAccount {
  bool isFound = false;
  std::string text;  // a sentence
};

// Rows without a link that look like records which QuickBooks has, ahead of a send.
struct LikelyTwinsAccount {
  TableInHand table;
  std::size_t rows = 0;
  bool stops = false;  // nothing is sent
};

class RunObserver {
 public:
  virtual ~RunObserver() = default;

  virtual void RecordTold(const RecordAccount& record) = 0;
  // Refusals of records are told with the records alone.
  virtual void ErrorTold(const ErrorAccount& error) = 0;
  // Behind the last record of a selection, or of an answer; a table may have several.
  virtual void WalkEnded(const TableInHand& /*table*/, const Extent& /*extent*/) {}
  // Ahead of the first table, or between two records.
  virtual void LostLinkTold(const LostLinkAccount& /*link*/) {}
  // Ahead of the first table.
  virtual void LikelyTwinsTold(const LikelyTwinsAccount& /*twins*/) {}
  // The settings skip it.
  virtual void TableSkipped(const TableInHand& /*table*/) {}
  // `narrowed` tells in words what kept records out beside the table's own rules; empty: nothing did.
  virtual void TableEnded(const TableInHand& /*table*/, std::string_view /*narrowed*/) {}
};

}  // namespace twqb
