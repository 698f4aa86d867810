// What a clean run did, call by call: the names of its calls through the seams, and which of them moved data between
// the two sides.
//
// From it follows, for every call, what breaking the run there may leave behind and whether the user has to be told.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/faults/FaultScript.h"
#include "platform/Platform.h"

namespace twqb::sweep {

enum class DeedKind : std::uint8_t {
  AddCarriedOut,  // a document of which QuickBooks carried an Add out
  ModCarriedOut,
  TwinRead,     // a query for one identifier that found its record
  LinkWritten,  // the statement that writes a new identifier into its row
  // From here on: what says nothing about how far a send has come, and is left out where that is worked out.
  Choice,         // a look-up of what an entry may do without: it counts as not there when it fails
  KeyLookedUp,    // the look-up of a key without which a record, or the rest of one, is passed over until the next run
  OwnerLookedUp,  // of a customer's project, which goes without an owner when that fails
  OwnerNeeded,    // the owner of a project, without which a record is passed over
  InvoiceBegun,   // the look-up of its contract, or of the rows that its lines are made of
  FormFound,      // a look-up by which an invoice's lines are what they are, and that found something
  PaymentBegun,   // the look-up of what a payment goes to
  PayerLookedUp,  // the look-up of a client's or a project's link: without it a payment is passed over
  LineKeyLookedUp,  // the same of a bill's line: three for each, the first and the last of its project
  VendorsListed,    // for whoever picks one to bill: until he has, an error leaves the row to the next run
  BillLinked,       // beside LinkWritten: the statement writes a bill's own link, in the manner of a look-up
  LineWritten,      // a row of a bill that comes in, which may fail without a word, until the next run
  OutcomeDropped,   // behind the last addition QuickBooks forgets its outcome
  // Of a record that becomes several rows:
  RecordLookedFor,  // whether it is here already
  RowWritten,
  TellingRowWritten,  // by one of these the next run finds the record here
};

struct Deed {
  std::size_t k = 0;  // number of the call, from 1
  DeedKind kind = DeedKind::AddCarriedOut;
};

// Whether an error is told that keeps a row from being shown on the progress form.
enum class RowDisplay : std::uint8_t { Told, Ignored };

struct Trace {
  std::vector<std::string> names;  // of call k at k - 1
  std::vector<Deed> deeds;         // in order
  RowDisplay display = RowDisplay::Told;
};

// Stands between the counted calls and the adapters, and notes the deeds.
class Witness {
 public:
  // `callNumber` answers the number of the call in hand. Both it and `inner`'s seams must outlive the witness.
  Witness(const Platform& inner, std::function<std::size_t()> callNumber);
  ~Witness();
  Witness(const Witness&) = delete;
  Witness& operator=(const Witness&) = delete;

  // `inner` with two seams watched; valid as long as this object.
  [[nodiscard]] Platform Watched() const;
  [[nodiscard]] const std::vector<Deed>& Deeds() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

enum class Break : std::uint8_t { Raise, Kill };

// What a run that breaks at a call leaves: a lost link until the next run, all else for good. A call that raises loses
// no link: the same run finds it again.
enum class Leaves : std::uint8_t {
  Nothing,
  // QuickBooks has a new record and a row of it does not know: the next run finds it again.
  OneLostLink,
  // The twin could not be read, which was told, and counts as deleted: it is added again under a counted name and the
  // row is linked to that.
  OneTwinReplaced,
  // The record was passed over, which was told. The table counts as sent, so that the row goes with its next change.
  OnePassedOver,
  // A field of the row could not be read while the request was filled, which was told. The record went without what was
  // not set yet, and is the row's from then on.
  OneIncomplete,
  // No key could be made for a new row, which was told: the row has none, nor do those come that would need it.
  OneWithoutKey,
  // Contract, item or class of an invoice could not be looked up, which by design counts as none: it has other lines
  // than it should have, of the same total.
  OneInAnotherForm,
  // A bill went without the lines that something could not be looked up for, which counts as not there: they are billed
  // by the next run, or stay behind a bill that is known to have gone.
  OneBillInPart,
  // A record came with some of its rows, which was told, but where its last word is excused: it is here from then on.
  OneInPart,
  // The project of a record came without its owner, so that the record stays in QuickBooks until somebody helps.
  OneLeftOut,
  // Of a record came rows by which it is not found here: the next run brings all of them once more.
  OneTwice,
};

// What the send of a table makes of a name in use: a second name, or nothing.
enum class NameInUse : std::uint8_t { TriesNext, PassesOver };

[[nodiscard]] Leaves WhatIsLeft(const Trace& trace, std::size_t k, FaultTiming timing, Break how,
                                NameInUse nameInUse = NameInUse::TriesNext);

// The same of a get.
[[nodiscard]] Leaves WhatIsLeftOfAGet(const Trace& trace, std::size_t k, FaultTiming timing, Break how);

// Why an error of the call is ignored by design, so that the user is not told; empty: the user has to be told.
[[nodiscard]] std::string_view WhyIgnored(const Trace& trace, std::size_t k, FaultTiming timing);

// Whether an error of the call passes one record over without a word, or the rest of it, so that the next run has to
// bring it.
[[nodiscard]] bool PassesOverSilently(const Trace& trace, std::size_t k);

// Whether the call tells something (a field of a row that is fetched, the clock, a setting) and changes nothing. An
// error in front of it and one behind it are the same.
[[nodiscard]] bool OnlyReads(std::string_view callName);

// Whether the call changes nothing but this process's own memory and the screen. A process that dies behind it leaves
// just what one leaves that dies behind the call before.
[[nodiscard]] bool LeavesNoTrace(std::string_view callName);

}  // namespace twqb::sweep
