// Projects that are refused for an icon file without an icon.

#include <gtest/gtest.h>

#include <string>

#include <ondrel/MMCObjectSet.h>

#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/raised.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

TEST(ProjectIcons, AFileWithoutAnIconIsRefused) {
  const TemporaryFolder folder;
  folder.Write("text.ico", "this is not an icon, only text");
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(-1, 1, CMMCObjectParams(1, _T("Top"), CMMCObjectParams::eHTML)), S_OK);
  const std::string before = Observed(set);
  const auto raised = Raised<COleException>([&] {
    LoadProject(set,
                R"(<Project><NodeGroup><Node Cookie="2" Name="N" Icon="0" Type="List"><MenuScript/></Node></NodeGroup>)"
                R"(<FileGroup><Icon Cookie="3" Name="text.ico"/></FileGroup></Project>)",
                Wide(folder.Path()) + _T("\\project.xml"));
  });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_sc, kNoIcon);
  EXPECT_EQ(Observed(set), before);
}

}  // namespace
}  // namespace ondrel::test
