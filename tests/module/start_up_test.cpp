// The start and the end of the library, call by call, with every step that can fail failing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include "module/loaded_library.h"
#include "module/recorder/call_recorder.h"

namespace ondrel::test {
namespace {

using platform::ExtensionModules;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

using Calls = std::vector<std::string>;

const char* const kWinInit = "AfxWinInit(null, \"\", 0)";
const Calls kStart = {"SysAllocString(Node)", "SysAllocString(Nodes)",  "AfxCoreInitModule", kWinInit,
                      "InitInstance",         "AfxInitExtensionModule", "CDynLinkLibrary"};
const Calls kEnd = {
    "ExitInstance",         "AfxLockTempMaps",    "AfxUnlockTempMaps", "AfxWinTerm", "AfxTermExtensionModule(all)",
    "SysFreeString(Nodes)", "SysFreeString(Node)"};

Calls RecordedNames() {
  Calls names;
  for (const RecordedCall& call : RecordedCalls()) names.push_back(call.name);
  return names;
}

/// Every recorded call was made under one module state, not `hosts`, and names no module but `instance`.
void ExpectTheLibrarysOwnState(const AFX_MODULE_STATE* hosts, HINSTANCE instance) {
  const std::vector<RecordedCall> calls = RecordedCalls();
  for (const RecordedCall& call : calls) {
    EXPECT_NE(call.moduleState, hosts) << "in " << call.name;
    EXPECT_EQ(call.moduleState, calls.front().moduleState) << "in " << call.name;
    EXPECT_THAT(call.instance, testing::AnyOf(nullptr, instance)) << "in " << call.name;
  }
}

TEST(StartUp, MakesTheConstantsAndStartsTheModuleStepByStep) {
  AFX_MODULE_STATE state;
  const AFX_MAINTAIN_STATE2 maintained(&state);
  StartRecording();
  const LoadedLibrary library(RecordedLibraryPath());
  ASSERT_TRUE(library.IsLoaded()) << "status " << LastStatus();
  EXPECT_THAT(RecordedNames(), ElementsAreArray(kStart));
  ExpectTheLibrarysOwnState(&state, library.Handle());
  EXPECT_EQ(AfxGetModuleState(), &state);
  EXPECT_EQ(LiveTexts(), 2);
}

TEST(StartUp, HasAnApplicationWithoutAName) {
  StartRecording();
  const LoadedLibrary library(RecordedLibraryPath());
  ASSERT_TRUE(library.IsLoaded());
  EXPECT_TRUE(HadApplication());
  EXPECT_FALSE(HadApplicationName());
}

TEST(StartUp, NamesTheModuleInEveryStepThatIsAboutIt) {
  StartRecording();
  const LoadedLibrary library(RecordedLibraryPath());
  ASSERT_TRUE(library.IsLoaded());
  for (const RecordedCall& call : RecordedCalls()) {
    const bool isAboutIt = call.name == kWinInit || call.name == "AfxInitExtensionModule";
    EXPECT_EQ(call.instance, isAboutIt ? library.Handle() : nullptr) << "in " << call.name;
  }
}

TEST(Unload, EndsTheModuleStepByStepAndFreesTheConstants) {
  AFX_MODULE_STATE state;
  const AFX_MAINTAIN_STATE2 maintained(&state);
  LoadedLibrary library(RecordedLibraryPath());
  ASSERT_TRUE(library.IsLoaded());
  const HINSTANCE handle = library.Handle();
  StartRecording();
  EXPECT_TRUE(library.Free());
  EXPECT_THAT(RecordedNames(), ElementsAreArray(kEnd));
  ExpectTheLibrarysOwnState(&state, handle);
  EXPECT_EQ(AfxGetModuleState(), &state);
  EXPECT_EQ(LiveTexts(), 0);
}

TEST(Unload, DoesWithoutAnApplication) {
  StartRecording();
  LoadedLibrary library(RecordedLibraryPath());
  ASSERT_TRUE(library.IsLoaded());
  AFX_MODULE_STATE* const librarys = RecordedCalls().front().moduleState;
  librarys->m_pCurrentWinApp = nullptr;
  StartRecording();
  EXPECT_TRUE(library.Free());
  EXPECT_THAT(RecordedNames(), ElementsAreArray(kEnd.begin() + 1, kEnd.end()));
}

TEST(Unload, LeavesNoTextHoweverOften) {
  StartRecording();
  for (int round = 0; round < 200; ++round) {
    LoadedLibrary library(RecordedLibraryPath());
    ASSERT_TRUE(library.IsLoaded()) << "in round " << round;
    ASSERT_EQ(LiveTexts(), 2) << "in round " << round;
    ASSERT_TRUE(library.Free()) << "in round " << round;
    ASSERT_EQ(LiveTexts(), 0) << "in round " << round;
  }
  EXPECT_EQ(RecordedCalls().size(), 200 * (kStart.size() + kEnd.size()));
}

TEST(ThreadsEnd, LetsGoOfTheThreadUnderTheLibrarysState) {
  StartRecording();
  const LoadedLibrary library(RecordedLibraryPath());
  ASSERT_TRUE(library.IsLoaded());
  AFX_MODULE_STATE* const librarys = RecordedCalls().front().moduleState;
  AFX_MODULE_STATE state;
  const AFX_MAINTAIN_STATE2 maintained(&state);
  StartRecording();
  GivenThreadEnd()(library.Handle());
  EXPECT_THAT(RecordedNames(), ElementsAre("AfxLockTempMaps", "AfxUnlockTempMaps", "AfxTermThread"));
  ExpectTheLibrarysOwnState(&state, library.Handle());
  EXPECT_EQ(RecordedCalls().front().moduleState, librarys);
  EXPECT_EQ(RecordedCalls().back().instance, library.Handle());
  EXPECT_EQ(AfxGetModuleState(), &state);
}

struct Refusal {
  const char* name;
  std::string failing;
  Shortage shortage;
  Calls calls;
  DWORD status;
};

void PrintTo(const Refusal& refusal, std::ostream* out) { *out << refusal.name; }

class RefusedLoad : public testing::TestWithParam<Refusal> {
 protected:
  void ExpectRefused() {
    StartRecording();
    const FailingCall failing(GetParam().failing, GetParam().shortage);
    EXPECT_EQ(AfxLoadLibrary(RecordedLibraryPath()), nullptr);
    EXPECT_EQ(LastStatus(), GetParam().status);
  }
};

TEST_P(RefusedLoad, CallsWhatHasToBeCalledAndTellsTheStatus) {
  ExpectRefused();
  EXPECT_THAT(RecordedNames(), ElementsAreArray(GetParam().calls));
}

TEST_P(RefusedLoad, RestoresTheModuleState) {
  AFX_MODULE_STATE state;
  const AFX_MAINTAIN_STATE2 maintained(&state);
  ExpectRefused();
  EXPECT_EQ(AfxGetModuleState(), &state);
  for (const RecordedCall& call : RecordedCalls()) EXPECT_NE(call.moduleState, &state) << "in " << call.name;
}

TEST_P(RefusedLoad, LeavesNothing) {
  ExpectRefused();
  EXPECT_THAT(ExtensionModules(), IsEmpty());
  EXPECT_EQ(LiveTexts(), 0);
}

TEST_P(RefusedLoad, IsNotTheLast) {
  for (int round = 0; round < 3; ++round) {
    ExpectRefused();
    EXPECT_THAT(RecordedNames(), ElementsAreArray(GetParam().calls));
    StartRecording();
    const LoadedLibrary library(RecordedLibraryPath());
    EXPECT_TRUE(library.IsLoaded()) << "status " << LastStatus();
    EXPECT_THAT(RecordedNames(), ElementsAreArray(kStart));
  }
}

TEST_P(RefusedLoad, IsRefusedToEveryThread) {
  StartRecording();
  const FailingCall failing(GetParam().failing, GetParam().shortage);
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([] {
      for (int round = 0; round < 20; ++round) {
        EXPECT_EQ(AfxLoadLibrary(RecordedLibraryPath()), nullptr);
        EXPECT_EQ(LastStatus(), GetParam().status);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(RecordedCalls().size(), 80 * GetParam().calls.size());
  EXPECT_THAT(ExtensionModules(), IsEmpty());
}

constexpr DWORD kOutOfMemory = 0x8007000E;
constexpr DWORD kInitFailed = 0x8007045A;  // ERROR_DLL_INIT_FAILED: all that is known of a start that failed

const Calls kRefusedByTheApplication = {
    "SysAllocString(Node)", "SysAllocString(Nodes)", "AfxCoreInitModule",  kWinInit, "InitInstance", "ExitInstance",
    "AfxWinTerm",           "SysFreeString(Nodes)",  "SysFreeString(Node)"};
const Calls kRefusedForMemory = {"SysAllocString(Node)", "SysAllocString(Nodes)",  "AfxCoreInitModule",  kWinInit,
                                 "InitInstance",         "AfxInitExtensionModule", "CDynLinkLibrary",    "ExitInstance",
                                 "AfxWinTerm",           "SysFreeString(Nodes)",   "SysFreeString(Node)"};

INSTANTIATE_TEST_SUITE_P(
    Steps, RefusedLoad,
    testing::Values(
        Refusal{"FirstConstant", "SysAllocString(Node)", Shortage::badAlloc, {"SysAllocString(Node)"}, kOutOfMemory},
        Refusal{"SecondConstant",
                "SysAllocString(Nodes)",
                Shortage::badAlloc,
                {"SysAllocString(Node)", "SysAllocString(Nodes)", "SysFreeString(Node)"},
                kOutOfMemory},
        Refusal{"AfxWinInit",
                kWinInit,
                Shortage::badAlloc,
                {"SysAllocString(Node)", "SysAllocString(Nodes)", "AfxCoreInitModule", kWinInit, "AfxWinTerm",
                 "SysFreeString(Nodes)", "SysFreeString(Node)"},
                kInitFailed},
        Refusal{"InitInstance", "InitInstance", Shortage::badAlloc, kRefusedByTheApplication, kInitFailed},
        Refusal{"CDynLinkLibraryByBadAlloc", "CDynLinkLibrary", Shortage::badAlloc, kRefusedForMemory, kOutOfMemory},
        Refusal{"CDynLinkLibraryByMemoryException", "CDynLinkLibrary", Shortage::memoryException, kRefusedForMemory,
                kOutOfMemory}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace ondrel::test
