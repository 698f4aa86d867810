// What is done about a request that QuickBooks refused, as rows: for a status, on an Add or a Mod, what is told and
// what then. For lists and transactions alike.
//
// A table's rows stand ahead of the common ones, so they say what differs. What then happens to a row is the send's.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/ado.h"
#include "platform/desk.h"
#include "quickbooks/RequestModel.h"
#include "quickbooks/ResponseModel.h"

namespace twqb {

enum class RequestKind : std::uint8_t { Add, Mod };

struct SendRecord;

// A request that QuickBooks refused.
struct RefusedRequest {
  const RequestField& request;
  const Response& response;
  RequestKind kind;
  const SendRecord& record;
  const ado::Recordset& row;
  int resends = 0;          // how often this request was sent again already
  bool namesSpent = false;  // there is no next name: each further one would be cut to one that was refused
};

// What then.
enum class Refusal : std::uint8_t {
  AskInTheBox,      // QuickBooks' words and the record line, with the question whether to go on behind them
  AskInItsOwnBox,   // the same, with the question in a box behind it
  AskToGoOn,        // the question alone, in a box of its own
  TryNextName,      // the name is in use: one more Add in the same set, with the next counter behind the name
  SendAgain,        // the request was mended: the same set goes out again
  PassOver,         // the next row
  PassOverLacking,  // the same, for lack of what the row belongs to, which the end of the run tells
  EndTable,         // the table ends as after a cancel
  LeaveTable,       // no further row; the outcome is False
};

// Which requests a row is about. An Add whose names are spent is still an Add; a row that tries the next name is not
// about it.
enum class OnRequest : std::uint8_t { Any, Add, Mod, AddNamesSpent };

inline constexpr std::int32_t kAnyStatus = -1;

struct StatusRule {
  std::int32_t status = kAnyStatus;
  OnRequest on = OnRequest::Any;
  Refusal then = Refusal::PassOver;
  // What is told, the log first; left out: nothing. No to a question in the box is a wish to stop.
  std::vector<std::string> (*log)(const RefusedRequest& refused) = nullptr;
  MessageBox (*box)(const RefusedRequest& refused) = nullptr;
  // Decides in the place of `then`, where that hangs on more than the status.
  Refusal (*decide)(const RefusedRequest& refused) = nullptr;
};

// The first row that is about the refusal: of `rules`, else of the common ones. These try the next name where an Add's
// is in use, and ask the user about all else: about an Add in the box that tells it, about a Mod in one of its own.
[[nodiscard]] const StatusRule& RuleFor(std::span<const StatusRule> rules, const RefusedRequest& refused);

// What became of the record in hand: QuickBooks refused it.
void NoteRefused(const Response& response);

// Tells what the row tells, which may set `wantsNoMore`, and answers what then.
[[nodiscard]] Refusal ApplyRule(const StatusRule& rule, const RefusedRequest& refused, bool& wantsNoMore);

}  // namespace twqb
