// The system does not tell which files it keeps in memory.
#include <ondrel/platform/program.h>

namespace ondrel::platform {

bool IsLeftToDisk(const CString&) { return false; }

ULONGLONG BeginReading(const CString&) { return 0; }

}  // namespace ondrel::platform
