#include "settings/mdlSettingsBackup.h"

#include "plan/Plans.h"
#include "ports/Files.h"
#include "ports/Platform.h"
#include "ports/PrivateProfile.h"
#include "settings/DatedName.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsJournal.h"
#include "settings/mdlSettingsLog.h"
#include "settings/mdlSettingsPlans.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "types/Convert.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace tarvik {

namespace {

std::string numberedName(const std::string& file, const std::string& date, int number) {
    return nameOfBackup(file, date + "." + wholeToText(number));
}

/// Name and values of every record that the file's index leads to; nothing where the file cannot be
/// read.
std::optional<std::vector<std::string>> recordsOf(const std::string& file) {
    std::vector<std::string> records;
    const ProfileReading reading(platform().profile, file);
    if (!reading.readable()) {
        return std::nullopt;
    }
    const std::int32_t count =
        platform().profile.GetPrivateProfileIntA(SettingsSection, keys::lastDateStamp, 0, file);
    for (std::int32_t n = 1; n <= count; ++n) {
        const std::string section =
            iniText(file, SettingsSection, keys::dateStamp + wholeToText(n));
        if (section.empty()) {
            break; // the index has no gaps, so that this is its end
        }
        std::string record = section;
        for (const char* key : {keys::sent, keys::rcvd, keys::duration, keys::ipAddress}) {
            record += '\n' + iniText(file, section, key);
        }
        records.push_back(std::move(record));
    }
    return records;
}

/// The first file holds a record that the second lacks; raises PathFileAccess where either cannot
/// be read.
bool holdsOtherRecords(const std::string& first, const std::string& second) {
    const auto theirs = recordsOf(first);
    const auto ours = recordsOf(second);
    if (!theirs || !ours) {
        raise(ErrorNumber::PathFileAccess);
    }
    return theirs->size() > ours->size() ||
           !std::equal(theirs->begin(), theirs->end(), ours->begin());
}

void raiseIfFailed(const FileResult& result) {
    if (result) {
        raise(*result);
    }
}

/// What stands under the backup's name stays under that name with a number.
void moveAside(const std::string& iniFileName, const std::string& date) {
    const auto numbered = [&](int number) { return numberedName(iniFileName, date, number); };
    raiseIfFailed(renameToFree(nameOfBackup(iniFileName, date), 1, numbered).failure);
}

/// Copies the file until no other program has changed it meanwhile: what is deleted afterwards is
/// what the copy holds.
void copyWhole(const std::string& source, const std::string& target) {
    constexpr int attempts = 5;
    Files& files = platform().files;
    for (int i = 0; i < attempts; ++i) {
        const std::optional<FileStamp> before = files.stamp(source);
        raiseIfFailed(files.FileCopy(source, target));
        if (files.stamp(source) == before) {
            return;
        }
    }
    raise(ErrorNumber::PathFileAccess);
}

} // namespace

bool BackupINIFile() {
    return guarded("BackupINIFile", false, [](bool& result) {
        KeepJournal(KeepWhen::AtOnce);
        if (!SaveState()) {
            return;
        }
        NoteSave(); // the backup may still fail
        const std::string source = state().IniFileName;
        if (source.empty()) {
            MsgBox("Assertion failure detected in \"BackupINIFile\".", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
            return;
        }
        Files& files = platform().files;
        const std::string date = todayText();
        const std::string target = nameOfBackup(source, date);
        const FileKind there = files.Dir(target);
        if (there == FileKind::Other) {
            // It may be a backup that is out of reach for a moment.
            raise(ErrorNumber::PathFileAccess);
        }
        if (there == FileKind::File && holdsOtherRecords(target, source)) {
            moveAside(source, date);
        }
        AnnounceReset();
        // The copy is complete and on the disk before the original goes.
        copyWhole(source, target);
        raiseIfFailed(files.Kill(source));
        if (plans().areThere()) {
            SavePlans();
        }
        result = true;
    });
}

bool keepIniFile(const std::string& file, std::string& copy) {
    Files& files = platform().files;
    copy.clear();
    const FileKind kind = files.Dir(file);
    if (kind != FileKind::File) {
        return kind == FileKind::None;
    }
    const std::string date = todayText();
    copy = nameOfBackup(file, date);
    FileKind there = files.Dir(copy);
    for (int number = 1; there != FileKind::None && number <= mostNumbers; ++number) {
        if (there == FileKind::Other) {
            return false; // what has the name may be out of reach for a moment only
        }
        copy = numberedName(file, date, number);
        there = files.Dir(copy);
    }
    return there == FileKind::None && !files.FileCopy(file, copy).has_value();
}

} // namespace tarvik
