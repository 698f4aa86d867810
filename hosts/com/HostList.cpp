#include "com/HostList.h"

#include <utility>

#include "adapters/windows/qbfc/LastAnswer.h"
#include "adapters/windows/qbfc/QbfcTransport.h"
#include "com/House.h"
#include "com/ListObject.h"
#include "platform/PlatformError.h"

namespace twqb::com {

namespace {

// Null where the last answer has no such list: the host gets ours, which does as well.
IDispatch* OwnListOf(windows::LastAnswer& last, const ReturnedList& list) {
  try {
    auto own = last.Detail();
    const bool isSame = own.Get("Count").Number() == static_cast<long>(list.Count());
    return isSame ? own.AsVariant().Release().pdispVal : nullptr;
  } catch (const PlatformError&) {
    return nullptr;
  }
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
