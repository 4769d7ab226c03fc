#include "platform/kernel/system_error.h"

#include <winerror.h>

#include <cerrno>

namespace platform {

DWORD ErrorFromErrno(int error) {
  switch (error) {
    case ENOENT:
      return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
    case ELOOP:
    case ENAMETOOLONG:
      return ERROR_PATH_NOT_FOUND;
    case EACCES:
    case EPERM:
      return ERROR_ACCESS_DENIED;
    case EROFS:
      return ERROR_WRITE_PROTECT;
    case ENOMEM:
      return ERROR_NOT_ENOUGH_MEMORY;
    case ENOSPC:
    case EDQUOT:
      return ERROR_DISK_FULL;
    case EMFILE:
    case ENFILE:
      return ERROR_TOO_MANY_OPEN_FILES;
    default:
      return ERROR_GEN_FAILURE;
  }
}

}  // namespace platform
