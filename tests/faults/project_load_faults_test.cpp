// Every read under the archive fails in turn while a project is loaded: the set is exactly as it was.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include <ondrel/MMCArchiveFile.h>

#include "faults/archive_runs.h"
#include "faults/definition.h"
#include "faults/fault_count.h"
#include "faults/held.h"
#include "support/faulty_file.h"
#include "support/model/lock_watch.h"
#include "support/model/set_forms.h"
#include "support/scripted_stream.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

constexpr Outcome kRefusedData = RaisesStatus(kInvalidData);

/// A file of which nobody can tell the length.
class UnmeasuredFile final : public CMemFile {
 public:
  ULONGLONG GetLength() const override {
    AfxThrowFileException(CFileException::hardIO, ERROR_READ_FAULT, _T("project.xml"));
  }
};

class ProjectLoadFaults : public testing::Test {
 protected:
  Outcome Load(CFile& file, int bufferSize, Ending ending, const Outcome& toleratedEnd = kSuccess) {
    const ArchiveRun run = RunArchive(file, CArchive::load, bufferSize, ending, [&](CVellum& archive) {
      archive.m_strFileName = m_definition.ProjectName();
      m_set->SerializeProjectFile(archive, UnchangedFor);
    });
    EXPECT_TRUE(m_watch.IsFree(*m_set)) << "the lock is held";
    EXPECT_TRUE(run.ended == kSuccess || run.ended == toleratedEnd) << testing::PrintToString(run.ended);
    return run.used;
  }

  const Definition m_definition;
  const std::string m_project = SavedProject(*m_definition.Make(), m_definition.ProjectName());
  std::unique_ptr<CMMCObjectSet> m_set = m_definition.Make();
  const std::string m_before = Observed(*m_set);
  LockWatch m_watch;
};

TEST_F(ProjectLoadFaults, OfAFileLeaveTheSetAsItWas) {
  // So that a load reads many times: an archive asks for a project in a few large runs.
  constexpr UINT kMostBytesARead = 64;
  struct Fault {
    const char* name;
    void (FaultyFile::*arm)(int number);
    Outcome expected;
  };
  const Fault faults[] = {{"a failure", &FaultyFile::FailRead, RaisesFile(CFileException::hardIO)},
                          {"the end", &FaultyFile::EndAtRead, kRefusedData},
                          {"a short count", &FaultyFile::ShortenRead, kSuccess}};
  long count = 0;
  for (const Fault& fault : faults) {
    for (const Ending ending : kEndings) {
      for (const int bufferSize : kBuffers) {
        for (int number = 1;; ++number) {
          SCOPED_TRACE(std::string(fault.name) + " at read " + std::to_string(number) + ", buffer of " +
                       std::to_string(bufferSize) + " bytes, archive " + testing::PrintToString(ending));
          const Held held = CountHeld();
          bool reached = false;
          Outcome outcome;
          {
            FaultyFile file(m_project.data(), static_cast<UINT>(m_project.size()));
            file.ShortenReads(kMostBytesARead);
            (file.*fault.arm)(number);
            outcome = Load(file, bufferSize, ending);
            reached = file.Reads() >= number;
          }
          EXPECT_EQ(outcome, reached ? fault.expected : kSuccess);
          if (outcome == kSuccess) {
            EXPECT_FALSE(m_set->IsModified());
            m_set = m_definition.Make();
          } else {
            EXPECT_EQ(CountHeld(), held);
            EXPECT_EQ(Observed(*m_set), m_before);
          }
          if (HasFailure()) return;
          if (!reached) break;
          ++count;
        }
      }
    }
  }
  ReportFaults("project load from files", count);
}

TEST_F(ProjectLoadFaults, OfAFileThatCannotBeMeasuredLeaveTheSetAsItWas) {
  for (const Ending ending : kEndings) {
    UnmeasuredFile file;
    EXPECT_EQ(Load(file, kUsualBuffer, ending), RaisesFile(CFileException::hardIO));
    EXPECT_EQ(Observed(*m_set), m_before);
  }
}

TEST_F(ProjectLoadFaults, OfAStreamThatHasNoLengthLeaveTheSetAsItWas) {
  for (const Ending ending : kEndings) {
    ScriptedStream stream(m_project);
    CMMCArchiveFile file(&stream);
    EXPECT_EQ(Load(file, kUsualBuffer, ending), kNotSupported);
    EXPECT_EQ(stream.Reads(), 0);
    EXPECT_EQ(Observed(*m_set), m_before);
  }
}

}  // namespace
}  // namespace ondrel::test
