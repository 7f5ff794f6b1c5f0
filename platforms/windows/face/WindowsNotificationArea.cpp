#include "windows/face/WindowsNotificationArea.h"

#include "common/TrayLamp.h"
#include "common/VisibleDirections.h"
#include "windows/face/BoxText.h"
#include "windows/face/DrawingRaster.h"

#include <shellapi.h>

#include <algorithm>
#include <cstddef>

namespace tarvik::face {

namespace {

using Record = tarvik::NOTIFYICONDATAA;

// The program's record is the system's, as far as the oldest two forms reach.
static_assert(offsetof(::NOTIFYICONDATAA, guidItem) == Record::size);
constexpr std::size_t oldestTip = 64;
static_assert(offsetof(::NOTIFYICONDATAA, szTip) + oldestTip == Record::oldestSize);
static_assert(offsetof(::NOTIFYICONDATAA, szInfo) == offsetof(Record, szInfo));
static_assert(offsetof(::NOTIFYICONDATAA, dwInfoFlags) == offsetof(Record, dwInfoFlags));

bool tell(DWORD request, Record& record) {
    return ::Shell_NotifyIconA(request, reinterpret_cast<::NOTIFYICONDATAA*>(&record)) != FALSE;
}

/// As much of the text as there is room for with its end; a line end that does not fit whole is
/// left out.
void put(const std::string& text, char* field, std::size_t room) {
    std::size_t length = std::min(text.size(), room - 1);
    if (length < text.size() && text[length - 1] == '\r') {
        --length;
    }
    field[text.copy(field, length)] = '\0';
}

UINT taskBarCreated() {
    static const UINT message = RegisterWindowMessageA("TaskbarCreated");
    return message;
}

} // namespace

WindowsNotificationArea::~WindowsNotificationArea() {
    if (watcher_ != nullptr) {
        DestroyWindow(watcher_);
    }
    for (const HICON made : icons_) {
        if (made != nullptr) {
            DestroyIcon(made);
        }
    }
}

HICON WindowsNotificationArea::iconOf(std::uint32_t which) {
    const std::size_t place = which < icons_.size() ? which : 0;
    HICON& made = icons_[place];
    if (made == nullptr) {
        const LampState lamp = lampOf(static_cast<TrayIcon>(place));
        made = makeIcon(statusLamp(lamp), GetSystemMetrics(SM_CXSMICON));
    }
    return made;
}

/// Names from outside stand in the texts.
void WindowsNotificationArea::tellTurns(Record& record) const {
    const auto shown = [this](const char* text) { return withVisibleDirections(text, codePage_); };
    if ((record.uFlags & tip) != 0) {
        const std::size_t room = record.cbSize < Record::size ? oldestTip : sizeof record.szTip;
        put(shown(record.szTip), record.szTip, room);
    }
    if ((record.uFlags & info) != 0) {
        put(boxText(shown(record.szInfo)), record.szInfo, sizeof record.szInfo);
        put(shown(record.szInfoTitle), record.szInfoTitle, sizeof record.szInfoTitle);
    }
}

bool WindowsNotificationArea::Shell_NotifyIconA(std::uint32_t request, Record* data) {
    Record record = *data;
    record.hIcon =
        static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(iconOf(data->hIcon)));
    tellTurns(record);
    const bool done = tell(request, record);
    if (request == remove) {
        shown_.reset();
    } else if (request == add || (request == modify && shown_ && (data->uFlags & tip) != 0)) {
        // The wish is kept even when there is no task bar yet.
        shown_ = record;
        watchTaskBar();
    }
    return done;
}

void WindowsNotificationArea::watchTaskBar() {
    if (watcher_ != nullptr) {
        return;
    }
    WNDCLASSA window{};
    window.lpfnWndProc = onMessage;
    window.hInstance = GetModuleHandleA(nullptr);
    window.lpszClassName = "TarvikTaskBarWatcher";
    RegisterClassA(&window);
    // The news goes to windows of the desktop only, not to those that take nothing but messages.
    watcher_ = CreateWindowExA(WS_EX_TOOLWINDOW, window.lpszClassName, "", WS_POPUP, 0, 0, 0, 0,
                               nullptr, nullptr, window.hInstance, nullptr);
    SetWindowLongPtrA(watcher_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

LRESULT CALLBACK WindowsNotificationArea::onMessage(HWND window, UINT message, WPARAM first,
                                                    LPARAM second) {
    auto* area =
        reinterpret_cast<WindowsNotificationArea*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (area != nullptr && message == taskBarCreated()) {
        area->addAgain();
        return 0;
    }
    return DefWindowProcA(window, message, first, second);
}

void WindowsNotificationArea::addAgain() {
    if (shown_) {
        Record record = *shown_;
        if (tell(add, record) && record.cbSize == Record::size) {
            tell(setVersion, record);
        }
    }
}

bool WindowsNotificationArea::SetForegroundWindow(std::uint32_t window) {
    return ::SetForegroundWindow(reinterpret_cast<HWND>(std::uintptr_t{window})) != FALSE;
}

std::uint32_t WindowsNotificationArea::GetVersion() {
    return ::GetVersion();
}

} // namespace tarvik::face
