#include "bridge/SettingList.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <utility>

#include "bridge/Tables.h"
#include "platform/Date.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "services/Direction.h"
#include "services/Errors.h"

namespace twqb {

namespace {

using Kind = SettingKind;
using Place = SettingPlace;

// --- Keys of no table ------------------------------------------------------------------------------------------------

struct FixedKey {
  std::string_view section;
  std::string_view key;
  Kind kind;
  std::string_view fallback;
  std::string_view meaning;
  Place place = Place::Store;
};

constexpr std::array kGeneralKeys = {
    FixedKey{
        "GENERAL", "QBDBPath", Kind::Text, "",
        "The company file of the last session, which the link keeps itself. Where QuickBooks has another one open, "
        "a transfer asks first."},
    FixedKey{"GENERAL", "FIRST_TIME", Kind::TrueWord, "True",
             "True: the next transfer offers to back up the database, and writes False."},
    FixedKey{"GENERAL", "FindLostLinks", Kind::TrueFalse, "True",
             "False: transfers don't look for links that got lost."},
    FixedKey{"GENERAL", "AC_INCOME_ACCOUNT", Kind::Text, "Other Income",
             "Full name of the income account of activities and expense codes that have none."},
    FixedKey{"GENERAL", "AC_EXPENSE_ACCOUNT", Kind::Text, "Other Income",
             "Full name of the expense account of activities and expense codes that have none."},
    FixedKey{"GENERAL", "INVOICE_SERVICE_ACCOUNT", Kind::Text, "Other Income",
             "Full name of the account of an invoice's services."},
    FixedKey{"GENERAL", "INVOICE_EXP_ACCOUNT", Kind::Text, "Other Income",
             "Full name of the account of an invoice's expenses."},
    FixedKey{"GENERAL", "PayrollExpAcct", Kind::Text, "",
             "Full name of the account of payroll items that a send of time entries makes, where QuickBooks has no "
             "\"Payroll Expenses\". Without it AC_EXPENSE_ACCOUNT is taken."},
    FixedKey{"GENERAL", "DefaultPayrollItem", Kind::Text, "Regular Pay",
             "The payroll item of hours for which an employee has none."},
};

// Of contracts of a kind.
constexpr std::array kSummaryKeys = {
    FixedKey{"GENERAL", "_chkFixed", Kind::OneOrZero, "0", "fixed"},
    FixedKey{"GENERAL", "_chkHourly", Kind::OneOrZero, "0", "hourly"},
    FixedKey{"GENERAL", "_chkHNTE", Kind::OneOrZero, "0", "hourly not to exceed"},
    FixedKey{"GENERAL", "_chkPerc", Kind::OneOrZero, "0", "percentage"},
    FixedKey{"GENERAL", "_chkRecur", Kind::OneOrZero, "0", "recurring"},
    FixedKey{"GENERAL", "_chkRecurCap", Kind::OneOrZero, "0", "recurring with cap"},
    FixedKey{"GENERAL", "_chkRecurExp", Kind::OneOrZero, "0", "recurring + expense"},
};

// What an invoice's items are for, by their number from 1.
constexpr std::array<std::string_view, 10> kInvoiceItems = {
    "discounts",       "retainers applied", "other amounts",   "amounts paid",         "services",
    "tax on services", "expenses",          "tax on expenses", "main tax on services", "main tax on expenses"};
// Of these a tax may go as a sales tax of QuickBooks.
constexpr std::array kTaxItems = {6, 8, 9, 10};

constexpr std::array kTimeKeys = {
    FixedKey{"QBSEND", "_Time Entries_chkCompTime", Kind::OneOrZero, "0",
             "1: hours of compensatory time stay, they are not sent."},
    FixedKey{"QBSEND", "_Time Entries_MapTENotes", Kind::OneOrZero, "0", "1: the memos of hours go along."},
    FixedKey{"QBSEND", "_Time Entries_chkAhrs", Kind::OneOrZero, "0",
             "1: what goes is the actual hours (aHours) in the place of the billed ones (TEHours)."},
};

constexpr std::array kOtherKeys = {
    FixedKey{"ACTIVITY", "COMP", Kind::Text, "GEN:COMP", "The activity of compensatory time.", Place::TableAlone},
    FixedKey{"ACTIVITY", "HOL", Kind::Text, "GEN:HOL", "The activity of holidays.", Place::TableAlone},
    FixedKey{"ACTIVITY", "SICK", Kind::Text, "GEN:SICK", "The activity of sick leave.", Place::TableAlone},
    FixedKey{"ACTIVITY", "VAC", Kind::Text, "GEN:VAC", "The activity of vacations.", Place::TableAlone},
    FixedKey{"TW80", "Database", Kind::Text, "", "The database file that the first transfer offers to back up.",
             Place::Registry},
    FixedKey{"TW80\\GENERAL", "QB_MNUSUBSCRIBE", Kind::TrueFalse, "0",
             "True: the link was started from the menu of QuickBooks; then no box asks to try again.", Place::Registry},
};

// --- Keys of each table ----------------------------------------------------------------------------------------------

struct TableKey {
  std::string_view suffix;
  Kind kind;
  std::string_view fallback;
  std::string_view meaning;
};

constexpr std::array kTableKeys = {
    TableKey{"_ChkSkip", Kind::TrueFalse, "False", "True: the table is passed over."},
    TableKey{
        "_OptMostRecent", Kind::TrueFalse, "True",
        "Of a pair that is linked. True: the side that changed last counts. False: the side that the transfer comes "
        "from always does."},
    TableKey{"_OptNever", Kind::TrueFalse, "False",
             "True: pairs that are linked are left as they are, and only what is new goes. It goes ahead of "
             "_OptMostRecent."},
    TableKey{"_chkActiveOnly", Kind::TrueFalse, "0", "True: active records alone."},
};

constexpr TableKey kIgnoreLastSend = {"_chkIgnoreLastSync", Kind::TrueFalse, "0",
                                      "True: rows that have not changed since the last send go all the same."};
constexpr TableKey kLastSend = {"_LastSendAt", Kind::Date, "01/01/1900",
                                "When the last full send ended, which the link keeps itself, in local time. Rows that "
                                "have not changed since stay."};
constexpr TableKey kLastGet = {"_LastSendAt", Kind::Date, "never",
                               "When the last full get ended, which the link keeps itself, in local time."};

// Behind the name under which employees are got.
constexpr std::array kRateKeys = {
    TableKey{"_DefaultBR", Kind::Number, "1", "The bill rate of employees and vendors that a get adds."},
    TableKey{"_DefaultCR", Kind::Number, "1", "The cost rate of employees and vendors that a get adds."},
    TableKey{"_chkBillRate", Kind::TrueFalse, "0",
             "True: an employee that a get adds costs what QuickBooks pays by the hour, and is billed at that, times "
             "_DefaultCRM."},
    TableKey{"_DefaultCRM", Kind::Number, "1", "What pay is multiplied with for a bill rate, see _chkBillRate."},
};

// A pair of values and what turns it on.
struct PairKeys {
  ClauseOn clause;
  std::string_view option;
  std::string_view from;
  std::string_view to;
  Kind kind;
};

constexpr std::array kPairs = {
    PairKeys{ClauseOn::Range, "_OptDate1b", "_cmbDate1a", "_cmbDate1b", Kind::Date},
    PairKeys{ClauseOn::Filter1, "_OptFilter1b", "_cmbFilter1a", "_cmbFilter1b", Kind::Text},
    PairKeys{ClauseOn::Filter2, "_OptFilter2b", "_cmbFilter2a", "_cmbFilter2b", Kind::Text},
    PairKeys{ClauseOn::Filter3, "_OptFilter3b", "_cmbFilter3a", "_cmbFilter3b", Kind::Text},
    PairKeys{ClauseOn::FromTo, "_optFromDate", "_ssdtFrom", "_ssdtTo", Kind::Date},
};

// The column that a clause holds to its values: "(TimeEntry.ProjectID BETWEEN '{a}' AND '{b}')", or that of a list of
// groups in brackets.
std::string_view ColumnOf(std::string_view clause) {
  const auto text = clause.substr(0, clause.find(" BETWEEN "));
  const auto begin = text.find_last_of(" (.}");
  return begin == std::string_view::npos ? text : text.substr(begin + 1);
}

// What lies between both values of a pair; nothing where the pair narrows nothing.
std::string NarrowedBySend(const Table& table, const PairKeys& pair) {
  for (const auto& clause : table.selection.clauses) {
    const bool isDates = pair.clause == ClauseOn::FromTo && clause.on == ClauseOn::RangeOnFromTo;
    if (clause.on == pair.clause || isDates) return std::string(ColumnOf(clause.text));
  }
  return {};
}

std::string_view NarrowedByGet(const Table& table, const PairKeys& pair) {
  if (table.reads.empty()) return {};
  const auto& query = table.reads.front().transaction;
  switch (pair.clause) {
    case ClauseOn::Range:
      return "the time of the last change in QuickBooks";
    case ClauseOn::Filter1:
      if (!query) return "the name";
      if (query->names == NamePair::NotUsed) return {};
      return query->names == NamePair::ReferenceNumbers ? "the reference number" : "the vendor's or customer's name";
    case ClauseOn::FromTo:
      return query && query->takesTransactionDates ? "the date" : "";
    default:
      return {};
  }
}

// --- The list --------------------------------------------------------------------------------------------------------

class ListMaker {
 public:
  explicit ListMaker(std::span<const Table* const> tables) : tables_(tables) {}

