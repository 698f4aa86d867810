// What a request is answered: a code and its message. One function for each status that the company file gives, so that
// the wording of a code stands in one place.
#pragma once

#include <string>
#include <string_view>

#include "messages/Validation.h"

namespace twqb::company {

// Between two sentences of a message stand two blanks, as QuickBooks writes them.
struct Status {
  int code = 0;
  std::string message = "Status OK";
};

// An element as a message says it: "InvoiceLine" is an "invoice line", "ListID" a "list id".
[[nodiscard]] std::string SpokenName(std::string_view element);

// "Info" up to 499, "Warn" up to 999, "Error" above.
[[nodiscard]] std::string_view Severity(const Status& status);
[[nodiscard]] bool IsError(const Status& status);

namespace status {

// 1: a query found nothing.
[[nodiscard]] Status NothingFound();
// 500: a query by identifier or name, of which `value` is not there.
[[nodiscard]] Status QueryIncomplete(std::string_view value);
// 1030: a request that is published, about records that company files here do not keep.
[[nodiscard]] Status UnsupportedMessage(std::string_view request);
// 1060
[[nodiscard]] Status RequestIdTooLong(std::string_view id);
// 3030, 3031: nothing lies between the two.
[[nodiscard]] Status ReversedDates(std::string_view from, std::string_view to);
[[nodiscard]] Status ReversedNames(std::string_view from, std::string_view to);
// 3090
[[nodiscard]] Status ColonInName(std::string_view name, std::string_view kind);
// 3100
[[nodiscard]] Status NameInUse(std::string_view name);
// 3120
[[nodiscard]] Status ObjectNotFound(std::string_view id);
// 3130: the parent is not there, or can't take the record. `reason` is a sentence of its own.
[[nodiscard]] Status BadParent(std::string_view parent, std::string_view kind, std::string_view reason);
// 3140: `value` names no record of the list that the field `reference` of a `kind` refers to.
[[nodiscard]] Status BadReference(std::string_view reference, std::string_view value, std::string_view kind);
// 3150
[[nodiscard]] Status MissingElement(std::string_view element);
// 3160: `reason` is a sentence of its own, as in the next two.
[[nodiscard]] Status CannotDelete(std::string_view id, std::string_view reason);
// 3170
[[nodiscard]] Status CannotModify(std::string_view kind, std::string_view reason);
// 3171: a transaction of that date can't come or go any more.
[[nodiscard]] Status BooksClosed(std::string_view date, std::string_view closingDate);
// 3180
[[nodiscard]] Status CannotSave(std::string_view kind, std::string_view reason);
// 3200
[[nodiscard]] Status EditSequenceOutOfDate(std::string_view given);
// 3210: `field` as a message says it ("payment amount"); `reason` is a sentence of its own.
[[nodiscard]] Status InvalidValue(std::string_view field, std::string_view value, std::string_view reason);
// 3231: an earlier request stopped the set, or the answers to those before are too long for another one.
[[nodiscard]] Status NotProcessed();
// 3240: what `reference` of a `kind` refers to was there once.
[[nodiscard]] Status ReferenceGone(std::string_view reference, std::string_view value, std::string_view kind);
// 3240: it is there, but not of a kind that the field may name.
[[nodiscard]] Status ReferenceOfWrongKind(std::string_view reference, std::string_view value, std::string_view kind);
// 3250: `what` is the name of a list or of a feature.
[[nodiscard]] Status FeatureNotEnabled(std::string_view what);
// 3260: the user that QuickBooks knows may not do it.
[[nodiscard]] Status NotPermitted();
// 3261: nor read or write what `field` tells of a person.
[[nodiscard]] Status PersonalDataWithheld(std::string_view field);
// 3310: time of an employee of whom it is not known whether time makes the paycheck.
[[nodiscard]] Status TimeForPaychecksUnknown(std::string_view employee);
// 9100: a macro that nothing has defined; 9101: one that something has defined already.
[[nodiscard]] Status MacroUnknown(std::string_view macro);
[[nodiscard]] Status MacroTaken(std::string_view macro);
// By the kind of problem and, of a value, by its type: 3000, 3010, 3020, 3035, 3040, 3045, 3050, 3060, 3070 or 3150.
// Not for problems that refuse the whole document.
[[nodiscard]] Status OfProblem(const messages::Problem& problem);

}  // namespace status

inline constexpr std::string_view kNoSuchRecord = "Invalid argument.  The specified record does not exist in the list.";

}  // namespace twqb::company
