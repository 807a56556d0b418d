// Stores onto devices and disks that are full, and loads from a device that fails, through the system's own calls: only
// on these systems can a test have them.

#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include <ondrel/MMCArchiveFile.h>
#include <ondrel/platform/program.h>

#include "faults/definition.h"
#include "faults/fault_count.h"
#include "faults/image_steps.h"
#include "faults/store_check.h"
#include "support/kernel_handles.h"
#include "support/posix/failing_memory_file.h"
#include "support/posix/process.h"

namespace ondrel::test {
namespace {

constexpr Outcome kDiskFull = RaisesFile(CFileException::diskFull);
constexpr Outcome kDiskFullStatus = RaisesStatus(static_cast<HRESULT>(0x80070070));
/// The device's failure, as a status: a device that does not work.
constexpr Outcome kDeviceFailed = RaisesStatus(static_cast<HRESULT>(0x8007001F));

class PosixDeviceFaults : public testing::Test {
 protected:
  void SetUp() override { platform::PrepareProgram(); }
  void TearDown() override { std::signal(SIGXFSZ, SIG_DFL); }

  /// Stores with the process's files limited to every so manieth length below the whole one.
  template <class Run>
  long SweepLimits(const StoreCheck& check, const Run& run) {
    constexpr std::size_t kStep = 509;
    long faults = 0;
    for (const Ending ending : {Ending::destroy, Ending::close}) {
      for (const int bufferSize : kBuffers) {
        for (std::size_t limit = 0; limit < check.Stored().size(); limit += kStep, ++faults) {
          SCOPED_TRACE("limit " + std::to_string(limit) + ", buffer of " + std::to_string(bufferSize) +
                       " bytes, archive " + testing::PrintToString(ending));
          const ArchiveRun archive = run(limit, bufferSize, ending);
          EXPECT_TRUE(archive.used != kSuccess || archive.ended != kSuccess || ending == Ending::destroy);
          EXPECT_EQ(ReadBytes(m_folder / "stored.bin"), check.Stored().substr(0, limit));
          if (HasFailure()) return faults;
        }
      }
    }
    return faults;
  }

  const Definition m_definition;
  const TemporaryFolder m_folder;
};

TEST_F(PosixDeviceFaults, AFileThatMayNotGrowIsAFullDisk) {
  const CString path = Wide(m_folder / "stored.bin");
  for (const StoredForm form : kStoredForms) {
    StoreCheck check = StoringCheck(m_definition, form);
    const long faults = SweepLimits(check, [&](std::size_t limit, int bufferSize, Ending ending) {
      CFile file(path, CFile::modeCreate | CFile::modeWrite);
      const ResourceLimit limited(RLIMIT_FSIZE, limit);
      return check.Run(file, bufferSize, ending, kDiskFull);
    });
    ReportFaults((StoringOf(form) + " onto files on a full disk").c_str(), faults);
  }
}

TEST_F(PosixDeviceFaults, AHandleOfAFileThatMayNotGrowIsAFullDisk) {
  for (const StoredForm form : kStoredForms) {
    StoreCheck check = StoringCheck(m_definition, form);
    const long faults = SweepLimits(check, [&](std::size_t limit, int bufferSize, Ending ending) {
      const KernelHandle handle = OpenToWrite(m_folder / "stored.bin");
      CMMCArchiveFile file(handle.Get());
      const ResourceLimit limited(RLIMIT_FSIZE, limit);
      return check.Run(file, bufferSize, ending, kDiskFullStatus);
    });
    ReportFaults((StoringOf(form) + " onto handles on a full disk").c_str(), faults);
  }
}

TEST_F(PosixDeviceFaults, AFullDeviceIsAFullDisk) {
  for (const StoredForm form : kStoredForms) {
    StoreCheck check = StoringCheck(m_definition, form);
    for (const Ending ending : kEndings) {
      for (const int bufferSize : kBuffers) {
        const KernelHandle handle = OpenToWrite("/dev/full");
        CMMCArchiveFile file(handle.Get());
        const ArchiveRun run = check.Run(file, bufferSize, ending, kDiskFullStatus);
        // A project waits in the usual buffer for the end.
        const bool waits = form == StoredForm::project && bufferSize == kUsualBuffer;
        EXPECT_EQ(run.used, waits ? kSuccess : kDiskFullStatus);
        EXPECT_EQ(run.ended, waits && ending == Ending::close ? kDiskFullStatus : kSuccess);
      }
    }
  }
}

TEST_F(PosixDeviceFaults, ADeviceThatFailsOnTheWayLeavesWhatWasRead) {
  const ImageSteps steps(*m_definition.Make());
  LockWatch watch;
  long faults = 0;
  for (const int bufferSize : kBuffers) {
    ImageLoads loads(steps);
    for (std::size_t length = 0; length < steps.Image().size(); length += 61, ++faults) {
      SCOPED_TRACE(std::to_string(length) + " bytes, buffer of " + std::to_string(bufferSize));
      const FailingMemoryFile device(steps.Image().substr(0, length));
      const auto set = ImageSteps::MakeOldSet();
      CMMCArchiveFile file(device.Handle());
      const ArchiveRun run = RunArchive(file, CArchive::load, bufferSize, Ending::close,
                                        [&](CVellum& archive) { set->SerializeObjects(archive, 0, 0); });
      EXPECT_TRUE(watch.IsFree(*set)) << "the lock is held";
      EXPECT_EQ(run.used, kDeviceFailed);
      loads.ExpectStep(*set, run.used);
      if (HasFailure()) return;
    }
  }
  ReportFaults("image load from a failing device", faults);
}

}  // namespace
}  // namespace ondrel::test
