#include "settings/mdlSettings.h"

#include "ports/Files.h"
#include "ports/Locale.h"
#include "ports/Platform.h"
#include "ports/PrivateProfile.h"
#include "ports/Program.h"
#include "settings/Setting.h"
#include "settings/mdlSettingsDialog.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"
#include "types/Convert.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tarvik {

namespace {

/// The value's conversion, or nothing when the text cannot be converted.
template <class Convert>
auto converted(Convert&& convert) -> std::optional<decltype(convert())> {
    try {
        return convert();
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

} // namespace

std::string usualIniFile() {
    Program& program = platform().program;
    std::string path = program.folder();
    if (path.empty() || path.back() != program.pathSeparator()) {
        path += program.pathSeparator();
    }
    return path + IniFileBaseName;
}

std::string iniText(const std::string& file, const std::string& section, const std::string& key) {
    std::array<char, 128> buffer; // not cleared: no more than what was written to it is read
    const std::uint32_t count = platform().profile.GetPrivateProfileStringA(
        section, key, "", buffer.data(), buffer.size(), file);
    return {buffer.data(), count};
}

void SetIniFileName(bool bCreate, bool bAsk) {
    guarded("SetIniFileName", [&] {
        if (bAsk) {
            state().IniFileName = ShowIniFileDialog();
            return;
        }
        const std::string candidate = usualIniFile();
        const FileKind kind = platform().files.Dir(candidate);
        if (kind == FileKind::Directory) {
            MsgBox("Error: INI file exists as directory.", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
        } else if (kind == FileKind::File || bCreate) {
            state().IniFileName = candidate;
        }
    });
}

bool UpdateIniFile(const std::function<bool()>& Collect) {
    constexpr int attempts = 5;
    if (state().IniFileName.empty() || state().IniFileUnread) {
        return false;
    }
    bool collected = false;
    UpdateOutcome outcome = UpdateOutcome::Overtaken;
    for (int i = 0; i < attempts && outcome == UpdateOutcome::Overtaken; ++i) {
        ProfileUpdate update(platform().profile, state().IniFileName);
        collected = Collect();
        outcome = update.commit();
    }
    return collected && outcome == UpdateOutcome::Written;
}

std::string GetStringFromINI(const std::string& Section, const std::string& Key) {
    return guarded("GetStringFromINI", std::string(), [&](std::string& result) {
        if (!state().IniFileName.empty()) {
            result = iniText(state().IniFileName, Section, Key);
        }
    });
}

Currency GetLongFromINI(const std::string& Section, const std::string& Key) {
    return guarded("GetLongFromINI", Currency(0), [&](Currency& result) {
        if (!state().IniFileName.empty()) {
            result = std::max(
                0, platform().profile.GetPrivateProfileIntA(Section, Key, -1, state().IniFileName));
        }
    });
}

Currency GetCurrencyFromINI(const std::string& Section, const std::string& Key) {
    return guarded("GetCurrencyFromINI", Currency(0), [&](Currency& result) {
        const std::string text = GetStringFromINI(Section, Key);
        const auto number =
            converted([&] { return textToCurrency(text, platform().locale.data()); });
        result = number.value_or(Currency(0));
    });
}

Currency GetDateFromINI(const std::string& Section, const std::string& Key) {
    return guarded("GetDateFromINI", Currency(0), [&](Currency& result) {
        const LocaleData& locale = platform().locale.data();
        const std::string text = GetStringFromINI(Section, Key);
        const auto date = converted([&] { return textToDate(text, locale); });
        result = Currency::fromDouble(date.value_or(textToDate(DefaultDateText, locale)).serial());
    });
}

Amount recordOf(const std::string& section) {
    if (section.empty()) {
        return {};
    }
    const Currency sent = GetCurrencyFromINI(section, keys::sent);
    const Currency rcvd = GetCurrencyFromINI(section, keys::rcvd);
    return {.rcvd = rcvd, .sent = sent, .duration = GetCurrencyFromINI(section, keys::duration)};
}

bool GetLocked() {
    return guarded("GetLocked", false, [](bool& result) {
        SetIniFileName(false, false);
        result = !state().IniFileName.empty() &&
                 GetLongFromINI(SettingsSection, "IsLocked") > Currency(0);
    });
}

bool SetLocked(bool bLocked) {
    return guarded("SetLocked", false, [&](bool& result) {
        result = platform().profile.WritePrivateProfileStringA(
            SettingsSection, "IsLocked", bLocked ? "1" : "0", state().IniFileName);
    });
}

bool SaveSettings() {
    return guarded("SaveSettings", false, [](bool& result) {
        const LocaleData& locale = platform().locale.data();
        const auto& written = settingsAsWritten();
        result = std::all_of(written.begin(), written.end(), [&](const Setting* setting) {
            return platform().profile.WritePrivateProfileStringA(SettingsSection, setting->key,
                                                                 textOf(*setting, state(), locale),
                                                                 state().IniFileName);
        });
    });
}

} // namespace tarvik
