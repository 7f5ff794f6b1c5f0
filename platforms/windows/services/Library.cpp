#include "windows/services/Library.h"

namespace tarvik {

std::string systemFolder() {
    char path[MAX_PATH];
    const UINT length = GetSystemDirectoryA(path, MAX_PATH);
    return length < MAX_PATH ? std::string(path, length) : std::string();
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