  std::vector<SettingDescription> Make() && {
    AddGeneral();
    AddSection(Direction::Send, "QBSEND_");
    for (const auto& key : kTimeKeys) Add(key);
    AddSection(Direction::Get, "QBGET_");
    for (const auto& key : kOtherKeys) Add(key);
    return std::move(list_);
  }

 private:
  void Add(const FixedKey& key) {
    list_.push_back({.place = key.place,
                     .section = std::string(key.section),
                     .key = std::string(key.key),
                     .pattern = std::string(key.key),
                     .kind = key.kind,
                     .fallback = std::string(key.fallback),
                     .meaning = std::string(key.meaning),
                     .general = {}});
  }
  void AddText(std::string key, std::string meaning) {
    list_.push_back({.section = "GENERAL",
                     .key = key,
                     .pattern = key,
                     .fallback = "",
                     .meaning = std::move(meaning),
                     .general = {}});
  }

  void AddGeneral() {
    for (const auto& key : kGeneralKeys) Add(key);
    for (std::size_t i = 0; i < kInvoiceItems.size(); ++i) {
      AddText(fmt::format("InvIncomeAcct_No{}", i + 1),
              fmt::format("ListID of the income account of the invoice item for {}; without it the account of "
                          "services or expenses.",
                          kInvoiceItems[i]));
      AddText(fmt::format("InvExpenseAcct_No{}", i + 1),
              fmt::format("ListID of the expense account of the same item, for {}.", kInvoiceItems[i]));
    }
    for (const auto number : kTaxItems) {
      AddText(fmt::format("InvVendorID_No{}", number),
              fmt::format("ListID of the vendor to whom the {} is paid: with it, and an income account that is a "
                          "liability, the item is made as a sales tax.",
                          kInvoiceItems.at(static_cast<std::size_t>(number) - 1)));
    }
    for (auto key : kSummaryKeys) {
      const auto meaning = fmt::format("1: invoices of {} contracts go as a summary, not line by line.", key.meaning);
      key.meaning = meaning;
      Add(key);
    }
  }

