// The application object, and the framework's start and end for a module.
#include <gtest/gtest.h>

#include <optional>

#include "support/print_text.h"

#include <ondrel/platform/framework/application.h>

namespace ondrel::test {
namespace {

/// The tests' own module, which stands for a library.
class ModuleStart : public testing::Test {
 protected:
  HINSTANCE Instance() { return reinterpret_cast<HINSTANCE>(&m_state); }

  AFX_MODULE_STATE m_state;
  const AFX_MAINTAIN_STATE2 m_maintained{&m_state};
};

using Application = ModuleStart;

TEST_F(Application, IsThatOfTheModuleStateItWasMadeUnderWhileItLives) {
  EXPECT_EQ(AfxGetApp(), nullptr);
  AFX_MODULE_STATE other;
  {
    const CWinApp application;
    EXPECT_EQ(AfxGetApp(), &application);
    const AFX_MAINTAIN_STATE2 maintained(&other);
    EXPECT_EQ(AfxGetApp(), nullptr);
  }
  EXPECT_EQ(AfxGetApp(), nullptr);
}

TEST_F(Application, LeavesTheModuleStateItWasMadeUnderWhateverIsCurrent) {
  AFX_MODULE_STATE other;
  std::optional<CWinApp> application(std::in_place);
  const AFX_MAINTAIN_STATE2 maintained(&other);
  const CWinApp otherApplication;
  application.reset();
  EXPECT_EQ(m_state.m_pCurrentWinApp, nullptr);
  EXPECT_EQ(other.m_pCurrentWinApp, &otherApplication);
}

TEST_F(Application, ThatWasReplacedLeavesTheOtherInPlace) {
  std::optional<CWinApp> first(std::in_place);
  const CWinApp second;
  EXPECT_EQ(AfxGetApp(), &second);
  first.reset();
  EXPECT_EQ(AfxGetApp(), &second);
}

TEST_F(Application, HasACopyOfItsNameOrNone) {
  WCHAR name[] = _T("Disks");
  const CWinApp named(name);
  name[0] = 'x';
  EXPECT_EQ(CString(named.m_pszAppName), _T("Disks"));
  const CWinApp unnamed;
  EXPECT_EQ(unnamed.m_pszAppName, nullptr);
  const CWinApp nullName(nullptr);
  EXPECT_EQ(nullName.m_pszAppName, nullptr);
  const CWinApp emptyName(_T(""));
  ASSERT_NE(emptyName.m_pszAppName, nullptr);
  EXPECT_EQ(CString(emptyName.m_pszAppName), CString());
}

TEST_F(Application, StartsAndEndsWithSuccess) {
  CWinApp application;
  EXPECT_TRUE(application.InitInstance());
  EXPECT_EQ(application.ExitInstance(), 0);
}

TEST_F(ModuleStart, TellsTheModuleStateAndTheApplicationTheirModule) {
  const CWinApp application;
  const LPCTSTR commandLine = _T("/quiet");
  AfxCoreInitModule();
  EXPECT_TRUE(m_state.m_bInitialized);
  EXPECT_EQ(m_state.m_hCurrentInstanceHandle, nullptr);
  EXPECT_TRUE(AfxWinInit(Instance(), nullptr, commandLine, 5));
  EXPECT_EQ(m_state.m_hCurrentInstanceHandle, Instance());
  EXPECT_EQ(application.m_hInstance, Instance());
  EXPECT_EQ(application.m_lpCmdLine, commandLine);
  EXPECT_EQ(application.m_nCmdShow, 5);
  AfxWinTerm();
  EXPECT_FALSE(m_state.m_bInitialized);
  EXPECT_EQ(m_state.m_hCurrentInstanceHandle, nullptr);
  EXPECT_EQ(application.m_hInstance, nullptr);
  EXPECT_EQ(application.m_lpCmdLine, nullptr);
  EXPECT_EQ(application.m_nCmdShow, 0);
  EXPECT_EQ(AfxGetApp(), &application);
}

TEST_F(ModuleStart, NeedsNoApplication) {
  AfxCoreInitModule();
  EXPECT_TRUE(AfxWinInit(Instance(), nullptr, _T(""), 0));
  AfxWinTerm();
  EXPECT_EQ(m_state.m_hCurrentInstanceHandle, nullptr);
}

TEST_F(ModuleStart, IsRefusedWithoutTheCore) {
  EXPECT_FALSE(AfxWinInit(Instance(), nullptr, _T(""), 0));
  EXPECT_EQ(m_state.m_hCurrentInstanceHandle, nullptr);
}

TEST_F(ModuleStart, IsRefusedWithArgumentsThatNoModuleHas) {
  const CWinApp application;
  AfxCoreInitModule();
  EXPECT_FALSE(AfxWinInit(nullptr, nullptr, _T(""), 0));
  EXPECT_FALSE(AfxWinInit(Instance(), Instance(), _T(""), 0));
  EXPECT_FALSE(AfxWinInit(Instance(), nullptr, nullptr, 0));
  EXPECT_EQ(m_state.m_hCurrentInstanceHandle, nullptr);
  EXPECT_EQ(application.m_hInstance, nullptr);
}

TEST_F(ModuleStart, IsRefusedTwiceAndPossibleAgainAfterTheEnd) {
  AfxCoreInitModule();
  AfxCoreInitModule();
  EXPECT_TRUE(AfxWinInit(Instance(), nullptr, _T(""), 0));
  EXPECT_FALSE(AfxWinInit(Instance(), nullptr, _T(""), 0));
  AfxWinTerm();
  AfxWinTerm();
  EXPECT_FALSE(AfxWinInit(Instance(), nullptr, _T(""), 0));
  AfxCoreInitModule();
  EXPECT_TRUE(AfxWinInit(Instance(), nullptr, _T(""), 0));
}

}  // namespace
}  // namespace ondrel::test
