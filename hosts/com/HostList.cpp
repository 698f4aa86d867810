#include "com/HostList.h"

#include <fmt/core.h>

#include <string_view>
#include <utility>

#include "adapters/windows/qbfc/LastAnswer.h"
#include "adapters/windows/qbfc/QbfcTransport.h"
#include "com/House.h"
#include "com/ListObject.h"
#include "platform/PlatformError.h"
#include "services/Errors.h"

namespace twqb::com {

namespace {

constexpr std::string_view kProcedure = "AskForList";

// Null where the last answer has no such list: the host gets ours, which does as well for what both have. The log says
// why, for a host that misses a member in it.
IDispatch* OwnListOf(windows::LastAnswer& last, const ReturnedList& list) {
  try {
    auto own = last.Detail();
    const auto count = own.Get("Count").Number();
    if (count == static_cast<long>(list.Count())) return own.AsVariant().Release().pdispVal;
    LogError(kProcedure, fmt::format("The session library's own list has {} records, where {} were read; the host got "
                                     "another list with those.",
                                     count, list.Count()));
  } catch (const PlatformError& raised) {
    LogError(kProcedure,
             fmt::format("The session library has no list of its own; the host got another one. {} {}",
                         SignedNumber(raised.number()), raised.description()),
             raised.number());
  }
  return nullptr;
}

}  // namespace

IDispatch* AskForList(const std::function<ReturnedList()>& lookUp) {
  auto* const library = SessionLibrary();
  if (library == nullptr) return MakeListObject(lookUp());
  const windows::LastAnswer::Kept kept(library->Last());
  auto list = lookUp();
  if (list.IsNothing()) return nullptr;
  auto* const own = OwnListOf(library->Last(), list);
  return own != nullptr ? own : MakeListObject(std::move(list));
}

}  // namespace twqb::com
