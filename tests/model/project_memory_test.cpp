// Memory that runs short while a project file is saved or loaded.

#include <gtest/gtest.h>

#include <new>
#include <string>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/failing_allocation.h"
#include "support/live_handles.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

/// More than any of these runs takes.
constexpr long kMostProjectAllocations = 100000;
/// More bytes than any of these sets is stored as.
constexpr int kRoomForAll = 1 << 16;

/// Runs `call` with one allocation after the other failing, until it passes. Each failure must be told as one of
/// memory, and must leave the set as it was. How many failed.
template <class Call>
long FailEachProjectAllocation(CMMCObjectSet& set, const Call& call) {
  const std::string before = Observed(set);
  for (long index = 0; index < kMostProjectAllocations; ++index) {
    bool told = false;
    bool failed = false;
    {
      const FailingAllocation failing(index);
      try {
        call();
      } catch (const CMemoryException&) {
        told = true;
      } catch (const std::bad_alloc&) {
        told = true;
      }
      failed = failing.HasFailed();
    }
    if (!told) {
      EXPECT_FALSE(failed) << "allocation " << index << " failed without a word";
      return index;
    }
    EXPECT_EQ(Observed(set), before) << "allocation " << index;
  }
  ADD_FAILURE() << "there is no end of allocations";
  return kMostProjectAllocations;
}

class ProjectMemory : public testing::Test {
 protected:
  void SetUp() override {
    m_directory = Wide(m_folder.Path()) + _T("\\");
    m_fileName = m_directory + _T("project.xml");
    WriteIcon(m_folder, "icon.ico", {SolidIcon(32, 0)});
    ASSERT_EQ(m_set.AddNode(-1, 12, MakeRecord(FullRecord(CMMCObjectParams::eHTML))), S_OK);
    // Enough of them that the set's own allocations are many: those of the document do not fail everywhere.
    for (__int64 cookie = 2; cookie < 12; ++cookie) {
      RecordFields record = FullRecord(CMMCObjectParams::eHTML);
      record.cookie = cookie;
      ASSERT_EQ(m_set.AddNode(12, cookie, MakeRecord(record)), S_OK);
      const CString path = Wide(m_folder.Write("b" + std::to_string(cookie) + ".js", "x"));
      ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, path, 60 + cookie, Unchanged), S_OK);
    }
    ASSERT_EQ(m_set.AddNode(12, 13, CMMCObjectParams(13, _T("Below"), CMMCObjectParams::eList)), S_OK);
    ASSERT_EQ(m_set.AddDialog(14, CMMCObjectParams(14, _T("About"), CMMCObjectParams::eDialog)), S_OK);
    ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, m_directory + _T("icon.ico"), 40), S_OK);
    ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, m_directory + _T("a.js"), 50, Unchanged), S_OK);
    ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, 51, {'x'}), S_OK);
  }

  TemporaryFolder m_folder;
  CString m_directory;
  CString m_fileName;
  CMMCObjectSet m_set{LeaveToSet};
};

TEST_F(ProjectMemory, RunningShortWhileLoadingLeavesTheSetAsItWas) {
  const std::string bytes = SavedProject(m_set, m_fileName);
  CMMCObjectSetProbe::SetModifiedFlag(m_set, 1);
  ASSERT_EQ(m_set.AddNewDialog(_T("Only here")), 15);
  const auto handles = CountLiveHandles();
  const long failures = FailEachProjectAllocation(m_set, [&] { LoadProject(m_set, bytes, m_fileName); });
  EXPECT_GT(failures, 50);
  EXPECT_EQ(m_set.GetDialog(_T("Only here")), 0) << "in the end it was loaded";
  EXPECT_EQ(m_set.GetDialog(_T("About")), 14);
  EXPECT_EQ(CountLiveHandles().icons, handles.icons);
}

TEST_F(ProjectMemory, RunningShortWhileSavingLeavesTheSetAsItWas) {
  CMMCObjectSetProbe::SetModifiedFlag(m_set, 1);
  const auto save = [&] {
    CMemFile file;
    CVellum archive(&file, CArchive::store, kRoomForAll);
    archive.m_strFileName = m_fileName;
    m_set.SerializeProjectFile(archive, nullptr);
    archive.Abort();  // so that nothing is allocated once the set has told success
  };
  EXPECT_GT(FailEachProjectAllocation(m_set, save), 10);
  EXPECT_FALSE(m_set.IsModified());
}

TEST_F(ProjectMemory, RunningShortWhileAnImageIsStoredLeavesTheSetAsItWas) {
  m_folder.Write("a.js", "some code");
  CMMCObjectSetProbe::SetModifiedFlag(m_set, 1);
  const auto save = [&] {
    CMemFile file;
    CVellum archive(&file, CArchive::store, kRoomForAll);
    m_set.SerializeObjects(archive, 0, 1);
    archive.Abort();
  };
  EXPECT_GT(FailEachProjectAllocation(m_set, save), 10);
  EXPECT_FALSE(m_set.IsModified());
}

}  // namespace
}  // namespace ondrel::test
