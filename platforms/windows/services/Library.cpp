#include "windows/services/Library.h"

namespace tarvik {

std::string systemFolder() {
    char path[MAX_PATH];
    const UINT length = GetSystemDirectoryA(path, MAX_PATH);
    return length < MAX_PATH ? std::string(path, length) : std::string();
}

SystemLibrariesOnly::SystemLibrariesOnly() {
    using SetDirectories = BOOL WINAPI(DWORD);
    auto* const setDirectories = reinterpret_cast<SetDirectories*>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories")));
    if (setDirectories == nullptr || setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32) == FALSE) {
        // A system without that update can leave out the current folder at least.
        SetDllDirectoryA("");
    }
}

FARPROC Library::address(const char* name) {
    if (!tried_) {
        tried_ = true;
        // What the library itself needs is looked for beside it, not beside the program.
        module_ = LoadLibraryExA((systemFolder() + "\\" + fileName_).c_str(), nullptr,
                                 LOAD_WITH_ALTERED_SEARCH_PATH);
    }
    return module_ == nullptr ? nullptr : GetProcAddress(module_, name);
}

} // namespace tarvik
