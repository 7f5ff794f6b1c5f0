#pragma once

#include "controls/Control.h"
#include "ports/Desktop.h"
#include "windows/services/SystemHeader.h"

#include <functional>
#include <string>
#include <vector>

namespace tarvik {

// How a test finds, reads and works real windows, its own or those of another process.

/// Has messages handled until the condition holds; false when it does not within a fair while.
bool spinUntil(const std::function<void()>& handleMessages, const std::function<bool()>& condition);

/// The top-level windows of a process, or of all for 0, that have this class; hidden ones too.
std::vector<HWND> topLevelWindows(const std::string& className, DWORD process);

/// The window of that class in this process; null when there is none.
HWND ownWindow(const std::string& className);

/// The window of a form in this process, or of one of its controls; null when there is none.
HWND windowOf(const ControlList& form);
HWND windowOf(const Control& control);

/// What a window answers to a message, whatever its process; 0 where it does not within a minute,
/// for a test that waits for ever tells nobody which one it is.
LRESULT answerOf(HWND window, UINT message, WPARAM first, LPARAM second);

/// The text of a window, whatever its process.
std::string textOf(HWND window);

/// The text without the marks of mnemonics.
std::string withoutMarks(const std::string& text);

/// The class of a window.
std::string classOf(HWND window);

/// An open message box of the process.
struct OpenBox {
    HWND window = nullptr;
    std::string caption;
    std::string text; ///< lines separated by single carriage returns

    /// What its buttons answer.
    std::vector<MsgBoxAnswer> answers() const;
    /// False when the box has no such button. The press is only posted: the box may open others.
    bool press(MsgBoxAnswer answer) const;
};

/// The process's open message box, with a null window when there is none.
OpenBox openBox(DWORD process);

/// Puts a text into the clipboard.
void copyText(const std::string& text);

/// The menu that is open in a process of this desktop; null when there is none.
HMENU openMenu(DWORD process);

} // namespace tarvik
