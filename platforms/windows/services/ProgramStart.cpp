#include "windows/services/ProgramStart.h"

#include "windows/services/SystemHeader.h"

#include <map>
#include <system_error>
#include <thread>

namespace tarvik {

namespace {

std::wstring inCapitals(std::wstring text) {
    CharUpperBuffW(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

bool isSeparator(wchar_t character) {
    return character == L'\\' || character == L'/';
}

bool isFullPath(const std::wstring& path) {
    const bool drive = path.size() > 3 && path[1] == L':' && isSeparator(path[2]) &&
                       IsCharAlphaW(path[0]) != FALSE;
    const bool share = path.size() > 3 && isSeparator(path[0]) && isSeparator(path[1]);
    return drive || share;
}

/// The entries of this process under their names in capitals, in the order of those.
std::map<std::wstring, std::wstring> ownEnvironment() {
    std::map<std::wstring, std::wstring> entries;
    wchar_t* const block = GetEnvironmentStringsW();
    for (const wchar_t* next = block; next != nullptr && *next != L'\0';) {
        const std::wstring entry = next;
        next += entry.size() + 1;
        // The folder in use on each drive stands under a name that begins with the sign itself.
        entries[inCapitals(entry.substr(0, entry.find(L'=', 1)))] = entry;
    }
    if (block != nullptr) {
        FreeEnvironmentStringsW(block);
    }
    return entries;
}

/// Nothing of this process goes along: no handle, no window, no console, none of its error modes.
void create(const std::wstring& path, std::wstring environment) {
    std::wstring line = L'"' + path + L'"';
    STARTUPINFOW wishes{};
    wishes.cb = sizeof wishes;
    PROCESS_INFORMATION made{};
    if (CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, FALSE,
                       CREATE_NO_WINDOW | CREATE_UNICODE_ENVIRONMENT | CREATE_DEFAULT_ERROR_MODE,
                       environment.data(), nullptr, &wishes, &made) != FALSE) {
        CloseHandle(made.hThread);
        CloseHandle(made.hProcess);
    }
}

} // namespace

bool isProgramPath(const std::wstring& path) {
    const std::wstring name = inCapitals(path);
    const bool oneText = path.find(L'\0') == std::wstring::npos;
    return oneText && isFullPath(path) && path.find(L'"') == std::wstring::npos &&
           (name.ends_with(L".EXE") || name.ends_with(L".COM"));
}

std::wstring
environmentBlockWith(const std::vector<std::pair<std::wstring, std::wstring>>& variables) {
    std::map<std::wstring, std::wstring> entries = ownEnvironment();
    for (const auto& [name, value] : variables) {
        entries[inCapitals(name)] = name + L'=' + value;
    }
    std::wstring block;
    for (const auto& [name, entry] : entries) {
        block += entry + L'\0';
    }
    return block + L'\0';
}

bool startProgram(const std::wstring& path, std::wstring environment) {
    try {
        std::thread(create, path, std::move(environment)).detach();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

} // namespace tarvik
