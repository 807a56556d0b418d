// Included before the library's own sources for its start and end: what they call is recorded (see call_recorder.h).
#pragma once

#include "module/recorder/call_recorder.h"

#define SysAllocString ::ondrel::test::RecordedAllocString
#define SysFreeString ::ondrel::test::RecordedFreeString
#define AfxCoreInitModule ::ondrel::test::RecordedCoreInitModule
#define AfxWinInit ::ondrel::test::RecordedWinInit
#define AfxWinTerm ::ondrel::test::RecordedWinTerm
#define AfxInitExtensionModule ::ondrel::test::RecordedInitExtensionModule
#define AfxTermExtensionModule ::ondrel::test::RecordedTermExtensionModule
#define AfxLockTempMaps ::ondrel::test::RecordedLockTempMaps
#define AfxUnlockTempMaps ::ondrel::test::RecordedUnlockTempMaps
#define AfxTermThread ::ondrel::test::RecordedTermThread
#define CDynLinkLibrary ::ondrel::test::RecordedDynLinkLibrary
