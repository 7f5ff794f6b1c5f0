#include "settings/mdlSettingsLoad.h"

#include "forms/Forms.h"
#include "ports/Clock.h"
#include "ports/Files.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "ports/PrivateProfile.h"
#include "settings/Setting.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsBackup.h"
#include "settings/mdlSettingsControls.h"
#include "settings/mdlSettingsPlans.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "state/mdlVar.h"
#include "types/Convert.h"

namespace tarvik {

namespace {

std::uint8_t byteSetting(const char* key) {
    return GetLongFromINI(SettingsSection, key).toByte();
}

Long longSetting(const char* key) {
    return GetLongFromINI(SettingsSection, key).toLong();
}

void loadTotals() {
    const std::string lastState = GetStringFromINI(SettingsSection, keys::lastState);
    if (lastState.empty()) {
        ResetTransfers(true);
        return;
    }
    ResetTransfers(false);
    SetFinishedTotals(recordOf(lastState));
}

/// A date of the last reset that another language may have written: it is none here, or lies after
/// today, or would be written differently here. No text is no date of anybody's.
bool isDoubtful(const std::string& text, Date read) {
    const bool toCome = read.serial() >= platform().clock.currentDate().serial() + 1;
    return !text.empty() && (toCome || text != toText(read, platform().locale.data()));
}

Date loadDay(const char* key) {
    State& s = state();
    const Date day(GetDateFromINI(SettingsSection, key).toDouble());
    const std::string text = GetStringFromINI(SettingsSection, key);
    s.FileOfDoubtfulReset = isDoubtful(text, day) ? s.IniFileName : "";
    return day;
}

/// Reads a setting and shows it. One that cannot be converted ends the load with it.
void load(const Setting& setting) {
    State& s = state();
    std::visit(
        ByKind{[&](const auto& small) { setSmall(s.*small.value, byteSetting(setting.key)); },
               [&](const BytesSetting& bytes) {
                   s.*bytes.value = GetCurrencyFromINI(SettingsSection, setting.key);
               },
               [&](const NumberSetting& number) {
                   s.*number.value = number.within(longSetting(setting.key));
               },
               [&](const DaySetting& day) { s.*day.value = loadDay(setting.key); }},
        setting.kind);
    showEverywhere(setting);
}

} // namespace

bool LoadState() {
    const bool loaded = guarded("LoadState", false, [](bool& result) {
        SetIniFileName(false, false);
        // A file that only the second look finds is there, and out of reach at times. Of one that
        // the first has found, the reading tells.
        const FileKind kind = platform().files.Dir(usualIniFile());
        const bool found = !state().IniFileName.empty();
        state().IniFileUnread = !found && (kind == FileKind::Other || kind == FileKind::File);
        if (!found) {
            return;
        }
        const ProfileReading reading(platform().profile, state().IniFileName);
        if (!reading.readable()) {
            state().IniFileUnread = true;
            return;
        }
        LoadPlans();
        if (HasOnlyPlans()) {
            return;
        }
        loadTotals();
        forms().frmOptions.load();
        for (const Setting& setting : settings()) {
            load(setting);
        }
        result = true;
    });
    const State& s = state();
    if (!loaded && !s.IniFileName.empty() && !s.IniFileUnread && !HasOnlyPlans()) {
        // A value has ended it halfway, and the next save writes the defaults of all that was not
        // read.
        std::string copy;
        keepIniFile(s.IniFileName, copy);
    }
    return loaded;
}

} // namespace tarvik
