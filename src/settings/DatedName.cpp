#include "settings/DatedName.h"

#include "ports/Clock.h"
#include "ports/Platform.h"
#include "ports/Program.h"
#include "types/Convert.h"
#include "types/Text.h"

#include <string_view>

namespace tarvik {

std::string dayText(Date day) {
    const CivilTime civil = day.civil();
    return wholeToText(civil.year) + "-" + wholeToText(civil.month) + "-" + wholeToText(civil.day);
}

std::string todayText() {
    return dayText(platform().clock.currentDate());
}

std::string nameOfBackup(const std::string& file, const std::string& day) {
    constexpr std::string_view ending = ".INI";
    const std::string_view name = file;
    if (name.size() > ending.size() &&
        upperCase(name.substr(name.size() - ending.size())) == ending) {
        const std::size_t stem = name.size() - ending.size();
        return file.substr(0, stem) + "." + day + file.substr(stem);
    }
    return file + "." + day;
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