  void AddSection(Direction direction, std::string_view section) {
    section_ = section;
    const bool sends = direction == Direction::Send;
    for (const auto* table : tables_) {
      table_ = table->names.Of(direction);
      for (const auto& key : kTableKeys) Add(key);
      Add(sends ? kLastSend : kLastGet);
      Add(kIgnoreLastSend, sends ? "" : "A get reads it, and does not go by it.");
      for (const auto& pair : kPairs) {
        if (!sends && pair.clause == ClauseOn::Filter2) {
          AddIdentifier(pair);
        } else {
          AddPair(pair, sends ? NarrowedBySend(*table, pair) : std::string(NarrowedByGet(*table, pair)));
        }
      }
      if (sends) continue;
      for (const auto& read : table->reads) AddShownAs(read);
      if (table->number == enEmployees) AddRates();
    }
  }

  void Add(const TableKey& key, std::string_view instead = {}) {
    AddOfTable(key.suffix, key.kind, key.fallback, instead.empty() ? key.meaning : instead);
  }
  void AddOfTable(std::string_view suffix, Kind kind, std::string_view fallback, std::string_view meaning,
                  std::string_view general = {}) {
    list_.push_back({.section = section_,
                     .key = fmt::format("{}{}", table_, suffix),
                     .pattern = fmt::format("TABLE{}", suffix),
                     .kind = kind,
                     .fallback = std::string(fallback),
                     .meaning = std::string(meaning),
                     .general = std::string(general)});
  }

