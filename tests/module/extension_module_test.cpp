// The chain of extension modules of the process.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

#include "support/raised.h"

#include <ondrel/platform/framework/exceptions.h>
#include <ondrel/platform/framework/extension_module.h>

namespace ondrel::test {
namespace {

using platform::ExtensionModules;
using testing::ElementsAre;
using testing::IsEmpty;

/// Something whose address stands for a module.
struct Module {
  HMODULE Handle() { return reinterpret_cast<HMODULE>(this); }
  AFX_EXTENSION_MODULE Record() {
    AFX_EXTENSION_MODULE record;
    AfxInitExtensionModule(record, Handle());
    return record;
  }

  char placeholder = 0;
};

TEST(ExtensionModule, IsRecordedOnce) {
  Module module;
  Module other;
  AFX_EXTENSION_MODULE record;
  EXPECT_FALSE(record.bInitialized);
  EXPECT_FALSE(AfxInitExtensionModule(record, nullptr));
  EXPECT_FALSE(record.bInitialized);
  EXPECT_TRUE(AfxInitExtensionModule(record, module.Handle()));
  EXPECT_TRUE(record.bInitialized);
  EXPECT_EQ(record.hModule, module.Handle());
  EXPECT_TRUE(AfxInitExtensionModule(record, other.Handle()));
  EXPECT_EQ(record.hModule, module.Handle());
}

TEST(ExtensionModule, IsInTheChainWhileItsObjectLives) {
  Module module;
  {
    const CDynLinkLibrary library(module.Record());
    EXPECT_EQ(library.m_hModule, module.Handle());
    EXPECT_THAT(ExtensionModules(), ElementsAre(module.Handle()));
  }
  EXPECT_THAT(ExtensionModules(), IsEmpty());
}

TEST(ExtensionModule, NeedsARecord) {
  EXPECT_TRUE(Raised<CInvalidArgException>([] { CDynLinkLibrary library{AFX_EXTENSION_MODULE()}; }));
  EXPECT_THAT(ExtensionModules(), IsEmpty());
}

TEST(ExtensionModule, ThatCameLastStandsFirst) {
  Module first;
  Module second;
  Module third;
  const CDynLinkLibrary firstLibrary(first.Record());
  auto secondLibrary = std::make_unique<CDynLinkLibrary>(second.Record());
  const CDynLinkLibrary thirdLibrary(third.Record());
  EXPECT_THAT(ExtensionModules(), ElementsAre(third.Handle(), second.Handle(), first.Handle()));
  secondLibrary.reset();
  EXPECT_THAT(ExtensionModules(), ElementsAre(third.Handle(), first.Handle()));
}

TEST(ExtensionModule, EndsWithTheObjectsOfItsModuleOnly) {
  Module ending;
  Module staying;
  AFX_EXTENSION_MODULE record = ending.Record();
  new CDynLinkLibrary(record);
  const CDynLinkLibrary library(staying.Record());
  new CDynLinkLibrary(record);
  AfxTermExtensionModule(record);
  EXPECT_THAT(ExtensionModules(), ElementsAre(staying.Handle()));
  EXPECT_FALSE(record.bInitialized);
  EXPECT_EQ(record.hModule, nullptr);
}

TEST(ExtensionModule, EndsWithAllObjectsOfItsModuleState) {
  Module ending;
  Module added;
  Module staying;
  AFX_MODULE_STATE state;
  const CDynLinkLibrary library(staying.Record());
  AFX_EXTENSION_MODULE record = ending.Record();
  {
    const AFX_MAINTAIN_STATE2 maintained(&state);
    new CDynLinkLibrary(record);
    new CDynLinkLibrary(added.Record());
    AfxTermExtensionModule(record, TRUE);
  }
  EXPECT_THAT(ExtensionModules(), ElementsAre(staying.Handle()));
}

TEST(ExtensionModule, EndsOnce) {
  Module module;
  AFX_EXTENSION_MODULE record = module.Record();
  AFX_EXTENSION_MODULE empty;
  const CDynLinkLibrary library(record);
  AfxTermExtensionModule(empty, TRUE);
  EXPECT_THAT(ExtensionModules(), ElementsAre(module.Handle()));
}

TEST(ExtensionModule, ChainStaysWholeWhileThreadsChangeIt) {
  constexpr int kRounds = 500;
  Module staying;
  const CDynLinkLibrary library(staying.Record());
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([&] {
      Module module;
      AFX_MODULE_STATE state;
      const AFX_MAINTAIN_STATE2 maintained(&state);
      for (int round = 0; round < kRounds; ++round) {
        AFX_EXTENSION_MODULE record = module.Record();
        new CDynLinkLibrary(record);
        EXPECT_THAT(ExtensionModules(), testing::IsSupersetOf({module.Handle(), staying.Handle()}));
        AfxTermExtensionModule(record, TRUE);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(ExtensionModules(), ElementsAre(staying.Handle()));
}

}  // namespace
}  // namespace ondrel::test
