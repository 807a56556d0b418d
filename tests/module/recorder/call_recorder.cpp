#include "module/recorder/call_recorder.h"

#include <iostream>
#include <memory>
#include <mutex>
#include <new>
#include <utility>

namespace ondrel::test {
namespace {

std::mutex lock;
std::vector<RecordedCall> calls;
std::string failingCall;
Shortage shortage = Shortage::badAlloc;
bool hadApplication = false;
bool hadApplicationName = false;
long liveTexts = 0;
ThreadEnd threadEnd = nullptr;
std::unique_ptr<CWinApp> application;

/// The last of these objects, and so the first that ends with the process.
struct Ending {
  ~Ending() {
    if (!prints) return;
    for (const RecordedCall& call : calls) std::cerr << call.name << '\n';
  }
  bool prints = false;
} ending;

/// False when the call is to fail.
bool Record(const std::string& name, HINSTANCE instance = nullptr) {
  const std::lock_guard guard(lock);
  calls.push_back({name, AfxGetModuleState(), instance});
  return name != failingCall;
}

class RecordingApplication : public CWinApp {
 public:
  BOOL InitInstance() override { return Record("InitInstance") && CWinApp::InitInstance(); }
  int ExitInstance() override {
    Record("ExitInstance");
    return CWinApp::ExitInstance();
  }
};

std::string Shown(const WCHAR* text) { return text == nullptr ? "null" : platform::ToUtf8(text); }

}  // namespace

FailingCall::FailingCall(const std::string& name, Shortage kind) {
  const std::lock_guard guard(lock);
  failingCall = name;
  shortage = kind;
}

FailingCall::~FailingCall() {
  const std::lock_guard guard(lock);
  failingCall.clear();
}

void StartRecording() {
  const std::lock_guard guard(lock);
  calls.clear();
}

void PrintCallsAtProcessEnd() { ending.prints = true; }

std::vector<RecordedCall> RecordedCalls() {
  const std::lock_guard guard(lock);
  return calls;
}

long LiveTexts() {
  const std::lock_guard guard(lock);
  return liveTexts;
}

bool HadApplication() { return hadApplication; }

bool HadApplicationName() { return hadApplicationName; }

ThreadEnd GivenThreadEnd() { return threadEnd; }

void GiveThreadEnd(ThreadEnd end) { threadEnd = end; }

BSTR RecordedAllocString(LPCWSTR text) {
  if (!Record("SysAllocString(" + Shown(text) + ")")) return nullptr;
  const BSTR copy = SysAllocString(text);
  const std::lock_guard guard(lock);
  if (copy != nullptr) ++liveTexts;
  return copy;
}

void RecordedFreeString(BSTR text) {
  Record("SysFreeString(" + Shown(text) + ")");
  SysFreeString(text);
  const std::lock_guard guard(lock);
  if (text != nullptr) --liveTexts;
}

void RecordedCoreInitModule() {
  Record("AfxCoreInitModule");
  const CWinApp* const own = AfxGetApp();
  hadApplication = own != nullptr;
  hadApplicationName = own != nullptr && own->m_pszAppName != nullptr;
  application = std::make_unique<RecordingApplication>();
  AfxCoreInitModule();
}

BOOL RecordedWinInit(HINSTANCE instance, HINSTANCE previousInstance, LPCTSTR commandLine, int showCommand) {
  const std::string previous = previousInstance == nullptr ? "null" : "an instance";
  const bool succeeds = Record(
      "AfxWinInit(" + previous + ", \"" + Shown(commandLine) + "\", " + std::to_string(showCommand) + ")", instance);
  return succeeds ? AfxWinInit(instance, previousInstance, commandLine, showCommand) : FALSE;
}

void RecordedWinTerm() {
  Record("AfxWinTerm");
  AfxWinTerm();
  application.reset();
}

BOOL RecordedInitExtensionModule(AFX_EXTENSION_MODULE& record, HMODULE module) {
  Record("AfxInitExtensionModule", module);
  return AfxInitExtensionModule(record, module);
}

void RecordedTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all) {
  Record(all ? "AfxTermExtensionModule(all)" : "AfxTermExtensionModule", record.hModule);
  AfxTermExtensionModule(record, all);
}

void RecordedLockTempMaps() {
  Record("AfxLockTempMaps");
  AfxLockTempMaps();
}

BOOL RecordedUnlockTempMaps() {
  Record("AfxUnlockTempMaps");
  return AfxUnlockTempMaps();
}

void RecordedTermThread(HINSTANCE instance) {
  Record("AfxTermThread", instance);
  AfxTermThread(instance);
}

void* RecordedDynLinkLibrary::operator new(std::size_t size) {
  if (!Record("CDynLinkLibrary")) {
    if (shortage == Shortage::memoryException) AfxThrowMemoryException();
    throw std::bad_alloc();
  }
  return ::operator new(size);
}

void RecordedDynLinkLibrary::operator delete(void* block) { ::operator delete(block); }

}  // namespace ondrel::test
