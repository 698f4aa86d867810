#include "Trace.h"

#include <algorithm>
#include <array>
#include <span>

namespace twqb::sweep {

namespace {

// A place in the code, told by the calls that it makes in a row, and how many of them, behind those that are not, are
// ignored.
struct Place {
  std::string_view why;
  std::array<std::string_view, 9> calls;  // those behind the last are empty
  std::size_t ignored = 1;
  bool afterToo = true;     // False: only an error before the call takes effect is ignored
  std::size_t told = 0;     // calls ahead of them whose errors are told
  bool passesOver = false;  // the row is left to the next run
};

constexpr std::string_view kLog = "a log line that can't be written is lost";
constexpr std::string_view kProgress = "the progress bar is drawn with errors ignored";
constexpr std::string_view kBackup = "the copies of the first run are made with errors ignored";
constexpr std::string_view kSeason = "an unreadable time zone counts as standard time in the conflict rule";
constexpr std::string_view kPayrollItem =
    "what the payroll item is chosen by counts as not there when it can't be read";
constexpr std::string_view kPointer = "the wait pointer goes up and down with errors ignored";
constexpr std::string_view kClosing = "closing at the end of a table ignores errors";

constexpr std::array kIgnoredPlaces = {
    Place{.why = kLog, .calls = {"Machine.Now", "Machine.LibraryFolder", "Machine.AppendLine"}, .ignored = 3},
    Place{.why = "the dated line of the log: without a clock it is lost",
          .calls = {"Machine.Now", "Machine.Now", "Machine.LibraryFolder", "Machine.AppendLine"}},
    Place{
        .why = kProgress,
        .calls = {"Desk.UpdateMsgForm", "Desk.PumpMessages", "Machine.Now", "Desk.UpdateMsgForm", "Desk.PumpMessages"},
        .ignored = 5},
    Place{.why = kProgress,
          .calls = {"Desk.UpdateMsgForm", "Desk.PumpMessages", "Desk.PumpMessages", "Desk.PumpMessages"},
          .ignored = 3},
    Place{
        .why = kBackup,
        .calls = {"Desk.SetPointer", "Machine.CopyFile", "Machine.CopyFile", "Desk.SetPointer", "Desk.ShowMessageBox"},
        .ignored = 5},
    Place{.why = kPointer, .calls = {"Desk.SetPointer", "Transport.ProcessDocument"}},
    Place{.why = kPointer, .calls = {"Desk.SetPointer", "Machine.GetPrivateProfileString"}},
    Place{.why = kPointer, .calls = {"Transport.ProcessDocument", "Desk.SetPointer"}, .told = 1},
    Place{.why = kClosing, .calls = {"Desk.UnloadMsgForm"}},
    Place{.why = kClosing, .calls = {"Recordset.State", "Recordset.Close"}, .ignored = 2},
    Place{.why = kClosing,
          .calls = {"Recordset.State", "Recordset.Close", "Connection.State", "Connection.Close"},
          .ignored = 4},
    Place{.why = kClosing, .calls = {"Connection.State", "Connection.Close", "Connection.State"}, .ignored = 2},
    Place{.why = kClosing, .calls = {"Connection.State", "Connection.Close", "Desk.SetPointer"}, .ignored = 2},
    Place{.why = kSeason,
          .calls = {"Machine.GetTimeZoneInformation", "Recordset.Field", "Machine.GetTimeZoneInformation"}},
    // Of a budget, which has no date, ahead of its key.
    Place{.why = kSeason,
          .calls = {"Machine.GetTimeZoneInformation", "Recordset.Field", "Recordset.Field", "Recordset.Field"}},
    // Where the row's date is known already: the row goes, or it does not.
    Place{.why = kSeason,
          .calls = {"Transport.ProcessDocument", "Desk.PumpMessages", "Machine.GetTimeZoneInformation",
                    "Recordset.Field", "Recordset.Field"},
          .told = 2},
    Place{.why = kSeason,
          .calls = {"Transport.ProcessDocument", "Desk.PumpMessages", "Machine.GetTimeZoneInformation",
                    "Recordset.MoveNext"},
          .told = 2},
    Place{.why = "a manager who can't be looked up counts as unknown",
          .calls = {"Connection.OpenRecordset", "Recordset.Eof", "Recordset.DefinedSize", "Recordset.SetField"},
          .ignored = 2},
    Place{.why = "a manager who can't be looked up, or not added, counts as unknown",
          .calls = {"Connection.OpenRecordset", "Recordset.Eof", "Connection.Execute", "Recordset.DefinedSize",
                    "Recordset.SetField"},
          .ignored = 3},
    Place{.why = "a customer's project goes without a client who can't be looked up",
          .calls = {"Connection.OpenRecordset", "Desk.PumpMessages", "Connection.Execute", "Recordset.Eof",
                    "Recordset.FieldAt", "Connection.OpenRecordset", "Recordset.Eof", "Recordset.Close"},
          .ignored = 3,
          .told = 2},
    Place{.why = "a project that can't be looked up is pulled as if it were missing",
          .calls = {"Connection.Execute", "Recordset.FieldAt", "Connection.State", "Desk.PumpMessages",
                    "Recordset.SetField"},
          .ignored = 2},
    // Time entries: the choice of the payroll item.
    Place{.why = kPayrollItem,
          .calls = {"Machine.GetPrivateProfileString", "Recordset.Field", "Connection.State", "Desk.PumpMessages",
                    "Connection.Execute", "Recordset.FieldAt"},
          .ignored = 2},
    Place{.why = kPayrollItem,
          .calls = {"Recordset.FieldAt", "Connection.State", "Desk.PumpMessages", "Recordset.Field", "Recordset.Field",
                    "Recordset.Field", "Connection.State", "Desk.PumpMessages", "Connection.Execute"},
          .ignored = 3,
          .told = 3},
    // Payments: the table that says where they go.
    Place{.why = kClosing, .calls = {"Recordset.EditState", "Recordset.Close"}, .ignored = 2},
    Place{.why = "a retainer that can't be marked stays as it is",
          .calls = {"Recordset.Update", "Connection.Execute", "Recordset.EditState"},
          .told = 1},
    Place{.why = "the person to bill can't be told",
          .calls = {"Desk.UpdateMsgForm", "Desk.PumpMessages", "Recordset.Field", "Recordset.Field", "Recordset.Field",
                    "Connection.State", "Desk.PumpMessages", "Connection.Execute"},
          .told = 4,
          .passesOver = true},
    Place{.why = "a bill that can't be shown for a review is not shown",
          .calls = {"Desk.SetPointer", "Desk.ShowMessageBox", "Transport.ProcessDocument", "Connection.State",
                    "Connection.Close"},
          .ignored = 2,
          .told = 1},
    Place{.why = "a session that does not begin is tried again with the remembered file",
          .calls = {"Transport.BeginSession"},
          .afterToo = false},
};

// What the form shows of a row: its fields, and the text behind the bar.
constexpr std::array kPlacesOfDisplay = {
    Place{.why = kProgress,
          .calls = {"Recordset.Field", "Recordset.Field", "Recordset.Field", "Recordset.Field", "Recordset.Field",
                    "Recordset.Field", "Desk.UpdateMsgForm", "Desk.PumpMessages", "Machine.Now"},
          .ignored = 2,
          .told = 4},
    Place{.why = kProgress,
          .calls = {"Desk.PumpMessages", "Recordset.Field", "Recordset.Field", "Recordset.Field", "Desk.UpdateMsgForm",
                    "Desk.PumpMessages", "Machine.Now"},
          .ignored = 2,
          .told = 2},
    Place{.why = kProgress,
          .calls = {"Desk.UpdateMsgForm", "Desk.PumpMessages", "Machine.Now", "Desk.UpdateMsgForm", "Desk.PumpMessages",
                    "Desk.UpdateMsgForm", "Desk.PumpMessages"},
          .ignored = 2,
          .told = 5},
};

bool StandsAt(const Trace& trace, std::span<const std::string_view> calls, std::size_t first) {
  for (const auto call : calls) {
    if (call.empty()) return true;
    if (first >= trace.names.size() || trace.names[first] != call) return false;
    ++first;
  }
  return true;
}

// Why an error of call k is ignored if it is one of that place; "" if it is not.
std::string_view IgnoredAt(const Trace& trace, const Place& place, std::size_t k, FaultTiming timing) {
  if (timing == FaultTiming::After && !place.afterToo) return {};
  for (std::size_t index = place.told; index < place.told + place.ignored; ++index) {
    if (k > index && StandsAt(trace, place.calls, k - 1 - index)) return place.why;
  }
  return {};
}

// Whether call k is the statement of that call, or one of the reads of its rows right behind it.
bool IsReadingOf(const Trace& trace, std::size_t statement, std::size_t k) {
  constexpr std::array<std::string_view, 2> kReads = {"Recordset.Eof", "Recordset.FieldAt"};
  if (k < statement) return false;
  for (auto call = statement + 1; call <= k; ++call) {
    if (std::ranges::find(kReads, trace.names[call - 1]) == kReads.end()) return false;
  }
  return true;
}

// The reading of a twin whose Mod goes out, with the working out of the row's date behind it or ahead of it: the calls
// in a row, which of them reads the twin, and those whose failure passes the record over.
struct Comparison {
  std::array<std::string_view, 6> calls;  // those behind the last are empty
  std::size_t twin = 0;
  std::array<std::size_t, 3> passesOver;
};
constexpr std::array kComparisons = {
    Comparison{.calls = {"Transport.ProcessDocument", "Desk.PumpMessages", "Machine.GetTimeZoneInformation",
                         "Recordset.Field", "Machine.GetTimeZoneInformation"},
               .twin = 0,
               .passesOver = {1, 3, 4}},
    Comparison{.calls = {"Recordset.Field", "Machine.GetTimeZoneInformation", "Transport.ProcessDocument",
                         "Desk.PumpMessages", "Machine.GetTimeZoneInformation"},
               .twin = 2,
               .passesOver = {0, 1, 3}},
    Comparison{.calls = {"Recordset.Field", "Machine.GetTimeZoneInformation", "Recordset.Field",
                         "Transport.ProcessDocument", "Desk.PumpMessages", "Machine.GetTimeZoneInformation"},
               .twin = 3,
               .passesOver = {0, 1, 4}},
};

// Whether the twin that call `at` reads is passed over when call k fails.
bool PassesTwinOver(const Trace& trace, std::size_t at, std::size_t k) {
  return std::ranges::any_of(kComparisons, [&](const Comparison& comparison) {
    if (at <= comparison.twin || !StandsAt(trace, comparison.calls, at - 1 - comparison.twin)) return false;
    const auto first = at - comparison.twin;
    return std::ranges::any_of(comparison.passesOver, [&](std::size_t index) { return k == first + index; });
  });
}

// The last fields of a time entry that are read for its request, ahead of the choice of its payroll item.
constexpr std::array<std::string_view, 9> kEndOfEntry = {
    "Recordset.Field", "Recordset.Field",  "Recordset.Field",   "Recordset.Field",   "Machine.GetPrivateProfileString",
    "Recordset.Field", "Connection.State", "Desk.PumpMessages", "Connection.Execute"};
constexpr std::size_t kEndFields = 4;

// Whether what is set of an entry's request at call k is enough for QuickBooks to take it.
bool LeavesIncomplete(const Trace& trace, std::size_t k) {
  for (std::size_t index = 0; index < kEndFields; ++index) {
    if (k > index && StandsAt(trace, kEndOfEntry, k - 1 - index)) return true;
  }
  return false;
}

// Whether call k is a look-up without which an invoice takes another form.
bool LooksUpForm(const Trace& trace, std::size_t k) {
  bool ofInvoice = false;
  for (const auto& deed : trace.deeds) {
    if (deed.kind == DeedKind::InvoiceBegun) ofInvoice = true;
    if (deed.kind == DeedKind::AddCarriedOut) ofInvoice = false;
    if (deed.kind == DeedKind::FormFound && ofInvoice && IsReadingOf(trace, deed.k, k)) return true;
  }
  return false;
}

// Whether call k stands between the list of vendors and the picking of one.
bool PicksVendor(const Trace& trace, std::size_t k) {
  return std::ranges::any_of(trace.deeds, [&](const Deed& deed) {
    if (deed.kind != DeedKind::VendorsListed || k < deed.k) return false;
    const auto from = trace.names.begin() + static_cast<std::ptrdiff_t>(deed.k) - 1;
    const auto picked = std::find(from, trace.names.end(), "Desk.PickVendor");
    return k <= static_cast<std::size_t>(picked - trace.names.begin()) + 1;
  });
}

// Whether a project that a record needs gets no owner when call k fails.
bool LeavesOwnerOut(const Trace& trace, std::size_t k) {
  const auto isNeeded = [&](const Deed& deed) { return deed.kind == DeedKind::OwnerNeeded && deed.k > k; };
  return std::ranges::any_of(trace.deeds, isNeeded) && std::ranges::any_of(trace.deeds, [&](const Deed& deed) {
           return deed.kind == DeedKind::OwnerLookedUp && IsReadingOf(trace, deed.k, k);
         });
}

// The deeds of one bill: the look-ups for its lines, and the links that are written behind its Add.
struct BillDeeds {
  std::vector<std::size_t> lineKeys = {};
  std::vector<std::size_t> links = {};
  bool isAdded = false;
  bool hasOwnRow = false;  // which is linked first
  [[nodiscard]] std::size_t Lines() const { return links.size() - (hasOwnRow ? 1 : 0); }
};

std::vector<BillDeeds> BillsOf(const Trace& trace) {
  std::vector<BillDeeds> bills(1);
  for (const auto& [k, kind] : trace.deeds) {
    if (kind == DeedKind::LineKeyLookedUp && bills.back().isAdded) bills.emplace_back();
    auto& bill = bills.back();
    if (kind == DeedKind::LineKeyLookedUp) bill.lineKeys.push_back(k);
    if (kind == DeedKind::AddCarriedOut) bill.isAdded = true;
    if (kind == DeedKind::LinkWritten) bill.links.push_back(k);
    if (kind == DeedKind::BillLinked) bill.hasOwnRow = true;
  }
  return bills;
}

// Whether a bill of several lines goes with a part of them when call k raises.
bool LeavesBillInPart(const Trace& trace, std::size_t k) {
  constexpr std::size_t kKeysOfALine = 3;
  for (const auto& bill : BillsOf(trace)) {
    if (bill.lineKeys.empty() || !bill.isAdded || bill.Lines() < 2) continue;
    for (std::size_t i = 0; i < bill.lineKeys.size(); ++i) {
      // A bill with a row of its own goes again as a whole, where none of its lines has come about.
      if (IsReadingOf(trace, bill.lineKeys[i], k)) return !bill.hasOwnRow || i >= kKeysOfALine;
    }
  }
  return false;
}

// Whether a process that dies there leaves a record whose rows do not all know it: behind the addition, and ahead of
// the last of the links that are written for it.
bool LosesLink(const Trace& trace, std::size_t k, FaultTiming timing) {
  const auto isDone = [&](const Deed& deed) { return k > deed.k || (k == deed.k && timing == FaultTiming::After); };
  bool isOpen = false;
  for (const auto& deed : trace.deeds) {
    if (deed.kind == DeedKind::AddCarriedOut) isOpen = false;
    if (deed.kind != DeedKind::AddCarriedOut && deed.kind != DeedKind::LinkWritten) continue;
    if (deed.kind == DeedKind::LinkWritten && isOpen && !isDone(deed)) return true;
    isOpen = isDone(deed);
  }
  return false;
}

// What a twin that can't be read, or compared, leads to.
Leaves WhatIsLeftOfATwin(const Trace& trace, std::size_t k) {
  // What is only looked up stands between none of the others.
  auto deeds = trace.deeds;
  std::erase_if(deeds, [](const Deed& deed) { return deed.kind >= DeedKind::Choice; });
  for (std::size_t i = 0; i < deeds.size(); ++i) {
    if (deeds[i].kind != DeedKind::TwinRead) continue;
    if (k == deeds[i].k) return Leaves::OneTwinReplaced;
    const bool modFollows = i + 1 < deeds.size() && deeds[i + 1].kind == DeedKind::ModCarriedOut;
    if (modFollows && PassesTwinOver(trace, deeds[i].k, k)) return Leaves::OnePassedOver;
  }
  return Leaves::Nothing;
}

}  // namespace

Leaves WhatIsLeft(const Trace& trace, std::size_t k, FaultTiming timing, Break how, NameInUse nameInUse) {
  if (how == Break::Kill) return LosesLink(trace, k, timing) ? Leaves::OneLostLink : Leaves::Nothing;
  if (LeavesIncomplete(trace, k)) return Leaves::OneIncomplete;
  if (LooksUpForm(trace, k)) return Leaves::OneInAnotherForm;
  if (LeavesBillInPart(trace, k)) return Leaves::OneBillInPart;
  const auto leaves = WhatIsLeftOfATwin(trace, k);
  // A second Add finds the name of the twin that could not be read.
  const bool staysRefused = leaves == Leaves::OneTwinReplaced && nameInUse == NameInUse::PassesOver;
  return staysRefused ? Leaves::Nothing : leaves;
}

Leaves WhatIsLeftOfAGet(const Trace& trace, std::size_t k, FaultTiming timing, Break how) {
  if (trace.names[k - 1] == "Machine.CreateGuid" && how == Break::Raise) return Leaves::OneWithoutKey;
  if (how == Break::Raise && LeavesOwnerOut(trace, k)) return Leaves::OneLeftOut;
  // A look-up that fails without a word takes the rows along that it is for; those behind the next one come.
  const bool goesOn = how == Break::Raise && PassesOverSilently(trace, k);
  bool isPassedOver = false;
  // The rows of the record in work: how many are written by then, and whether there is one among them that tells.
  std::size_t rows = 0;
  std::size_t written = 0;
  bool tells = false;
  for (const auto& deed : trace.deeds) {
    if (deed.kind == DeedKind::RecordLookedFor) {
      if (deed.k > k) break;
      rows = 0;
      written = 0;
      tells = false;
      isPassedOver = false;
    }
    if (deed.kind == DeedKind::KeyLookedUp) isPassedOver = IsReadingOf(trace, deed.k, k);
    const bool isTelling = deed.kind == DeedKind::TellingRowWritten;
    if (!isTelling && deed.kind != DeedKind::RowWritten) continue;
    ++rows;
    const bool isAhead = deed.k < k || (deed.k == k && timing == FaultTiming::After);
    if (goesOn ? isPassedOver : !isAhead) continue;
    ++written;
    tells = tells || isTelling;
  }
  if (written == 0 || written == rows) return Leaves::Nothing;
  return tells ? Leaves::OneInPart : Leaves::OneTwice;
}

bool PassesOverSilently(const Trace& trace, std::size_t k) {
  bool ofPayment = false;
  for (const auto& deed : trace.deeds) {
    ofPayment = ofPayment || deed.kind == DeedKind::PaymentBegun;
    const bool isKey = deed.kind == DeedKind::KeyLookedUp || deed.kind == DeedKind::LineKeyLookedUp ||
                       (ofPayment && deed.kind == DeedKind::PayerLookedUp);
    if (isKey && IsReadingOf(trace, deed.k, k)) return true;
    if (deed.kind == DeedKind::LineWritten && deed.k == k) return true;
  }
  if (PicksVendor(trace, k)) return true;
  return std::ranges::any_of(kIgnoredPlaces, [&](const Place& place) {
    return place.passesOver && !IgnoredAt(trace, place, k, FaultTiming::Before).empty();
  });
}

std::string_view WhyIgnored(const Trace& trace, std::size_t k, FaultTiming timing) {
  if (PassesOverSilently(trace, k)) return "a record whose keys can't be looked up is left to the next run";
  if (LooksUpForm(trace, k)) return "an invoice's contract, item or class that can't be looked up is none";
  bool isBehindAddition = false;
  for (const auto& deed : trace.deeds) {
    isBehindAddition = isBehindAddition || deed.kind == DeedKind::AddCarriedOut;
    if (deed.kind == DeedKind::OutcomeDropped && deed.k == k && isBehindAddition) {
      return "an outcome that stays is found settled";
    }
    if (deed.kind == DeedKind::Choice && IsReadingOf(trace, deed.k, k)) return "a choice that can't be read is none";
    if (deed.kind == DeedKind::BillLinked && IsReadingOf(trace, deed.k, k))
      return "a bill's own link is not looked after";
  }
  for (const auto& place : kIgnoredPlaces) {
    if (const auto why = IgnoredAt(trace, place, k, timing); !why.empty()) return why;
  }
  if (trace.display == RowDisplay::Told) return {};
  for (const auto& place : kPlacesOfDisplay) {
    if (const auto why = IgnoredAt(trace, place, k, timing); !why.empty()) return why;
  }
  return {};
}

bool OnlyReads(std::string_view callName) {
  constexpr std::array<std::string_view, 17> kCalls = {
      "Connection.ConnectionString",
      "Connection.Provider",
      "Connection.State",
      "Machine.GetPrivateProfileString",
      "Machine.GetTimeZoneInformation",
      "Machine.LibraryFolder",
      "Machine.Now",
      "Machine.ReadRegistry",
      "Recordset.DefinedSize",
      "Recordset.EditState",
      "Recordset.Eof",
      "Recordset.Field",
      "Recordset.FieldAt",
      "Recordset.RecordCount",
      "Recordset.State",
      "Transport.GetCurrentCompanyFileName",
      "Transport.GetVersion",
  };
  return std::ranges::find(kCalls, callName) != kCalls.end();
}

bool LeavesNoTrace(std::string_view callName) {
  constexpr std::array<std::string_view, 9> kCalls = {
      "Connection.SetConnectionString",
      "Connection.SetConnectionTimeout",
      "Connection.SetCursorLocation",
      "Connection.SetMode",
      "Desk.Beep",
      "Desk.PumpMessages",
      "Desk.SetPointer",
      "Desk.UpdateMsgForm",
      "Recordset.SetField",
  };
  return OnlyReads(callName) || std::ranges::find(kCalls, callName) != kCalls.end();
}

}  // namespace twqb::sweep
