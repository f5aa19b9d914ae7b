#include "path_error.h"

#include <errno.h>
#include <sys/stat.h>

namespace kawin {

DWORD ErrorForPath(const std::string& native, int error) {
    if (error != ENOENT) {
        return ErrorFromErrno(error);
    }
    struct stat status;
    const std::string folder = native.substr(0, native.find_last_of('/') + 1);
    return stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
}

}  // namespace kawin
