#include "faults/store_check.h"

#include <gtest/gtest.h>

#include <utility>

#include "support/archive_bytes.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"

namespace ondrel::test {

StoreCheck::StoreCheck(std::unique_ptr<CMMCObjectSet> set, Store store)
    : m_set(std::move(set)), m_store(std::move(store)), m_before(Observed(*m_set)) {
  m_stored = test::Stored([this](CVellum& archive) { m_store(*m_set, archive); });
  CMMCObjectSetProbe::SetModifiedFlag(*m_set, 1);
}

StoreCheck::~StoreCheck() = default;

ArchiveRun StoreCheck::Run(CFile& file, int bufferSize, Ending ending, const Outcome& fault) {
  const ArchiveRun run =
      RunArchive(file, CArchive::store, bufferSize, ending, [&](CVellum& archive) { m_store(*m_set, archive); });
  EXPECT_TRUE(m_watch.IsFree(*m_set)) << "the lock is held";
  if (run.used == kSuccess) {
    // Only the last bytes were still on their way.
    EXPECT_TRUE(run.ended == kSuccess || run.ended == fault) << testing::PrintToString(run.ended);
    EXPECT_FALSE(m_set->IsModified());
    CMMCObjectSetProbe::SetModifiedFlag(*m_set, 1);
  } else {
    EXPECT_EQ(run.used, fault);
    EXPECT_EQ(run.ended, kSuccess) << "it failed a second time";
  }
  EXPECT_EQ(Observed(*m_set), m_before);
  return run;
}

std::string StoringOf(StoredForm form) { return form == StoredForm::image ? "image store" : "project save"; }

StoreCheck StoringCheck(const Definition& definition, StoredForm form) {
  if (form == StoredForm::image) {
    return StoreCheck(definition.Make(),
                      [](CMMCObjectSet& set, CVellum& archive) { set.SerializeObjects(archive, 0, 1); });
  }
  return StoreCheck(definition.Make(), [&definition](CMMCObjectSet& set, CVellum& archive) {
    archive.m_strFileName = definition.ProjectName();
    set.SerializeProjectFile(archive, nullptr);
  });
}

}  // namespace ondrel::test
