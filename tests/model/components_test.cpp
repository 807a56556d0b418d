// Threads that never asked the system for its components: what needs them ends in a status, everything else works.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/model/set_forms.h"
#include "support/without_components.h"

namespace ondrel::test {
namespace {

constexpr const char* kProject =
    R"(<Project><NodeGroup><Node Cookie="7" Name="New" Icon="0" Type="List"><MenuScript/></Node></NodeGroup></Project>)";

/// The status that the work raises on a thread of its own without components; S_OK when it raises none.
HRESULT StatusWithoutComponents(const std::function<void()>& work) {
  const WithoutComponents without;
  HRESULT status = S_OK;
  std::thread thread([&] {
    try {
      work();
    } catch (const COleException& raised) {
      status = raised.m_sc;
    }
  });
  thread.join();
  return status;
}

class Components : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(m_set.AddNewNode(-1, _T("Old"), CMMCObjectParams::eList), 0); }

  CMMCObjectSet m_set{LeaveToSet};
};

TEST_F(Components, LoadingAProjectWithoutThemEndsInTheirStatusAndLeavesTheSetAsItWas) {
  const std::string before = Observed(m_set);
  EXPECT_EQ(StatusWithoutComponents([&] { LoadProject(m_set, kProject); }), WithoutComponents::Status());
  if (FAILED(WithoutComponents::Status())) {
    EXPECT_EQ(Observed(m_set), before);
  } else {
    EXPECT_EQ(m_set.GetChildNodes(-1), std::list<__int64>{7});
  }
}

TEST_F(Components, SavingAProjectWithoutThemEndsInTheirStatusAndLeavesTheSetAsItWas) {
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  EXPECT_EQ(StatusWithoutComponents([&] { m_set.SerializeProjectFile(archive, nullptr); }),
            WithoutComponents::Status());
  archive.Close();
  if (FAILED(WithoutComponents::Status())) {
    EXPECT_EQ(BytesOf(file), "");
    EXPECT_TRUE(m_set.IsModified());
  } else {
    EXPECT_NE(BytesOf(file), "");
    EXPECT_FALSE(m_set.IsModified());
  }
}

TEST_F(Components, AnImageIsStoredAndLoadedWithoutThem) {
  std::string image;
  CMMCObjectSet loaded(LeaveToSet);
  EXPECT_EQ(StatusWithoutComponents([&] {
              image = SavedImage(m_set);
              LoadImage(loaded, image);
            }),
            S_OK);
  EXPECT_EQ(Observed(loaded), "un" + Observed(m_set));
}

TEST_F(Components, AThreadUsesThemWhenTheProgramHasThem) {
  HRESULT status = S_OK;
  std::thread thread([&] {
    try {
      LoadProject(m_set, kProject);
    } catch (const COleException& raised) {
      status = raised.m_sc;
    }
  });
  thread.join();
  EXPECT_EQ(status, S_OK);
  EXPECT_EQ(m_set.GetChildNodes(-1), std::list<__int64>{7});
}

}  // namespace
}  // namespace ondrel::test