  // `narrowed`: what lies between the values; nothing where they narrow nothing.
  void AddPair(const PairKeys& pair, std::string_view narrowed) {
    if (narrowed.empty()) {
      constexpr std::string_view kNothing = "It is read, and narrows nothing in this table.";
      AddAll(pair, {std::string(kNothing), std::string(kNothing), std::string(kNothing)});
      return;
    }
    const auto counts = fmt::format("It counts with {}{}.", table_, pair.option);
    AddAll(pair,
           {fmt::format("True: that alone of which {} lies between {}{} and {}{}. Such a run leaves no _LastSendAt.",
                        narrowed, table_, pair.from, table_, pair.to),
            fmt::format("Where {} begins. {}", narrowed, counts), fmt::format("Where {} ends. {}", narrowed, counts)});
  }

  // A get names its one record by the second pair.
  void AddIdentifier(const PairKeys& pair) {
    AddAll(pair, {fmt::format("True: the one record alone that {}{} names. Such a run leaves no _LastSendAt.", table_,
                              pair.from),
                  fmt::format("The ListID or TxnID of the record. It counts with {}{}.", table_, pair.option),
                  "It is read, and means nothing."});
  }

  // The meanings are those of the option, the first value and the last one.
  void AddAll(const PairKeys& pair, const std::array<std::string, 3>& meanings) {
    AddOfTable(pair.option, Kind::TrueFalse, "False", meanings[0],
               fmt::format("True: that alone which lies between TABLE{} and TABLE{}.", pair.from, pair.to));
    AddOfTable(pair.from, pair.kind, "", meanings[1], "Where the range begins; its table's description tells of what.");
    AddOfTable(pair.to, pair.kind, "", meanings[2], "Where the range ends.");
  }

  // A second read of a table may go by a name of its own.
  void AddShownAs(const QuickBooksRead& read) {
    if (read.shownAs.empty()) return;
    const auto key = fmt::format("{}_chkActiveOnly", read.shownAs);
    if (std::ranges::find(list_, key, &SettingDescription::key) != list_.end()) return;
    list_.push_back({.section = section_,
                     .key = key,
                     .pattern = key,
                     .kind = Kind::TrueFalse,
                     .fallback = "0",
                     .meaning = "It is read, and narrows nothing.",
                     .general = {}});
  }

  void AddRates() {
    for (const auto& key : kRateKeys) {
      AddOfTable(key.suffix, key.kind, key.fallback, key.meaning);
      list_.back().pattern = list_.back().key;
    }
  }

  std::span<const Table* const> tables_;
  std::vector<SettingDescription> list_;
  std::string section_;
  std::string table_;
};

}  // namespace

std::vector<SettingDescription> SettingList() { return SettingList(Tables()); }
std::vector<SettingDescription> SettingList(std::span<const Table* const> tables) { return ListMaker(tables).Make(); }

std::string_view ValuesOf(SettingKind kind) {
  switch (kind) {
    case Kind::Text:
      return "text";
    case Kind::TrueFalse:
    case Kind::TrueWord:
      return "True or False";
    case Kind::OneOrZero:
      return "1 or 0";
    case Kind::Number:
      return "a number";
    case Kind::Date:
      return "a date, such as 3/5/2008";
  }
  return {};
}

bool IsValueOf(const SettingDescription& setting, std::string_view value) {
  // What is empty without being set is the same as none.
  if (value.empty()) return setting.kind == Kind::Text || setting.fallback.empty();
  switch (setting.kind) {
    case Kind::Text:
      return true;
    case Kind::TrueFalse:
      return !CatchError([&] { static_cast<void>(TextToBoolean(value)); });
    case Kind::TrueWord:
      return SameName(value, "True") || SameName(value, "False");
    case Kind::OneOrZero:
      return value == "1" || value == "0";
    case Kind::Number:
      return !CatchError([&] { static_cast<void>(TextToNumber(value)); });
    case Kind::Date:
      return ParseDate(value).has_value();
  }
  return false;
}

std::string RowNameOf(const SettingDescription& setting) { return fmt::format("{}_{}", setting.section, setting.key); }

}  // namespace twqb
