// Every write under the archive fails in turn while an image or a project is stored, onto files and onto streams.

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

#include <ondrel/MMCArchiveFile.h>

#include "faults/definition.h"
#include "faults/fault_count.h"
#include "faults/held.h"
#include "faults/store_check.h"
#include "support/archive_bytes.h"
#include "support/faulty_file.h"
#include "support/scripted_stream.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

class StoreFaults : public testing::TestWithParam<StoredForm> {
 protected:
  void Report(const char* kind, long faults) { ReportFaults((StoringOf(GetParam()) + " " + kind).c_str(), faults); }

  const Definition m_definition;
  StoreCheck m_check{StoringCheck(m_definition, GetParam())};
};

TEST_P(StoreFaults, OfAFileAreRaisedAndLeaveTheSetAsItWas) {
  long faults = 0;
  for (const int cause : {CFileException::diskFull, CFileException::hardIO}) {
    for (const Ending ending : kEndings) {
      for (const int bufferSize : kBuffers) {
        for (int number = 1;; ++number) {
          SCOPED_TRACE("write " + std::to_string(number) + ", buffer of " + std::to_string(bufferSize) +
                       " bytes, archive " + testing::PrintToString(ending));
          const Held held = CountHeld();
          bool reached = false;
          {
            FaultyFile file;
            file.FailWrite(number, cause);
            const ArchiveRun run = m_check.Run(file, bufferSize, ending, RaisesFile(cause));
            reached = file.Writes() >= number;
            EXPECT_TRUE(m_check.IsBeginning(BytesOf(file)));
            if (reached) {
              ++faults;
              const bool isTold = run.used != kSuccess || run.ended != kSuccess;
              EXPECT_TRUE(isTold || ending == Ending::destroy) << "it failed without a word";
              EXPECT_LT(file.GetLength(), m_check.Stored().size());
            } else if (ending != Ending::abort) {
              EXPECT_EQ(BytesOf(file), m_check.Stored());
            }
          }
          EXPECT_EQ(CountHeld(), held);
          if (!reached) break;
          if (HasFailure()) return;
        }
      }
    }
  }
  Report("onto files", faults);
}

TEST_P(StoreFaults, OfAStreamAreRaisedAndLeaveTheSetAsItWas) {
  long faults = 0;
  for (const HRESULT status : {STG_E_MEDIUMFULL, E_OUTOFMEMORY, kChosenFailure}) {
    for (const Ending ending : kEndings) {
      for (const int bufferSize : kBuffers) {
        for (int number = 1;; ++number) {
          SCOPED_TRACE("write " + std::to_string(number) + ", buffer of " + std::to_string(bufferSize) +
                       " bytes, archive " + testing::PrintToString(ending));
          const Held held = CountHeld();
          bool reached = false;
          {
            ScriptedStream stream;
            stream.Before(number, [&] { stream.Answer(status); });
            {
              CMMCArchiveFile file(&stream);
              m_check.Run(file, bufferSize, ending, RaisesStatus(status));
            }
            EXPECT_EQ(stream.References(), 0U);
            EXPECT_TRUE(m_check.IsBeginning(stream.Bytes()));
            reached = stream.Writes() >= number;
            if (reached) {
              ++faults;
              EXPECT_EQ(stream.Writes(), number) << "it was asked again";
            } else if (ending != Ending::abort) {
              EXPECT_EQ(stream.Bytes(), m_check.Stored());
            }
          }
          EXPECT_EQ(CountHeld(), held);
          if (!reached) break;
          if (HasFailure()) return;
        }
      }
    }
  }
  Report("onto streams", faults);
}

TEST_P(StoreFaults, OfAStreamThatTakesLessOrClaimsMoreAreNotLookedAt) {
  long faults = 0;
  for (const bool isShort : {true, false}) {
    for (const int bufferSize : kBuffers) {
      for (int number = 1;; ++number) {
        SCOPED_TRACE("write " + std::to_string(number) + ", buffer of " + std::to_string(bufferSize) + " bytes");
        const Held held = CountHeld();
        bool reached = false;
        {
          ScriptedStream stream;
          stream.Before(number, [&] {
            if (isShort) stream.Shorten(1);
            if (!isShort) stream.Exaggerate(1000);
          });
          stream.Before(number + 1, [&] {
            stream.Shorten(std::numeric_limits<ULONG>::max());
            stream.Exaggerate(0);
          });
          CMMCArchiveFile file(&stream);
          const ArchiveRun run = m_check.Run(file, bufferSize, Ending::close, kSuccess);
          EXPECT_EQ(run.used, kSuccess);
          EXPECT_EQ(run.ended, kSuccess);
          reached = stream.Writes() >= number;
          if (reached) ++faults;
          const bool isWhole = stream.Bytes() == m_check.Stored();
          EXPECT_TRUE(isWhole || (reached && isShort));
        }
        EXPECT_EQ(CountHeld(), held);
        if (!reached) break;
        if (HasFailure()) return;
      }
    }
  }
  Report("onto streams that lie", faults);
}

INSTANTIATE_TEST_SUITE_P(Forms, StoreFaults, testing::ValuesIn(kStoredForms), [](const auto& info) {
  return std::string(info.param == StoredForm::image ? "Image" : "Project");
});

}  // namespace
}  // namespace ondrel::test
