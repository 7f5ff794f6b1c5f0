#pragma once

#include "faults/Operations.h"

namespace tarvik::faults {

/// The program's whole life on these files: it counts two lines side by side, one of them dialled
/// anew, is set, told of sleep, reset by its user and by the calendar with a backup, and ends.
Operation wholeLife(const std::string& folder, const Folder& files,
                    std::vector<std::string> mayWarn);
/// A life that begins where an earlier one was killed while two lines were up.
Operation secondLife(const std::string& folder, const Folder& files,
                     std::vector<std::string> mayWarn);
/// Only the start of that.
Operation startAfterKill(const Folder& files, std::vector<std::string> mayWarn);

} // namespace tarvik::faults
