#include "support/Win32Windows.h"

#include "controls/ControlList.h"
#include "windows/face/ControlIds.h"

#include <algorithm>
#include <stdexcept>

namespace tarvik {

namespace {

constexpr int boxTextId = 0xFFFF;

struct Search {
    std::string className;
    DWORD process = 0;
    std::vector<HWND> found;
};

BOOL CALLBACK collect(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if ((search.process == 0 || process == search.process) && classOf(window) == search.className) {
        search.found.push_back(window);
    }
    return TRUE;
}

int numberOf(MsgBoxAnswer answer) {
    switch (answer) {
    case MsgBoxAnswer::Ok:
        return IDOK;
    case MsgBoxAnswer::Cancel:
        return IDCANCEL;
    case MsgBoxAnswer::Yes:
        return IDYES;
    case MsgBoxAnswer::No:
        break;
    }
    return IDNO;
}

std::string singleBreaks(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\n'), text.end());
    return text;
}

} // namespace

std::string classOf(HWND window) {
    char name[256] = {};
    GetClassNameA(window, name, sizeof name);
    return name;
}

bool spinUntil(const std::function<void()>& handleMessages,
               const std::function<bool()>& condition) {
    constexpr ULONGLONG fairWhile = 60'000;
    const ULONGLONG begin = GetTickCount64();
    while (!condition() && GetTickCount64() - begin < fairWhile) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        handleMessages();
    }
    return condition();
}

std::vector<HWND> topLevelWindows(const std::string& className, DWORD process) {
    Search search{.className = className, .process = process, .found = {}};
    EnumWindows(collect, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND ownWindow(const std::string& className) {
    const std::vector<HWND> found = topLevelWindows(className, GetCurrentProcessId());
    return found.empty() ? nullptr : found.front();
}

HWND windowOf(const ControlList& form) {
    return ownWindow(form.name());
}

HWND windowOf(const Control& control) {
    return GetDlgItem(windowOf(control.list()), face::controlId(control));
}

LRESULT answerOf(HWND window, UINT message, WPARAM first, LPARAM second) {
    constexpr UINT minute = 60'000;
    DWORD_PTR answer = 0;
    SendMessageTimeoutA(window, message, first, second, SMTO_NORMAL, minute, &answer);
    return static_cast<LRESULT>(answer);
}

std::string textOf(HWND window) {
    const LRESULT length = answerOf(window, WM_GETTEXTLENGTH, 0, 0);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    text.resize(
        static_cast<std::size_t>(answerOf(window, WM_GETTEXT, static_cast<WPARAM>(text.size()),
                                          reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::string withoutMarks(const std::string& text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && i + 1 < text.size()) {
            ++i;
        }
        plain += text[i];
    }
    return plain;
}

OpenBox openBox(DWORD process) {
    for (const HWND window : topLevelWindows("#32770", process)) {
        const HWND text = GetDlgItem(window, boxTextId);
        if (text != nullptr && IsWindowVisible(window) != FALSE) {
            return {
                .window = window, .caption = textOf(window), .text = singleBreaks(textOf(text))};
        }
    }
    return {};
}

std::vector<MsgBoxAnswer> OpenBox::answers() const {
    std::vector<MsgBoxAnswer> found;
    for (const MsgBoxAnswer answer :
         {MsgBoxAnswer::Ok, MsgBoxAnswer::Cancel, MsgBoxAnswer::Yes, MsgBoxAnswer::No}) {
        if (GetDlgItem(window, numberOf(answer)) != nullptr) {
            found.push_back(answer);
        }
    }
    return found;
}

bool OpenBox::press(MsgBoxAnswer answer) const {
    const HWND button = GetDlgItem(window, numberOf(answer));
    return button != nullptr && PostMessageA(button, BM_CLICK, 0, 0) != FALSE;
}

void copyText(const std::string& text) {
    const BOOL open = OpenClipboard(nullptr);
    EmptyClipboard();
    const HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    auto* const bytes = static_cast<char*>(GlobalLock(data));
    text.copy(bytes, text.size());
    bytes[text.size()] = '\0';
    GlobalUnlock(data);
    if (open == FALSE || SetClipboardData(CF_TEXT, data) == nullptr || CloseClipboard() == FALSE) {
        throw std::runtime_error("no clipboard for " + text);
    }
}

HMENU openMenu(DWORD process) {
    const std::vector<HWND> found = topLevelWindows("#32768", process);
    constexpr UINT getMenu = 0x01E1;
    return found.empty() || IsWindowVisible(found.front()) == FALSE
               ? nullptr
               : reinterpret_cast<HMENU>(answerOf(found.front(), getMenu, 0, 0));
}

} // namespace tarvik
