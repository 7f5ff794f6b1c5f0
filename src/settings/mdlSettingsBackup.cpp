#include "settings/mdlSettingsBackup.h"

#include "ports/Clock.h"
#include "ports/Files.h"
#include "ports/Platform.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlTools.h"
#include "startup/mdlVar.h"
#include "types/Convert.h"
#include "types/Text.h"

#include <string_view>

namespace tarvik {

namespace {

std::string todayText() {
    const CivilTime today = platform().clock.currentDate().civil();
    return wholeToText(today.year) + "-" + wholeToText(today.month) + "-" + wholeToText(today.day);
}

/// The date goes before the ending where the file has the usual one, else behind the name.
std::string backupName(const std::string& iniFileName) {
    constexpr std::string_view ending = ".INI";
    const std::string_view name = iniFileName;
    if (name.size() > ending.size() &&
        upperCase(name.substr(name.size() - ending.size())) == ending) {
        const std::size_t stem = name.size() - ending.size();
        return iniFileName.substr(0, stem) + "." + todayText() + iniFileName.substr(stem);
    }
    return iniFileName + "." + todayText();
}

void raiseIfFailed(const FileResult& result) {
    if (result) {
        raise(*result);
    }
}

} // namespace

bool BackupINIFile() {
    return guarded("BackupINIFile", false, [](bool& result) {
        if (!SaveState()) {
            return;
        }
        const std::string source = state().IniFileName;
        if (source.empty()) {
            MsgBox("Assertion failure detected in \"BackupINIFile\".", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
            return;
        }
        Files& files = platform().files;
        // The copy is complete and on the disk before the original goes.
        raiseIfFailed(files.FileCopy(source, backupName(source)));
        raiseIfFailed(files.Kill(source));
        result = true;
    });
}

} // namespace tarvik
