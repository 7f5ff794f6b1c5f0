#pragma once

#include "ports/Files.h"
#include "types/Date.h"

#include <functional>
#include <string>

namespace tarvik {

/// Today's date as it stands in names of files, "2026-5-3".
std::string todayText();
std::string dayText(Date day);

/// The name that a file's backup gets on a day ("2026-5-3").
std::string nameOfBackup(const std::string& file, const std::string& day);

/// The last part of a path.
std::string nameWithoutFolder(const std::string& path);

/// So many files of one day are kept.
inline constexpr int mostNumbers = 1000;

/// What became of the wish to rename a file.
struct Renaming {
    FileResult failure;
    std::string name; ///< the last one that was tried: the new one where it succeeded
};

/// Renames a file to `nameOf` the first number from `first` to `mostNumbers` whose name is free.
Renaming renameToFree(const std::string& file, int first,
                      const std::function<std::string(int number)>& nameOf);

} // namespace tarvik
