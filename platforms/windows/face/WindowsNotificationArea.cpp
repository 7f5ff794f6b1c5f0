#include "windows/face/WindowsNotificationArea.h"

#include "common/HiddenCharacters.h"
#include "common/TrayLamp.h"
#include "windows/face/BoxText.h"
#include "windows/face/DrawingRaster.h"
#include "windows/face/WindowMessages.h"

#include <shellapi.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tarvik::face {

namespace {

using Record = tarvik::NOTIFYICONDATAA;

// The program's record is the system's, as far as the oldest two forms reach.
static_assert(offsetof(::NOTIFYICONDATAA, guidItem) == Record::size);
constexpr std::size_t oldestTip = 64;
static_assert(offsetof(::NOTIFYICONDATAA, szTip) + oldestTip == Record::oldestSize);
static_assert(offsetof(::NOTIFYICONDATAA, szInfo) == offsetof(Record, szInfo));
static_assert(offsetof(::NOTIFYICONDATAA, dwInfoFlags) == offsetof(Record, dwInfoFlags));

/// Who hears the icon's messages.
HWND windowOf(const Record& record) {
    return reinterpret_cast<HWND>(std::uintptr_t{record.hWnd});
}

bool tellTaskBar(DWORD request, Record& record) {
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

/// The window that the system sends each request to, and waits for; null when there is no task bar.
HWND taskBar() {
    return FindWindowA("Shell_TrayWnd", nullptr);
}

constexpr UINT taskBarAnswered = WM_APP;
static_assert(taskBarAnswered != noteNewsMessage);

/// How long a note is asked to be shown, in milliseconds: the longest that the oldest task bars
/// take.
constexpr std::uint32_t noteTime = 30'000;

UINT taskBarCreated() {
    static const UINT message = RegisterWindowMessageA("TaskbarCreated");
    return message;
}

} // namespace

WindowsNotificationArea::~WindowsNotificationArea() {
    if (shown_) {
        RemovePropA(windowOf(*shown_), noteListenerProperty);
    }
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
        made =
            makeIcon(trayDrawing(static_cast<std::uint32_t>(place)), GetSystemMetrics(SM_CXSMICON));
    }
    return made;
}

/// Names from outside stand in the texts.
void WindowsNotificationArea::tellHidden(Record& record) const {
    const auto shown = [this](const char* text) { return withHiddenTold(text, codePage_); };
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
    tellHidden(record);
    const bool done = tellOrKeep(request, record);
    if (request == remove || (done && (data->uFlags & info) != 0)) {
        answered_ = {};
    }
    if (request == remove) {
        RemovePropA(windowOf(record), noteListenerProperty);
        shown_.reset();
    } else if (request == add || (request == modify && shown_ && (data->uFlags & tip) != 0)) {
        // The wish is kept even when there is no task bar yet.
        shown_ = record;
        watchTaskBar();
    }
    return done;
}

Record WindowsNotificationArea::recordOf(const DesktopNote& note) const {
    const auto shown = [this](const std::string& text) { return withHiddenTold(text, codePage_); };
    const bool isWarning = note.urgency == DesktopNote::Urgency::Critical;
    Record record{};
    record.cbSize = Record::size;
    record.hWnd = shown_->hWnd;
    record.uID = shown_->uID;
    record.uFlags = info;
    record.uTimeoutOrVersion = noteTime;
    record.dwInfoFlags = (isWarning ? NIIF_WARNING : NIIF_INFO) | NIIF_RESPECT_QUIET_TIME;
    // Without a text the task bar would take the last note away.
    put(note.text.empty() ? " " : boxText(shown(note.text)), record.szInfo, sizeof record.szInfo);
    put(shown(note.title), record.szInfoTitle, sizeof record.szInfoTitle);
    return record;
}

/// The task bar tells the icon's picture of the note.
bool WindowsNotificationArea::tell(const DesktopNote& note, std::function<void(int)> answered) {
    if (!shown_ || shown_->cbSize != Record::size) {
        return false;
    }
    Record record = recordOf(note);
    if (!tellOrKeep(modify, record)) {
        return false;
    }
    answered_ = std::move(answered);
    noteSeen_ = false;
    SetPropA(windowOf(record), noteListenerProperty, watcher_);
    return true;
}

/// A note that is taken away for the next one may be told of after that was asked for.
void WindowsNotificationArea::hearOfNote(UINT news) {
    if (news == NIN_BALLOONSHOW) {
        noteSeen_ = true;
    } else if (news == NIN_BALLOONUSERCLICK) {
        if (const auto answered = std::exchange(answered_, {})) {
            answered(noteClicked);
        }
    } else if (noteSeen_) {
        answered_ = {};
    }
}

/// True for what the task bar did, or will have done as soon as it answers.
bool WindowsNotificationArea::tellOrKeep(std::uint32_t request, Record& record) {
    if (answers()) {
        const bool done = tellTaskBar(request, record);
        there_ = request == add ? done || there_ : request != remove && there_;
        return done;
    }
    if (request == remove) {
        gone_ = there_ ? std::optional(record) : std::nullopt;
        return std::exchange(there_, false);
    }
    return there_ && request == modify && (record.uFlags & tip) != 0;
}

/// Whether the task bar takes part. One that hangs would hold up the window with each request: it
/// is waited for once, and then only told when it has answered.
bool WindowsNotificationArea::answers() {
    const HWND bar = taskBar();
    if (bar == nullptr || bar == silent_) {
        return bar == nullptr;
    }
    DWORD_PTR nothing = 0;
    if (SendMessageTimeoutA(bar, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, patience_, &nothing) != 0 ||
        IsWindow(bar) == FALSE) {
        return true;
    }
    watchTaskBar();
    const BOOL asked =
        SendMessageCallbackA(bar, WM_NULL, 0, 0, onAnswer, reinterpret_cast<ULONG_PTR>(watcher_));
    silent_ = asked != FALSE ? bar : nullptr;
    return false;
}

/// The watcher may be gone by then.
void CALLBACK WindowsNotificationArea::onAnswer(HWND, UINT, ULONG_PTR watcher, LRESULT) {
    PostMessageA(reinterpret_cast<HWND>(watcher), taskBarAnswered, 0, 0);
}

void WindowsNotificationArea::catchUp() {
    silent_ = nullptr;
    if (!answers()) {
        return;
    }
    if (gone_ && !shown_) {
        tellTaskBar(remove, *gone_);
    }
    there_ = there_ || (gone_ && shown_);
    gone_.reset();
    if (there_ && shown_) {
        Record record = *shown_;
        there_ = tellTaskBar(modify, record);
    }
    if (!there_) {
        addAgain();
    }
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
        // A new one knows nothing of the icon.
        area->there_ = false;
        area->gone_.reset();
        area->answered_ = {};
        area->catchUp();
        return 0;
    }
    if (area != nullptr && message == noteNewsMessage) {
        area->hearOfNote(static_cast<UINT>(first));
        return 0;
    }
    if (area != nullptr && message == taskBarAnswered) {
        area->catchUp();
        return 0;
    }
    return DefWindowProcA(window, message, first, second);
}

void WindowsNotificationArea::addAgain() {
    if (shown_) {
        Record record = *shown_;
        there_ = tellTaskBar(add, record);
        if (there_ && record.cbSize == Record::size) {
            tellTaskBar(setVersion, record);
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
