#pragma once

#include "windows/services/SystemHeader.h"

#include <span>
#include <string>

namespace tarvik {

/// A library of the system that is loaded when one of its functions is first asked for, and stays.
/// Only the system's own folder is looked into, so that a file of that name beside the program is
/// never run. A system without it has none of its functions.
class Library {
public:
    explicit Library(std::string fileName) : fileName_(std::move(fileName)) {}
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// The function of that name, or null. `Function` is its type, calling convention included.
    template <class Function>
    Function* function(const char* name) {
        // Through a type without meaning: the system knows no other way to hand out functions.
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(address(name)));
    }

private:
    FARPROC address(const char* name);

    std::string fileName_;
    HMODULE module_ = nullptr;
    bool tried_ = false;
};

/// Made before anything else: from then on a library that is named without a folder is looked for
/// in the system's own folder only, whoever asks for it. A file that was planted beside the
/// program, for example in a folder of downloads, is not run.
class SystemLibrariesOnly {
public:
    SystemLibrariesOnly();
};

/// What that does on a Windows 7 without later updates, which cannot be told to leave out the
/// program's own folder: what the system loads by name for this program's windows, dialogs and
/// calls is loaded here, from the system's folder. Whoever asks for it by name then gets that.
void loadWhatTheSystemAsksForByName();

/// The names of what that loads; a system need not have all of them.
std::span<const char* const> namesAskedFor();

/// The system's own folder, without a separator at its end.
std::string systemFolder();

} // namespace tarvik
