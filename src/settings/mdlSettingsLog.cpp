#include "settings/mdlSettingsLog.h"

#include "ports/Clock.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "ports/PrivateProfile.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsJournal.h"
#include "settings/mdlSettingsPlans.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "state/mdlVar.h"
#include "types/Convert.h"
#include "types/Text.h"

namespace tarvik {

namespace {

bool isEmpty(const Amount& record) {
    // Two figures that fit have to be saved, whether their sum does or not.
    return nearestSum(record.sent, record.rcvd) <= Currency(0) && record.duration <= Currency(0);
}

std::string indexKey(Long n) {
    return keys::dateStamp + toText(n);
}

/// The name of record n's section; empty when there is none.
std::string sectionOf(Long n) {
    return state().IniFileName.empty() ? std::string()
                                       : GetStringFromINI(SettingsSection, indexKey(n));
}

Currency recordValue(const std::string& key, Long n) {
    const std::string section = sectionOf(n);
    return section.empty() ? Currency(0) : GetCurrencyFromINI(section, key);
}

/// Date and time are read one after the other: at midnight the name may hold the old date with the
/// new time.
std::string newSectionName() {
    const LocaleData& locale = platform().locale.data();
    const std::string date = shortDateText(platform().clock.currentDate(), locale);
    const std::string time = longTimeText(platform().clock.currentTime(), locale);
    return std::string(trimSpaces(date)) + "|" + std::string(trimSpaces(time));
}

std::string sectionText(const Amount& record) {
    const LocaleData& locale = platform().locale.data();
    std::string text;
    const auto add = [&](const char* key, const std::string& value) {
        text += std::string(key) + "=" + value + '\0';
    };
    add(keys::sent, toText(record.sent, locale));
    add(keys::rcvd, toText(record.rcvd, locale));
    add(keys::duration, toText(record.duration, locale));
    add(keys::ipAddress, state().IPAddress);
    return text + '\0';
}

bool writeSetting(const std::string& key, const std::string& value) {
    return platform().profile.WritePrivateProfileStringA(SettingsSection, key, value,
                                                         state().IniFileName);
}

bool appendRecord(const Amount& record, Long newest) {
    const std::string section = newSectionName();
    if (!platform().profile.WritePrivateProfileSectionA(section, sectionText(record),
                                                        state().IniFileName) ||
        !writeSetting(keys::lastState, section)) {
        return false;
    }
    const Long number = newest + 1;
    return writeSetting(indexKey(number), section) &&
           writeSetting(keys::lastDateStamp, toText(number));
}

bool saveRecord() {
    const Amount record = OverallAmount();
    if (isEmpty(record)) {
        return true;
    }
    const Long newest = GetNumRecords();
    if (record != recordOf(sectionOf(newest)) && !appendRecord(record, newest)) {
        return false;
    }
    NoteRecord();
    return true;
}

} // namespace

bool SaveState() {
    return guarded("SaveState", false, [](bool& result) {
        SetIniFileName(true, false);
        // The number of the newest record is read anew each time: another copy of the program may
        // have added one.
        result = UpdateIniFile([] { return saveRecord() && SaveSettings() && WritePlans(); });
        if (result) {
            NotePlansWritten();
        }
    });
}

Long GetNumRecords() {
    return guarded("GetNumRecords", Long(0), [](Long& result) {
        result = GetLongFromINI(SettingsSection, keys::lastDateStamp).toLong();
    });
}

Currency GetBytes(const std::string& Key, Long n) {
    return guarded("GetBytes", Currency(0),
                   [&](Currency& result) { result = recordValue(Key, n); });
}

Currency GetBytesSent(Long n) {
    return guarded("GetBytesSent", Currency(0),
                   [&](Currency& result) { result = GetBytes(keys::sent, n); });
}

Currency GetBytesRcvd(Long n) {
    return guarded("GetBytesRcvd", Currency(0),
                   [&](Currency& result) { result = GetBytes(keys::rcvd, n); });
}

Currency GetDuration(Long n) {
    return guarded("GetDuration", Currency(0),
                   [&](Currency& result) { result = recordValue(keys::duration, n); });
}

std::string GetIPAddress(Long n) {
    // Reports itself as its neighbour does; kept so.
    return guarded("GetBytes", std::string(), [&](std::string& result) {
        const std::string section = sectionOf(n);
        if (!section.empty()) {
            result = GetStringFromINI(section, keys::ipAddress);
        }
    });
}

std::string GetDate(Long n) {
    return guarded("GetDate", std::string(), [&](std::string& result) { result = sectionOf(n); });
}

} // namespace tarvik
