#include "scripted/ScriptedServices.h"

#include <algorithm>

namespace tarvik {

namespace {

bool leaveDialog(ScriptedDialogs& dialogs, OPENFILENAMEA* data, const DialogPlacement& place) {
    dialogs.seen = *data;
    const char* end = data->lpstrFilter;
    while (end[0] != '\0' || end[1] != '\0') {
        ++end;
    }
    dialogs.filter.assign(data->lpstrFilter, end + 2);
    dialogs.title = data->lpstrTitle;
    dialogs.initialFolder = data->lpstrInitialDir;
    dialogs.placed = place({0, 0, 100, 50}, {200, 300, 400, 250});
    if (dialogs.chosen.empty() || dialogs.extendedError != 0) {
        return false;
    }
    const std::size_t length = dialogs.chosen.copy(data->lpstrFile, data->nMaxFile - 1);
    data->lpstrFile[length] = '\0';
    return true;
}

} // namespace

LocaleData germanLocale() {
    LocaleData data;
    data.decimalSeparator = ",";
    data.thousandsSeparator = ".";
    return data;
}

LocaleData americanLocale() {
    LocaleData data;
    data.shortDate = "M/d/yyyy";
    data.longTime = "h:mm:ss tt";
    return data;
}

LocaleData swedishLocale() {
    LocaleData data;
    data.shortDate = "yyyy-MM-dd";
    data.decimalSeparator = ",";
    data.thousandsSeparator = "\xC2\xA0";
    return data;
}

LocaleData frenchLocale() {
    LocaleData data;
    data.shortDate = "dd/MM/yyyy";
    data.decimalSeparator = ",";
    data.thousandsSeparator = "\xE2\x80\xAF";
    return data;
}

LocaleData swissLocale() {
    LocaleData data;
    data.thousandsSeparator = "\xE2\x80\x99";
    return data;
}

LocaleData finnishLocale() {
    LocaleData data;
    data.shortDate = "d.M.yyyy";
    data.longTime = "H.mm.ss";
    data.decimalSeparator = ",";
    data.thousandsSeparator = "\xC2\xA0";
    return data;
}

LocaleData japaneseLocale() {
    LocaleData data;
    data.shortDate = "yyyy年MMMd日";
    data.longTime = "tth時mm分ss秒";
    data.amText = "午前";
    data.pmText = "午後";
    data.shortMonths = {"1月", "2月", "3月", "4月",  "5月",  "6月",
                        "7月", "8月", "9月", "10月", "11月", "12月"};
    return data;
}

bool ScriptedDialogs::GetOpenFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) {
    return leaveDialog(*this, data, place);
}

bool ScriptedDialogs::GetSaveFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) {
    return leaveDialog(*this, data, place);
}

bool ScriptedInternetState::InternetGetConnectedState(std::uint32_t* flags, std::uint32_t) {
    *flags = flagWord;
    return connected;
}

bool ScriptedInternetState::InternetGetConnectedStateExA(std::uint32_t* flags, char* buffer,
                                                         std::uint32_t size, std::uint32_t) {
    *flags = flagWord;
    if (connected && size > 0) {
        const std::size_t length = name.copy(buffer, size - 1);
        buffer[length] = '\0';
    }
    return connected;
}

int ScriptedSockets::WSAStartup(std::uint16_t, WSADATA* data) {
    *data = started;
    return startupError;
}

int ScriptedSockets::gethostname(char* name, int size) {
    if (hostNameFails || size < 1) {
        return -1;
    }
    const std::size_t length = hostName.copy(name, static_cast<std::size_t>(size) - 1);
    name[length] = '\0';
    return 0;
}

bool ScriptedSockets::gethostbyname(const char*, HOSTENT* found) {
    *found = host;
    return hostFound;
}

std::uint32_t ScriptedErrorTexts::FormatMessageA(std::uint32_t, const void*, std::uint32_t code,
                                                 std::uint32_t, char* buffer, std::uint32_t size,
                                                 const void*) {
    const auto found = texts.find(code);
    if (found == texts.end() || size == 0) {
        return 0;
    }
    const std::size_t length = found->second.copy(buffer, size - 1);
    buffer[length] = '\0';
    return static_cast<std::uint32_t>(length);
}

} // namespace tarvik
