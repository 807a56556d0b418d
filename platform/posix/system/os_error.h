// The system's errno values as the error codes of the contract.
#pragma once

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

/// The error code (ERROR_...) that stands for `error`, an errno value; ERROR_GEN_FAILURE for those without one.
ONDREL_OS_EXPORT DWORD OsErrorFromErrno(int error);

}  // namespace ondrel::platform
