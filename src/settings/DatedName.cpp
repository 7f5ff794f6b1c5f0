#include "settings/DatedName.h"

#include "ports/Clock.h"
#include "ports/Platform.h"
#include "ports/Program.h"
#include "types/Convert.h"

namespace tarvik {

std::string todayText() {
    const CivilTime today = platform().clock.currentDate().civil();
    return wholeToText(today.year) + "-" + wholeToText(today.month) + "-" + wholeToText(today.day);
}

std::string nameWithoutFolder(const std::string& path) {
    return path.substr(path.rfind(platform().program.pathSeparator()) + 1);
}

Renaming renameToFree(const std::string& file, int first,
                      const std::function<std::string(int)>& nameOf) {
    Renaming result{.failure = ErrorNumber::FileAlreadyExists, .name = {}};
    for (int number = first;
         result.failure == ErrorNumber::FileAlreadyExists && number <= mostNumbers; ++number) {
        result.name = nameOf(number);
        result.failure = platform().files.Name(file, result.name);
    }
    return result;
}

} // namespace tarvik
