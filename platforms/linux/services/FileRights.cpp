#include "linux/services/FileRights.h"

#include <unistd.h>

namespace tarvik {

mode_t modeOfNewFile() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666U & ~mask;
}

mode_t modeInGroupOf(const struct stat& old, int file, mode_t mode) {
    const bool given = fchown(file, static_cast<uid_t>(-1), old.st_gid) == 0;
    return given ? mode : mode & ~static_cast<mode_t>(S_IRWXG);
}

} // namespace tarvik
