#include "windows/face/WindowsDesktop.h"

#include "common/ClosingAnswer.h"
#include "common/FaceCaption.h"
#include "common/FittingText.h"
#include "windows/face/BoxText.h"
#include "windows/face/FaceFont.h"

#include <commctrl.h>

#include <algorithm>
#include <exception>
#include <string_view>
#include <thread>
#include <utility>

namespace tarvik::face {

namespace {

/// Signals the end of a call on another thread.
class Signal {
public:
    Signal() : event_(CreateEventA(nullptr, TRUE, FALSE, nullptr)) {}
    ~Signal() { CloseHandle(event_); }
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    void set() { SetEvent(event_); }
    /// Waits for the signal or for messages; true for the signal.
    bool waitOrMessages() const {
        return MsgWaitForMultipleObjects(1, &event_, FALSE, INFINITE, QS_ALLINPUT) == WAIT_OBJECT_0;
    }

private:
    HANDLE event_;
};

bool isInput(UINT message) {
    constexpr UINT lastOutsideMouse = 0x00AD; // the last one of the second extra button
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
           (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
           (message >= WM_NCMOUSEMOVE && message <= lastOutsideMouse);
}

BoxRoom roomForBox() {
    const FaceFont font(dotsPerInch(nullptr));
    // A line of one long word may take the height of two.
    return boxRoom(GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN),
                   font.textWidth("W"), 2 * font.lineHeight());
}

/// Closes a box or dialog of this thread as if it had been closed by the user.
BOOL CALLBACK closeBox(HWND window, LPARAM) {
    char className[16] = {};
    GetClassNameA(window, className, sizeof className);
    if (std::string_view(className) == "#32770") {
        // A file dialog has a window of its own that it ends with; a question of Yes and No knows
        // no Cancel.
        PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
        EndDialog(window, 0);
    }
    return TRUE;
}

} // namespace

WindowsDesktop::WindowsDesktop(const CodePage& codePage) : context_(codePage) {
    InitCommonControls();
    context_.end = [this](UnloadMode why) { end(why); };
}

WindowsDesktop::~WindowsDesktop() = default;

void WindowsDesktop::realise(Form& form) {
    if (!context_.ending) {
        windows_.push_back(std::make_unique<FormWindow>(form, context_));
    }
}

void WindowsDesktop::withdraw(Form& form) {
    const auto found = std::find_if(windows_.begin(), windows_.end(),
                                    [&](const auto& window) { return &window->form() == &form; });
    if (found == windows_.end()) {
        return;
    }
    (*found)->detach();
    withdrawn_.push_back(std::move(*found));
    windows_.erase(found);
    bury();
}

void WindowsDesktop::bury() {
    if (context_.depth == 0) {
        withdrawn_.clear();
    }
}

FormWindow* WindowsDesktop::windowOf(const Form& form) const {
    const auto found = std::find_if(windows_.begin(), windows_.end(),
                                    [&](const auto& window) { return &window->form() == &form; });
    return found == windows_.end() ? nullptr : found->get();
}

void WindowsDesktop::applyVisibility() {
    // Whoever waits for an answer lets time pass: a window that is put aside only then would take
    // the box along, and one that is shown only then would cover it.
    std::vector<Form*> realised;
    for (const auto& own : windows_) {
        realised.push_back(&own->form());
    }
    for (const Form* form : realised) {
        if (FormWindow* const window = windowOf(*form)) {
            window->applyVisibility();
        }
    }
}

HWND WindowsDesktop::seenWindow(const ControlList* form) const {
    const auto found = std::find_if(windows_.begin(), windows_.end(), [&](const auto& own) {
        return (form == nullptr || &own->form() == form) &&
               IsWindowVisible(own->window()) != FALSE && IsIconic(own->window()) == FALSE;
    });
    return found == windows_.end() ? nullptr : (*found)->window();
}

HWND WindowsDesktop::boxOwner() const {
    for (const ControlList* form : {context_.asking, context_.active}) {
        const HWND window = form == nullptr ? nullptr : seenWindow(form);
        if (window != nullptr) {
            return window;
        }
    }
    return seenWindow(nullptr);
}

MsgBoxAnswer WindowsDesktop::messageBox(const MsgBoxRequest& request) {
    if (context_.ending) {
        OutputDebugStringA(boxText(context_.shown(request.text)).c_str());
        return closingAnswer(request.buttons);
    }
    const BusyScope busy(context_);
    applyVisibility();
    return showBox(boxOwner(), request);
}

MsgBoxAnswer WindowsDesktop::askInDialog(HWND owner, const MsgBoxRequest& request) {
    MsgBoxAnswer answer = closingAnswer(request.buttons);
    runDialog([&] { answer = showBox(owner, request); });
    return answer;
}

MsgBoxAnswer WindowsDesktop::showBox(HWND owner, const MsgBoxRequest& request) {
    const std::string text =
        boxText(fittingText(context_.shown(request.text), roomForBox(), context_.codePage));
    // Without a window to stand before, a box would be lost behind those of other programs.
    const UINT place = owner == nullptr ? MB_TASKMODAL | MB_SETFOREGROUND : MB_APPLMODAL;
    const int pressed = MessageBoxA(owner, text.c_str(), context_.shown(request.caption).c_str(),
                                    boxFlags(request) | place);
    return answerOf(pressed, request.buttons);
}

void WindowsDesktop::runDialog(const std::function<void()>& call) {
    if (!context_.ending) {
        const DialogScope open(context_);
        applyVisibility();
        call();
    }
}

void WindowsDesktop::popUpMenu(Menu& menu, Form& owner) {
    const FormWindow* const window = windowOf(owner);
    if (window == nullptr) {
        return;
    }
    const HMENU popUp = CreatePopupMenu();
    for (const int number : menu.order()) {
        const Menu::Entry& entry = menu.entry(number);
        const UINT state = entry.isSeparator() ? MF_SEPARATOR
                           : entry.enabled     ? MF_STRING
                                               : MF_STRING | MF_GRAYED;
        // Numbers begin at 1: 0 is the answer of a menu that was closed.
        AppendMenuA(popUp, state, static_cast<UINT_PTR>(number) + 1,
                    context_.shown(markedCaption(entry.caption, 0)).c_str());
    }
    POINT pointer{};
    GetCursorPos(&pointer);
    const int chosen =
        static_cast<int>(TrackPopupMenu(popUp, TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON,
                                        pointer.x, pointer.y, 0, window->window(), nullptr));
    DestroyMenu(popUp);
    // Without this the next menu of the same window would close as soon as it is opened.
    PostMessageA(window->window(), WM_NULL, 0, 0);
    if (chosen > 0) {
        menu.choose(chosen - 1);
    }
}

void WindowsDesktop::beep() {
    MessageBeep(MB_OK);
}

void WindowsDesktop::handle(MSG& message) {
    // Only the number of the window is kept: handling the message may change the list.
    const HWND top = message.hwnd == nullptr ? nullptr : GetAncestor(message.hwnd, GA_ROOT);
    const bool ours = std::any_of(windows_.begin(), windows_.end(),
                                  [&](const auto& own) { return own->window() == top; });
    if (!ours || IsDialogMessageA(top, &message) == FALSE) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    bury();
}

void WindowsDesktop::processEvents() {
    MSG message{};
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        if (message.message == WM_QUIT) {
            quit();
            return;
        }
        handle(message);
    }
    bury(); // also what no message has followed
}

