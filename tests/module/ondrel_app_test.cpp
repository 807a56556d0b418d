// The library's application object. It is compiled here over a framework whose applications cannot start.
#include <gtest/gtest.h>

#include <ondrel/platform/framework/application.h>

namespace ondrel::test {

static int startsOfTheFramework = 0;

class FailingApplication : public CWinApp {
 public:
  BOOL InitInstance() override {
    ++startsOfTheFramework;
    return FALSE;
  }
};

}  // namespace ondrel::test

#define CWinApp ondrel::test::FailingApplication
#include "module/ondrel_app.cpp"
#undef CWinApp

namespace ondrel::test {
namespace {

TEST(OndrelApp, StartsTheFrameworksPartAndSucceedsWhateverThatSays) {
  AFX_MODULE_STATE state;
  const AFX_MAINTAIN_STATE2 maintained(&state);
  COndrelApp application;
  startsOfTheFramework = 0;
  EXPECT_EQ(application.InitInstance(), TRUE);
  EXPECT_EQ(startsOfTheFramework, 1);
}

TEST(OndrelApp, HasNoName) {
  AFX_MODULE_STATE state;
  const AFX_MAINTAIN_STATE2 maintained(&state);
  const COndrelApp application;
  EXPECT_EQ(application.m_pszAppName, nullptr);
}

}  // namespace
}  // namespace ondrel::test
