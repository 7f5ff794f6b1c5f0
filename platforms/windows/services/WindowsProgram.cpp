#include "windows/services/WindowsProgram.h"

#include "windows/services/ProgramStart.h"
#include "windows/services/SystemHeader.h"

#include <shlobj.h>

namespace tarvik {

namespace {

/// Longest path that the system knows, characters.
constexpr DWORD longestPath = 32768;

std::wstring executablePath() {
    std::wstring path(longestPath, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), longestPath));
    return path;
}

std::wstring shortPath(const std::wstring& path) {
    std::wstring result(longestPath, L'\0');
    const DWORD length = GetShortPathNameW(path.c_str(), result.data(), longestPath);
    result.resize(length < longestPath ? length : 0);
    return result;
}

/// Empty when some character has no place in the code page.
std::string exactBytes(const std::wstring& text) {
    const auto length = static_cast<int>(text.size());
    BOOL lost = FALSE;
    std::string bytes(text.size() * 4, '\0');
    const int count = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), length,
                                          bytes.data(), static_cast<int>(bytes.size()), nullptr,
                                          GetACP() == CP_UTF8 ? nullptr : &lost);
    bytes.resize(lost != FALSE || count < 0 ? 0 : static_cast<std::size_t>(count));
    return bytes;
}

std::wstring wideOf(const std::string& bytes) {
    const auto length = static_cast<int>(bytes.size());
    std::wstring text(bytes.size(), L'\0');
    const int count = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, text.data(), length);
    text.resize(static_cast<std::size_t>(count));
    return text;
}

std::string userDataFolder() {
    wchar_t path[MAX_PATH];
    if (SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, path) != S_OK) {
        return {};
    }
    const std::string folder = codePagePath(path);
    return folder.empty() ? folder : folder + "\\Velmars Tarvik";
}

} // namespace

std::string codePagePath(const std::wstring& path) {
    const std::string bytes = exactBytes(path);
    return bytes.empty() ? exactBytes(shortPath(path)) : bytes;
}

std::string folderOfPath(const std::string& path) {
    const std::size_t separator = path.find_last_of("\\/");
    if (separator == std::string::npos) {
        return {};
    }
    const bool root = separator > 0 && path[separator - 1] == ':';
    return path.substr(0, root ? separator + 1 : separator);
}

std::string argumentsOf(const std::string& wholeLine) {
    const bool quoted = wholeLine.starts_with('"');
    const std::size_t end = quoted ? wholeLine.find('"', 1) : wholeLine.find_first_of(" \t");
    if (end == std::string::npos) {
        return {};
    }
    const std::size_t first = wholeLine.find_first_not_of(" \t", quoted ? end + 1 : end);
    return first == std::string::npos ? std::string() : wholeLine.substr(first);
}

bool canWriteIn(const std::string& folder) {
    const std::string name = folder + "\\~tarvik" + std::to_string(GetCurrentProcessId()) + ".tmp";
    const HANDLE file = CreateFileA(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    return file != INVALID_HANDLE_VALUE && CloseHandle(file) != FALSE;
}

WindowsProgram::WindowsProgram()
    : folder_(folderOfPath(codePagePath(executablePath()))),
      commandLine_(argumentsOf(GetCommandLineA())) {
    // A drive that was pulled out is a failure of the call that meets it, not a box of the system's
    // behind which nothing is counted.
    SetErrorMode(SetErrorMode(SEM_FAILCRITICALERRORS) | SEM_FAILCRITICALERRORS);
    if (folder_.empty() || !canWriteIn(folder_)) {
        folder_ = userDataFolder();
    }
}

bool WindowsProgram::launch(const std::string& path,
                            const std::vector<std::pair<std::string, std::string>>& variables) {
    const std::wstring file = wideOf(path);
    std::vector<std::pair<std::wstring, std::wstring>> given;
    for (const auto& [name, value] : variables) {
        if ((name + value).find('\0') != std::string::npos) {
            return false;
        }
        given.emplace_back(wideOf(name), wideOf(value));
    }
    return isProgramPath(file) && startProgram(file, environmentBlockWith(given));
}

} // namespace tarvik
