#include "faults/allocation_sweep.h"

#include <gmock/gmock.h>

#include <string>

#include "faults/fault_count.h"
#include "faults/held.h"
#include "support/model/lock_watch.h"
#include "support/model/seeded_random_device.h"
#include "support/model/set_forms.h"

namespace ondrel::test {
namespace {

/// More than any of the operations takes.
constexpr long kMostAllocations = 100'000;

struct Faults {
  long injected = 0;
  long silent = 0;  ///< Of them those that nobody was told of.
};

/// The faults of one kind, on one set for as long as they leave it as it was.
Faults Sweep(const SweptOperation& operation, Shortage shortage, CMMCObjectSet& whole, LockWatch& watch) {
  const std::string after = Observed(whole);
  std::unique_ptr<CMMCObjectSet> set = operation.make();
  const std::string before = Observed(*set);
  Faults faults;
  for (long index = 0; index < kMostAllocations; ++index) {
    SCOPED_TRACE("allocation " + std::to_string(index) + (shortage == Shortage::lasting ? " and all later" : ""));
    const Held held = CountHeld();
    Outcome outcome;
    bool failed = false;
    {
      const FailingAllocation failing(index, shortage);
      outcome = OutcomeOf([&] { return operation.run(*set); });
      failed = failing.HasFailed();
    }
    EXPECT_TRUE(watch.IsFree(*set)) << "the lock is held";
    if (!failed) {
      EXPECT_EQ(outcome, kSuccess);
      EXPECT_EQ(Observed(*set), after);
      return faults;
    }
    ++faults.injected;
    if (outcome == kSuccess && operation.afterSilence) {
      ++faults.silent;
      operation.afterSilence(*set, whole);
      set = operation.make();
    } else {
      EXPECT_THAT(operation.allowed, testing::Contains(outcome));
      if (operation.afterFailure) operation.afterFailure(*set);
      EXPECT_EQ(CountHeld(), held);
      EXPECT_EQ(Observed(*set), before);
    }
    if (testing::Test::HasFailure()) return faults;  // thousands would say the same
  }
  ADD_FAILURE() << "there is no end of allocations";
  return faults;
}

}  // namespace

void FailEachAllocation(const SweptOperation& operation) {
  SCOPED_TRACE(operation.name);
  const SeededRandomDevice sameCookies(1);
  LockWatch watch;
  // Without faults, for the result, and so that whatever is made once in the program's life is there.
  const std::unique_ptr<CMMCObjectSet> whole = operation.make();
  ASSERT_EQ(OutcomeOf([&] { return operation.run(*whole); }), kSuccess);
  Faults faults;
  for (const Shortage shortage : {Shortage::passing, Shortage::lasting}) {
    const Held held = CountHeld();
    const Faults some = Sweep(operation, shortage, *whole, watch);
    faults.injected += some.injected;
    faults.silent += some.silent;
    EXPECT_EQ(CountHeld(), held) << "after the set is gone";
  }
  const std::string name = operation.name;
  ReportFaults((name + ", allocations").c_str(), faults.injected);
  if (faults.silent > 0) ReportFaults((name + ", allocations, told to nobody").c_str(), faults.silent);
}

}  // namespace ondrel::test
