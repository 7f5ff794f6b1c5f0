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

/// A life in which a ledger is begun. It is written to when a line ends, a quarter hour or a
/// megabyte is over, before sleep and at the end, and folded at midnight.
Operation lifeWithLedger(const std::string& folder, const Folder& files,
                         std::vector<std::string> mayWarn);
/// What an earlier life was doing with its ledger when it was killed.
enum class Left {
    Unwritten, ///< it had not begun to write what the journal tells
    Torn,      ///< it was writing that
    Written,   ///< it had written that, and the journal did not know it yet
};
/// A second life, where the one that was killed kept a ledger.
Operation secondLifeWithLedger(const char* name, Left left, const std::string& folder,
                               const Folder& files, std::vector<std::string> mayWarn);

} // namespace tarvik::faults