void WindowsDesktop::paintOnly() {
    MSG message{};
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        // Presses made while nothing can answer them must not be answered later.
        if (!isInput(message.message)) {
            DispatchMessageA(&message);
        }
    }
}

void WindowsDesktop::runBlocking(const std::function<void()>& call) {
    const BusyScope busy(context_);
    const HCURSOR before = SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_WAIT)));
    context_.blocking = true;
    Signal ended;
    std::exception_ptr failure;
    std::thread worker([&] {
        try {
            call();
        } catch (...) {
            failure = std::current_exception();
        }
        ended.set();
    });
    while (!ended.waitOrMessages()) {
        paintOnly();
    }
    paintOnly(); // what came last is dropped as well
    worker.join();
    context_.blocking = false;
    SetCursor(before);
    if (failure) {
        std::rethrow_exception(failure);
    }
}

void WindowsDesktop::run() {
    quit_ = false;
    MSG message{};
    while (!windows_.empty() && !quit_ && !context_.ending &&
           GetMessageA(&message, nullptr, 0, 0) > 0) {
        handle(message);
    }
}

void WindowsDesktop::quit() {
    quit_ = true;
    PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);
}

void WindowsDesktop::end(UnloadMode why) {
    if (context_.ending) {
        return;
    }
    context_.ending = true;
    std::vector<Form*> realised;
    for (const auto& own : windows_) {
        realised.push_back(&own->form());
    }
    for (Form* form : realised) {
        // Unloading one form may have unloaded others.
        if (windowOf(*form) != nullptr) {
            form->unload(why);
        }
    }
    EnumThreadWindows(GetCurrentThreadId(), closeBox, 0);
    quit();
}

} // namespace tarvik::face
