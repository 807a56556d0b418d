// Which error code each errno value becomes.
#include "system/os_error.h"

#include <cerrno>

namespace ondrel::platform {

DWORD OsErrorFromErrno(int error) {
  switch (error) {
    case 0:
      return ERROR_SUCCESS;
    case ENOENT:
      return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
    case ELOOP:
      return ERROR_PATH_NOT_FOUND;
    case EMFILE:
    case ENFILE:
      return ERROR_TOO_MANY_OPEN_FILES;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ETXTBSY:
    case EBUSY:
    case ENXIO:  // a pipe without a reader, or a device that is not there
    case ENODEV:
      return ERROR_ACCESS_DENIED;
    case EBADF:
      return ERROR_INVALID_HANDLE;
    case ENOMEM:
      return ERROR_NOT_ENOUGH_MEMORY;
    case EEXIST:
      return ERROR_FILE_EXISTS;
    case EPIPE:
      return ERROR_NO_DATA;
    case ENOTEMPTY:
      return ERROR_NOT_EMPTY;
    case EINVAL:
      return ERROR_INVALID_PARAMETER;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:  // beyond the size limit of the process or of the file system
      return ERROR_DISK_FULL;
    case ENAMETOOLONG:
      return ERROR_FILENAME_EXCED_RANGE;
    default:
      return ERROR_GEN_FAILURE;
  }
}

}  // namespace ondrel::platform
