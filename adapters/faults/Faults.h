// Decorators over the five seams that make chosen calls fail: those of a script, and in a sweep the k-th call of all.
//
// They stand between the library and the adapters of a host (and inside the transcript, which so records the faults). A
// call that is not at fault passes unchanged. Faults strike calls, also those that never fail by their contract.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "adapters/faults/FaultScript.h"
#include "platform/Platform.h"

namespace twqb {

class FaultPlatform {
 public:
  // The seams of `inner` must outlive this object. A seam that `inner` does not have is not there in the decorated
  // platform either. Counts of the script begin at this object.
  FaultPlatform(const Platform& inner, FaultScript script);
  ~FaultPlatform();
  FaultPlatform(const FaultPlatform&) = delete;
  FaultPlatform& operator=(const FaultPlatform&) = delete;

  // What the library is to be composed with; valid as long as this object.
  [[nodiscard]] Platform Decorated() const;

  // All calls through the seams so far, those that failed included, and the name of each ("Recordset.Update").
  [[nodiscard]] std::size_t CallCount() const;
  [[nodiscard]] const std::vector<std::string_view>& CallNames() const;
  // The k-th call (from 1) raises `number` with its published text. A sweep runs once to learn the count, then once for
  // each k. Replaces an earlier order; one that lies behind has no effect.
  void RaiseAt(std::size_t k, FaultTiming timing, ErrorNumber number);
  // The k-th call (from 1) runs `action` right before it takes effect, or right after it has; a call that raises has
  // not taken effect, and then an action after it does not run. What `action` raises is the call's error; one that ends
  // the process ends it there. One order with RaiseAt: either replaces the other.
  void RunAt(std::size_t k, FaultTiming timing, std::function<void()> action);

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace twqb
