// Records what a library calls as it starts and ends. The library under test calls the functions below in place of
// those that they are named after; each is recorded, made to fail when a test wants that, and otherwise passed on.
//
// The recorder is a library of its own, because it has to be there before the library under test and after it.
#pragma once

#include <string>
#include <vector>

#include <ondrel/platform/com.h>
#include <ondrel/platform/framework.h>

#ifdef ONDREL_BUILDING_CALL_RECORDER
#define RECORDER_API ONDREL_OS_EXPORT
#else
#define RECORDER_API ONDREL_OS_IMPORT
#endif

namespace ondrel::test {

/// One call of the library.
struct RecordedCall {
  std::string name;               ///< The function, with the arguments that matter: "AfxTermExtensionModule(all)".
  AFX_MODULE_STATE* moduleState;  ///< The thread's at the time of the call.
  HINSTANCE instance;             ///< The module that the call is about; null when it names none.
};

// For the tests.

/// How a call fails that says so by an exception.
enum class Shortage { memoryException, badAlloc };

/// While it lives, the call of the given name fails.
class FailingCall {
 public:
  RECORDER_API explicit FailingCall(const std::string& name, Shortage shortage = Shortage::badAlloc);
  RECORDER_API ~FailingCall();
  FailingCall(const FailingCall&) = delete;
  FailingCall& operator=(const FailingCall&) = delete;
};

/// Forgets what was recorded.
RECORDER_API void StartRecording();
RECORDER_API std::vector<RecordedCall> RecordedCalls();
/// When the process ends, the calls that were recorded until then are written to the error output, one a line.
RECORDER_API void PrintCallsAtProcessEnd();
/// How many texts the library has allocated and not freed.
RECORDER_API long LiveTexts();
/// Whether the library had an application when it started, and whether that had a name.
RECORDER_API bool HadApplication();
RECORDER_API bool HadApplicationName();

using ThreadEnd = void (*)(HINSTANCE instance);
/// The library's function for the end of a thread, which some systems never call; null before the first load. Valid
/// while the library is loaded.
RECORDER_API ThreadEnd GivenThreadEnd();

// For the library.

RECORDER_API void GiveThreadEnd(ThreadEnd threadEnd);
RECORDER_API BSTR RecordedAllocString(LPCWSTR text);
RECORDER_API void RecordedFreeString(BSTR text);
/// Also puts an application that records in place of the library's own, until AfxWinTerm.
RECORDER_API void RecordedCoreInitModule();
RECORDER_API BOOL RecordedWinInit(HINSTANCE instance, HINSTANCE previousInstance, LPCTSTR commandLine, int showCommand);
RECORDER_API void RecordedWinTerm();
RECORDER_API BOOL RecordedInitExtensionModule(AFX_EXTENSION_MODULE& record, HMODULE module);
RECORDER_API void RecordedTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all);
RECORDER_API void RecordedLockTempMaps();
RECORDER_API BOOL RecordedUnlockTempMaps();
RECORDER_API void RecordedTermThread(HINSTANCE instance);

class RecordedDynLinkLibrary : public CDynLinkLibrary {
 public:
  using CDynLinkLibrary::CDynLinkLibrary;
  RECORDER_API static void* operator new(std::size_t size);
  RECORDER_API static void operator delete(void* block);
};

}  // namespace ondrel::test
