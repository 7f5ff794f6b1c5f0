#pragma once

#include "support/Win32Windows.h"

#include <string>

namespace tarvik {

// How a test finds and leaves a file dialog of its own process.

/// The file dialog, or a question before it, that is open; null when there is none.
inline HWND openDialog() {
    for (const HWND window : topLevelWindows("#32770", GetCurrentProcessId())) {
        if (IsWindowVisible(window) != FALSE) {
            return window;
        }
    }
    return nullptr;
}

/// Where the name is entered: another box in a dialog for saving; null when there is none yet.
inline HWND nameBoxOf(HWND dialog) {
    constexpr int ofSaving = 0x47C;
    constexpr int ofOpening = 0x480;
    if (dialog == nullptr) {
        return nullptr;
    }
    const HWND box = GetDlgItem(dialog, ofSaving);
    return box == nullptr ? GetDlgItem(dialog, ofOpening) : box;
}

/// The caption of the program's own questions.
inline constexpr const char* questionCaption = "Velmars Tarvik.";

inline bool press(HWND dialog, int button) {
    return PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0) != FALSE;
}

} // namespace tarvik
