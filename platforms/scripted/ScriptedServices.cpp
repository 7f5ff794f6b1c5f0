#include "scripted/ScriptedServices.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvik {

namespace {

std::string textOf(const char* text) {
    return text == nullptr ? std::string() : text;
}

/// Description, NUL, pattern, NUL and so on, with the two NULs at the end.
std::string filterOf(const char* text) {
    if (text == nullptr) {
        return {};
    }
    const char* end = text;
    while (end[0] != '\0' || end[1] != '\0') {
        ++end;
    }
    return {text, end + 2};
}

/// By its form, on a machine whose paths have that separator.
bool isFullPath(const std::string& path, char separator) {
    const bool rooted = path.size() > 1 && path[0] == separator;
    const bool drive = path.size() > 3 && path[1] == ':' && path[2] == separator;
    return separator == '/' ? rooted : drive || (rooted && path[1] == separator);
}

bool leaveDialog(ScriptedDialogs& dialogs, OPENFILENAMEA* data, const DialogPlacement& place,
                 bool saving) {
    dialogs.seen = *data;
    dialogs.saving = saving;
    dialogs.filter = filterOf(data->lpstrFilter);
    dialogs.title = textOf(data->lpstrTitle);
    dialogs.initialFolder = textOf(data->lpstrInitialDir);
    dialogs.defaultExtension = textOf(data->lpstrDefExt);
    dialogs.buffer.assign(data->lpstrFile, data->nMaxFile);
    dialogs.placed = place({0, 0, 100, 50}, dialogs.owner);
    const bool again = saving && textOf(data->lpstrFile) == dialogs.chosen;
    const std::string& chosen = again ? dialogs.chosenAgain : dialogs.chosen;
    if (chosen.empty() || dialogs.extendedError != 0) {
        return false;
    }
    // Where several files may be chosen, two NULs end the selection; what stood behind it stays.
    std::string selection = chosen.substr(0, data->nMaxFile - 1) + '\0';
    if (has(*data, DialogFlag::Flag_AllowMultiselect) && selection.size() < data->nMaxFile) {
        selection += '\0';
    }
    selection.copy(data->lpstrFile, selection.size());
    if (data->lpstrFileTitle != nullptr && data->nMaxFileTitle > 0) {
        const std::size_t length =
            dialogs.chosenTitle.copy(data->lpstrFileTitle, data->nMaxFileTitle - 1);
        data->lpstrFileTitle[length] = '\0';
    }
    if (dialogs.chosenFilter != 0) {
        data->nFilterIndex = dialogs.chosenFilter;
    }
    return true;
}

} // namespace

int ScriptedClock::minutesAhead(std::int64_t moment) {
    if (zone) {
        return zone(moment);
    }
    constexpr double firstOf1970 = 25'569; // as a serial
    constexpr double minutesInDay = 1440;
    constexpr double millisecondsInMinute = 60'000;
    const double ahead = (now.serial() - firstOf1970) * minutesInDay -
                         static_cast<double>(universal) / millisecondsInMinute;
    return static_cast<int>(std::lround(std::clamp(ahead, -minutesInDay, minutesInDay)));
}

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

LocaleData britishLocale() {
    LocaleData data;
    data.shortDate = "dd/MM/yyyy";
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

bool ScriptedNotificationArea::Shell_NotifyIconA(std::uint32_t request, NOTIFYICONDATAA* data) {
    requests.push_back({request, *data});
    const bool isNote = (data->uFlags & info) != 0;
    const bool done = onlyNotes ? isNote : present;
    if (request == remove || (isNote && done)) {
        answered_ = {};
    }
    return done;
}

bool ScriptedNotificationArea::tell(const DesktopNote& note, std::function<void(int)> answered) {
    if (!onlyNotes && !present) {
        return false;
    }
    notes.push_back(note);
    answered_ = std::move(answered);
    return true;
}

bool ScriptedNotificationArea::answer(int how) {
    const auto buttons = notesHaveButtons && !notes.empty() ? notes.back().buttons.size() : 0;
    if (!answered_ || how < noteClicked || how >= static_cast<int>(buttons)) {
        return false;
    }
    std::exchange(answered_, {})(how);
    return true;
}

bool ScriptedDialogs::GetOpenFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) {
    return leaveDialog(*this, data, place, false);
}

bool ScriptedDialogs::GetSaveFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) {
    return leaveDialog(*this, data, place, true);
}

bool ScriptedProgram::launch(const std::string& path,
                             const std::vector<std::pair<std::string, std::string>>& variables) {
    std::string all = path;
    for (const auto& [name, value] : variables) {
        all += name + value;
    }
    if (launchFails || !isFullPath(path, separator) || all.find('\0') != std::string::npos) {
        return false;
    }
    launches.push_back({path, variables});
    return true;
}

std::int32_t ScriptedInstances::CreateMutexA(const std::string& name, std::uint32_t* lastError) {
    namesAsked.push_back(name);
    *lastError = error == 0 && held->contains(name) ? alreadyExists : error;
    if (handle != 0) {
        held->insert(name);
        names_[handle] = name;
    }
    return handle == 0 ? 0 : handle++;
}

bool ScriptedInstances::CloseHandle(std::int32_t closed) {
    handlesClosed.push_back(closed);
    const auto found = names_.find(closed);
    if (found == names_.end()) {
        return false;
    }
    held->erase(held->find(found->second));
    names_.erase(found);
    return true;
}

void ScriptedInstances::endProgram() {
    for (const auto& [each, name] : names_) {
        held->erase(held->find(name));
    }
    names_.clear();
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
    starts_ += startupError == 0 ? 1 : 0;
    return startupError;
}

int ScriptedSockets::WSACleanup() {
    constexpr int notStarted = 10093;
    if (cleanupError == 0 && starts_ == 0) {
        lastError = notStarted;
        return notStarted;
    }
    starts_ -= starts_ > 0 ? 1 : 0;
    return cleanupError;
}

int ScriptedSockets::gethostname(char* name, int size) {
    if (hostNameFails) {
        return -1;
    }
    if (size <= static_cast<int>(hostName.size())) {
        constexpr int badAddress = 10014;
        lastError = badAddress;
        return -1;
    }
    name[hostName.copy(name, hostName.size())] = '\0';
    return 0;
}

bool ScriptedSockets::gethostbyname(const char* name, HOSTENT* found) {
    if (!hostFound || name != hostName) {
        return false;
    }
    *found = host;
    return true;
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
