#include "adapters/faults/Faults.h"

#include <optional>
#include <utility>

#include "adapters/faults/FaultAnswers.h"
#include "adapters/faults/FaultDatabase.h"
#include "adapters/faults/FaultGate.h"
#include "adapters/faults/FaultSession.h"
#include "adapters/faults/FaultSurroundings.h"

namespace twqb {

struct FaultPlatform::Parts {
  Parts(const Platform& inner, FaultScript script)
      : gate(std::move(script.raises)), answers(std::move(script.statuses)) {
    if (inner.database != nullptr) database.emplace(*inner.database, gate);
    if (inner.quickbooks != nullptr) quickbooks.emplace(*inner.quickbooks, gate, answers);
    if (inner.desk != nullptr) desk.emplace(*inner.desk, gate);
    if (inner.machine != nullptr) machine.emplace(*inner.machine, gate);
    if (inner.callback != nullptr) callback.emplace(*inner.callback, gate);
  }

  faults::FaultGate gate;
  faults::FaultAnswers answers;
  std::optional<faults::FaultProvider> database;
  std::optional<faults::FaultTransportFactory> quickbooks;
  std::optional<faults::FaultDesk> desk;
  std::optional<faults::FaultMachine> machine;
  std::optional<faults::FaultCallbackFactory> callback;
};

FaultPlatform::FaultPlatform(const Platform& inner, FaultScript script)
    : parts_(std::make_unique<Parts>(inner, std::move(script))) {}

FaultPlatform::~FaultPlatform() = default;

Platform FaultPlatform::Decorated() const {
  const auto address = [](auto& part) { return part ? &*part : nullptr; };
  return {.database = address(parts_->database),
          .quickbooks = address(parts_->quickbooks),
          .desk = address(parts_->desk),
          .machine = address(parts_->machine),
          .callback = address(parts_->callback)};
}

std::size_t FaultPlatform::CallCount() const { return parts_->gate.CallNames().size(); }

const std::vector<std::string_view>& FaultPlatform::CallNames() const { return parts_->gate.CallNames(); }

void FaultPlatform::RaiseAt(std::size_t k, FaultTiming timing, ErrorNumber number) {
  RunAt(k, timing, [error = PlatformError(number, FaultDescription(number))] { throw PlatformError(error); });
}

void FaultPlatform::RunAt(std::size_t k, FaultTiming timing, std::function<void()> action) {
  parts_->gate.RunAt(k, timing, std::move(action));
}

}  // namespace twqb
