#pragma once

#include <sys/stat.h>

namespace tarvik {

/// Who may read and write a file that the program makes new: all whom the user's mask lets.
mode_t modeOfNewFile();

/// `mode` for an open file of the user's own that is to be as open as `old`. It gets the old group;
/// where the user may not give it away, no group may do anything with it.
mode_t modeInGroupOf(const struct stat& old, int file, mode_t mode);

} // namespace tarvik
