// Components and memory streams that a project needs and the system does not make, and text that seems too long.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "faults/component_making.h"
#include "faults/definition.h"
#include "faults/far_streams.h"
#include "faults/fault_count.h"
#include "faults/held.h"
#include "faults/outcome.h"
#include "support/archive_bytes.h"
#include "support/model/lock_watch.h"
#include "support/model/set_forms.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

constexpr auto kNotRegistered = static_cast<HRESULT>(0x80040154);
constexpr auto kInvalidArgument = static_cast<HRESULT>(0x80070057);

/// While it lives, one of the components and streams cannot be made.
class FailingComponent final : public ComponentMaking {
 public:
  /// The number of the one, from 1.
  FailingComponent(int number, HRESULT status) : m_number(number), m_status(status) {}

  int Asked() const { return m_asked; }
  HRESULT OnMaking() override { return ++m_asked == m_number ? m_status : S_OK; }

 private:
  const int m_number;
  const HRESULT m_status;
  int m_asked = 0;
};

class ProjectComponents : public testing::Test {
 protected:
  /// Runs `operation` without the first component, the second, ... until it needs no more. How many it needs.
  template <class Operation>
  int SweepComponents(const char* name, const Operation& operation) {
    long faults = 0;
    int needed = 0;
    for (const HRESULT status : {kChosenFailure, kNotRegistered, kOutOfMemory}) {
      // As everywhere, a shortage is told by the exception of its own.
      const Outcome expected = status == kOutOfMemory ? kMemoryException : RaisesStatus(status);
      for (needed = 0;; ++needed, ++faults) {
        SCOPED_TRACE("component " + std::to_string(needed + 1));
        const std::unique_ptr<CMMCObjectSet> set = m_definition.Make();
        const std::string before = Observed(*set);
        const Held held = CountHeld();
        Outcome outcome;
        bool reached = false;
        {
          const FailingComponent failing(needed + 1, status);
          outcome = OutcomeOf([&] { operation(*set); });
          reached = failing.Asked() > needed;
        }
        EXPECT_TRUE(m_watch.IsFree(*set)) << "the lock is held";
        if (!reached) {
          EXPECT_EQ(outcome, kSuccess);
          break;
        }
        EXPECT_EQ(outcome, expected);
        EXPECT_EQ(CountHeld(), held);
        EXPECT_EQ(Observed(*set), before);
        if (HasFailure()) return needed;
      }
    }
    ReportFaults(name, faults);
    return needed;
  }

  const Definition m_definition;
  LockWatch m_watch;
};

TEST_F(ProjectComponents, ThatCannotBeMadeEndASaveAndNothingIsWritten) {
  const int needed = SweepComponents("project save without a component", [](CMMCObjectSet& set) {
    CMemFile file;
    CVellum archive(&file, CArchive::store);
    try {
      set.SerializeProjectFile(archive, nullptr);
    } catch (...) {
      archive.Close();
      EXPECT_EQ(BytesOf(file), "");
      throw;
    }
  });
  EXPECT_EQ(needed, 4) << "the document, the stream, the writer and the reader";
}

TEST_F(ProjectComponents, ThatCannotBeMadeEndALoad) {
  const std::string project = SavedProject(*m_definition.Make(), m_definition.ProjectName());
  const int needed = SweepComponents("project load without a component", [&](CMMCObjectSet& set) {
    LoadProject(set, project, m_definition.ProjectName());
  });
  EXPECT_EQ(needed, 1) << "the document";
}

TEST_F(ProjectComponents, TextOfTwoGibibytesAndMoreIsRefused) {
  for (const ULONGLONG position : {0x80000000ULL, 0xFFFFFFFFULL, 0x180000000ULL}) {
    const std::unique_ptr<CMMCObjectSet> set = m_definition.Make();
    const std::string before = Observed(*set);
    CMemFile file;
    CVellum archive(&file, CArchive::store);
    {
      const FarStreams streams(position);
      EXPECT_EQ(OutcomeOf([&] { set->SerializeProjectFile(archive, nullptr); }), RaisesStatus(kInvalidArgument));
      EXPECT_TRUE(streams.WasAsked());
    }
    archive.Close();
    EXPECT_EQ(BytesOf(file), "") << std::hex << position;
    EXPECT_EQ(Observed(*set), before);
    EXPECT_TRUE(m_watch.IsFree(*set)) << "the lock is held";
  }
}

}  // namespace
}  // namespace ondrel::test
