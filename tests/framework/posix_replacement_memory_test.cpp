// Replacement files when memory runs short. Off Windows every allocation on the way can be made to fail, those of the
// system's library as well.
#include <gtest/gtest.h>

#include <new>

#include "support/failing_allocation.h"
#include "support/posix/unnamed_files.h"
#include "support/print_text.h"
#include "support/temporary_folder.h"

#include <ondrel/platform/program.h>

namespace ondrel::test {
namespace {

using platform::ReplacementFile;

bool ReplacesWith(const CString& path, std::string_view bytes) {
  try {
    ReplacementFile file(path);
    file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    file.Commit();
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  } catch (const CException&) {
    return false;
  }
}

long OpenDescriptors() {
  const auto entries = std::filesystem::directory_iterator("/proc/self/fd");
  return std::distance(begin(entries), end(entries));
}

/// Removes what the folder holds beside the file of that name: only files that were to take its place.
void RemoveTemporaries(const TemporaryFolder& folder, const std::string& name) {
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
    if (entry.path().filename() == name) continue;
    EXPECT_EQ(entry.path().extension(), ".tmp");
    std::filesystem::remove(entry.path());
  }
}

/// Fails each allocation in turn, until the file is replaced without one that fails. Memory that stays short keeps even
/// the name of a file from being removed, where it has one.
void FailEachAllocation(const TemporaryFolder& folder, const std::string& name, Shortage shortage) {
  const CString path = Wide(folder / name);
  const long open = OpenDescriptors();
  long failures = 0;
  for (bool hasFailed = true; hasFailed; ++failures) {
    folder.Write(name, "old");
    bool replaced = false;
    {
      const FailingAllocation failing(failures, shortage);
      replaced = ReplacesWith(path, "new");
      hasFailed = failing.HasFailed();
    }
    EXPECT_EQ(ReadBytes(folder / name), replaced ? "new" : "old") << "allocation " << failures;
    if (shortage == Shortage::lasting) RemoveTemporaries(folder, name);
    EXPECT_EQ(folder.Listing(), name + '\n') << "allocation " << failures;
    EXPECT_EQ(OpenDescriptors(), open) << "allocation " << failures;
    EXPECT_TRUE(replaced || hasFailed) << "allocation " << failures;
  }
  EXPECT_GT(failures, 3);
}

const std::string kLongName(60, 'n');

TEST(PosixReplacementMemory, RunningShortLeavesTheOldFileOrTheNewOneAndNothingElse) {
  const TemporaryFolder folder;
  FailEachAllocation(folder, kLongName, Shortage::passing);
}

TEST(PosixReplacementMemory, WhereEveryFileHasANameTheNameGoesToo) {
  const TemporaryFolder folder;
  RunWithoutUnnamedFiles([&] { FailEachAllocation(folder, kLongName, Shortage::passing); });
}

TEST(PosixReplacementMemory, WhereEveryFileHasANameItMayStayBehindWhenMemoryStaysShort) {
  const TemporaryFolder folder;
  RunWithoutUnnamedFiles([&] { FailEachAllocation(folder, kLongName, Shortage::lasting); });
}

}  // namespace
}  // namespace ondrel::test
