// Makes every allocation of an operation fail in turn, and looks at what each failure leaves.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "faults/outcome.h"

namespace ondrel::test {

/// An operation that leaves a set exactly as it was when it fails.
struct SweptOperation {
  const char* name;
  std::function<std::unique_ptr<CMMCObjectSet>()> make;
  /// Gives S_OK for success. Runs on one set again and again until it succeeds.
  std::function<HRESULT(CMMCObjectSet&)> run;
  /// What a failing allocation may come to.
  std::vector<Outcome> allowed = kShortOfMemory;
  /// Looks at what else a failure has left, and puts in order what it may leave in the set; none when empty.
  std::function<void(CMMCObjectSet&)> afterFailure = nullptr;
  /// Judges a set on which the operation has succeeded although an allocation failed, against one on which it has
  /// succeeded with all of them; when empty, that must not be.
  std::function<void(CMMCObjectSet& set, CMMCObjectSet& whole)> afterSilence = nullptr;
};

/// The number n of the allocations fails, alone and with all later ones, for every n until the operation gets through.
/// After each failure the set, the memory and the handles held, and the set's lock must be as before; and at the end no
/// memory and no handle may be left. Reports the numbers of faults.
void FailEachAllocation(const SweptOperation& operation);

}  // namespace ondrel::test
