// Memory that runs short while a project file is saved or loaded: the set is exactly as it was.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "faults/allocation_sweep.h"
#include "faults/definition.h"
#include "support/archive_bytes.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

/// So small that a save writes more than once.
constexpr int kSaveBuffer = 64;

CMMCObjectParams& RecordIn(CMMCObjectSet& set, __int64 cookie) {
  CMMCObjectParams* record = nullptr;
  set.GetParams(cookie, record);
  return *record;
}

/// The set may lack scripts at the ends of lists, and nothing else: a failure while they are read ends the list and is
/// not told.
void ExpectOnlyScriptsToBeMissing(CMMCObjectSet& set, CMMCObjectSet& whole) {
  std::vector<__int64> cookies;
  for (const auto& [cookie, place] : CMMCObjectSetProbe::Tables(whole).objects) cookies.push_back(cookie);
  bool isMissing = false;
  for (const __int64 cookie : cookies) {
    const CMMCObjectParams::ScriptList scripts = RecordIn(set, cookie).GetScripts();
    CMMCObjectParams::ScriptList all = RecordIn(whole, cookie).GetScripts();
    ASSERT_LE(scripts.size(), all.size()) << "record " << cookie;
    EXPECT_TRUE(std::equal(scripts.begin(), scripts.end(), all.begin())) << "record " << cookie;
    isMissing = isMissing || scripts.size() < all.size();
    RecordIn(set, cookie).SetScripts(std::move(all));
  }
  EXPECT_TRUE(isMissing) << "an allocation failed without a trace";
  EXPECT_EQ(Observed(set), Observed(whole));
}

class ProjectMemory : public testing::Test {
 protected:
  const Definition m_definition;
};

TEST_F(ProjectMemory, RunningShortWhileLoadingLeavesTheSetAsItWas) {
  const std::string project = SavedProject(*m_definition.Make(), m_definition.ProjectName());
  FailEachAllocation({.name = "project load",
                      .make =
                          [&] {
                            // Not what the project holds, so that nothing of it can pass for what was there before.
                            auto set = m_definition.Make();
                            set->RemoveDialog(kFirstDialog);
                            set->AddNewNode(kSecondChild, _T("Only here"), CMMCObjectParams::eList);
                            return set;
                          },
                      .run =
                          [&](CMMCObjectSet& set) {
                            LoadProject(set, project, m_definition.ProjectName());
                            return S_OK;
                          },
                      .afterSilence = ExpectOnlyScriptsToBeMissing});
}

TEST_F(ProjectMemory, RunningShortWhileSavingLeavesTheSetAsItWas) {
  FailEachAllocation({.name = "project save",
                      .make = [this] { return m_definition.Make(); },
                      .run =
                          [&](CMMCObjectSet& set) {
                            CMemFile file;
                            CVellum archive(&file, CArchive::store, kSaveBuffer);
                            archive.m_strFileName = m_definition.ProjectName();
                            set.SerializeProjectFile(archive, nullptr);
                            archive.Abort();  // so that nothing is allocated once the set has told success
                            return S_OK;
                          }});
}

}  // namespace
}  // namespace ondrel::test
