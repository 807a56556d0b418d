// Memory that runs short while an object image is stored, which leaves the set as it was, or loaded, which leaves what
// was read so far.

#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "faults/allocation_sweep.h"
#include "faults/definition.h"
#include "faults/fault_count.h"
#include "faults/held.h"
#include "faults/image_steps.h"
#include "support/archive_bytes.h"
#include "support/model/lock_watch.h"
#include "support/model/set_forms.h"

namespace ondrel::test {
namespace {

/// So small that a store writes many times.
constexpr int kStoreBuffer = 256;
/// More than a load takes.
constexpr long kMostFaults = 100'000;

TEST(ImageMemory, RunningShortWhileStoringLeavesTheSetAsItWas) {
  const Definition definition;
  FailEachAllocation({.name = "image store",
                      .make = [&] { return definition.Make(); },
                      .run =
                          [&](CMMCObjectSet& set) {
                            CMemFile file;
                            CVellum archive(&file, CArchive::store, kStoreBuffer);
                            set.SerializeObjects(archive, 0, 1);
                            archive.Abort();  // so that nothing is allocated once the set has told success
                            return S_OK;
                          }});
}

TEST(ImageMemory, RunningShortWhileLoadingLeavesWhatWasRead) {
  const Definition definition;
  const ImageSteps steps(*definition.Make());
  LockWatch watch;
  LoadImage(*ImageSteps::MakeOldSet(), steps.Image());
  long faults = 0;
  for (const Shortage shortage : {Shortage::passing, Shortage::lasting}) {
    ImageLoads loads(steps);
    bool failed = true;
    for (long index = 0; failed && index < kMostFaults; ++index) {
      SCOPED_TRACE("allocation " + std::to_string(index) + (shortage == Shortage::lasting ? " and all later" : ""));
      const Held held = CountHeld();
      {
        const std::unique_ptr<CMMCObjectSet> set = ImageSteps::MakeOldSet();
        Outcome outcome;
        {
          const FailingAllocation failing(index, shortage);
          outcome = OutcomeOf([&] { LoadImage(*set, steps.Image()); });
          failed = failing.HasFailed();
        }
        EXPECT_TRUE(watch.IsFree(*set)) << "the lock is held";
        if (failed) {
          ++faults;
          EXPECT_THAT(kShortOfMemory, testing::Contains(outcome));
        } else {
          EXPECT_EQ(outcome, kSuccess);
        }
        loads.ExpectStep(*set, outcome);
      }
      EXPECT_EQ(CountHeld(), held);
      if (HasFailure()) break;
    }
    EXPECT_TRUE(!failed || HasFailure()) << "there is no end of allocations";
  }
  ReportFaults("image load, allocations", faults);
}

}  // namespace
}  // namespace ondrel::test
