// The gate that every decorated call passes: it counts calls, and makes those fail that a script or a sweep names.
//
// It knows a call by its name, by the point of the fault file it belongs to (if any), and by what it is about (the
// statement, the table, the key). It does not know the seams.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <type_traits>
#include <vector>

#include "adapters/faults/FaultScript.h"
#include "platform/PlatformError.h"

namespace twqb::faults {

struct SeamCall {
  std::string_view name;  // "Recordset.Update"; must be a literal, it is kept
  std::optional<FaultPoint> point = std::nullopt;
  std::string_view what = {};    // what a line's WHAT is held against
  std::string_view access = {};  // settings: "read" or "write"
};

class FaultGate {
 public:
  explicit FaultGate(std::vector<RaiseFault> raises);

  // Runs `body` as the call, and gives its result. Raises the first fault that is due before the call, without running
  // `body`, or else the first that is due after it. What `body` raises passes through, and then no fault does.
  template <typename Body>
  auto Run(const SeamCall& call, Body body) {
    const auto after = Enter(call);
    if constexpr (std::is_void_v<decltype(body())>) {
      body();
      if (after) after();
    } else {
      auto result = body();
      if (after) after();
      return result;
    }
  }

  [[nodiscard]] const std::vector<std::string_view>& CallNames() const { return names_; }
  // The k-th call (from 1, since the gate was made) runs `action`, whatever call it is. Replaces an earlier order.
  void RunAt(std::size_t k, FaultTiming timing, std::function<void()> action);

 private:
  struct Line {
    RaiseFault fault;
    std::size_t seen = 0;
  };
  struct Sweep {
    std::size_t k;
    FaultTiming timing;
    std::function<void()> action;
  };

  // Counts the call; runs what is due before it, and gives what is due after it, or nothing.
  std::function<void()> Enter(const SeamCall& call);

  std::vector<Line> lines_;
  std::optional<Sweep> sweep_;
  std::vector<std::string_view> names_;
};

}  // namespace twqb::faults
