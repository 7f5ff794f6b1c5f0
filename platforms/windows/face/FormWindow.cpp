#include "windows/face/FormWindow.h"

#include "common/UnseenControls.h"
#include "windows/face/ControlIds.h"
#include "windows/face/TextColour.h"
#include "windows/face/WindowMessages.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tarvik::face {

namespace {

HICON programIcon(int widthMetric, int heightMetric) {
    return static_cast<HICON>(LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(programIconId),
                                         IMAGE_ICON, GetSystemMetrics(widthMetric),
                                         GetSystemMetrics(heightMetric), LR_SHARED));
}

/// Why the system wants the program to end: it may need the program's files, or memory, while the
/// user's session goes on.
UnloadMode reasonOf(LPARAM details) {
    constexpr LPARAM needed = 0x1; // older headers lack the name
    return details == needed ? UnloadMode::AppTaskManager : UnloadMode::AppWindows;
}

} // namespace

FormWindow::FormWindow(Form& form, WindowContext& context) : form_(form), context_(context) {
    makeWindow();
    for (Control* control : unseenControls(form_)) {
        makeControl(*control);
    }
    form_.attach(this);
    refreshVisibility();
}

FormWindow::~FormWindow() {
    detach();
    children_.clear();
    tips_.reset();
    SetWindowLongPtrA(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
}

void FormWindow::detach() {
    if (detached_) {
        return;
    }
    detached_ = true;
    form_.attach(nullptr);
    for (const auto& own : children_) {
        own->detach();
    }
    ShowWindow(window_, SW_HIDE);
}

const char* FormWindow::registeredClass(const Form& form) {
    WNDCLASSEXA window{};
    window.cbSize = sizeof window;
    const HINSTANCE program = GetModuleHandleA(nullptr);
    if (GetClassInfoExA(program, form.name().c_str(), &window) == FALSE) {
        window.lpfnWndProc = onMessage;
        window.cbWndExtra = DLGWINDOWEXTRA; // the system's rules for dialogs keep their state there
        window.hInstance = program;
        window.hIcon = programIcon(SM_CXICON, SM_CYICON);
        window.hIconSm = programIcon(SM_CXSMICON, SM_CYSMICON);
        window.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
        window.lpszClassName = form.name().c_str();
        RegisterClassExA(&window);
    }
    return form.name().c_str();
}

void FormWindow::makeWindow() {
    const DWORD sizes = form_.isDialog() ? WS_MAXIMIZEBOX : 0U;
    const DWORD style = form_.layout() != nullptr ? WS_OVERLAPPEDWINDOW & ~sizes : WS_POPUP;
    window_ = CreateWindowExA(WS_EX_CONTROLPARENT, registeredClass(form_),
                              context_.shown(form_.caption()).c_str(), style, CW_USEDEFAULT,
                              CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr,
                              GetModuleHandleA(nullptr), this);
    // The form has its own way to follow the resolution of a screen.
    dontScaleDialog(window_);
}

void FormWindow::makeControl(Control& control) {
    if (auto made = makeControlWindow(control, *this)) {
        children_.push_back(std::move(made));
    }
}

void FormWindow::makeContents() {
    if (font_ != nullptr) {
        return;
    }
    // Windows are made in the order of the layout, which is then that of the tab key; a label is
    // made right before the input that it names.
    for (Control* control : controlsInOrder(*form_.layout())) {
        makeControl(*control);
    }
    useFont(dotsPerInch(window_));
    groupControls();
    orderFocus();
    leastHeight_ = leastSize().height;
    collapsed_ = collapsedNodes(*form_.layout());
    // No window is smaller than its controls need.
    SetWindowPos(window_, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::followSight(bool seen) {
    for (const auto& own : children_) {
        if (own->window() != nullptr) {
            seen ? own->wake() : own->rest();
        }
    }
}

ControlWindow* FormWindow::childOf(const Control* control) const {
    const auto found = std::find_if(children_.begin(), children_.end(),
                                    [&](const auto& own) { return &own->control() == control; });
    return found == children_.end() ? nullptr : found->get();
}

void FormWindow::groupControls() {
    // Arrows lead through a group, and to whatever stands in it: without groups also to frames and
    // to boxes that only show something, where no key has an effect.
    const auto leads = [](const Control& control) {
        return control.kind() == ControlKind::CommandButton ||
               control.kind() == ControlKind::OptionButton;
    };
    const Control* before = nullptr;
    for (const auto& own : children_) {
        const Control& control = own->control();
        const bool goesOn = before != nullptr && before->kind() == control.kind() && leads(control);
        if (own->window() != nullptr && !goesOn) {
            const LONG style = GetWindowLongA(own->window(), GWL_STYLE);
            SetWindowLongA(own->window(), GWL_STYLE, style | WS_GROUP);
        }
        before = own->window() != nullptr ? &control : before;
    }
}

void FormWindow::orderFocus() {
    if (const CommandButton* button = form_.defaultButton()) {
        SendMessageA(window_, DM_SETDEFID, static_cast<WPARAM>(controlId(*button)), 0);
        SendMessageA(childOf(button)->window(), BM_SETSTYLE, BS_DEFPUSHBUTTON, FALSE);
    }
    if (const ControlWindow* first = childOf(form_.initialFocus())) {
        focusOrder_.push_back(first);
    }
}

void FormWindow::showToolTip(HWND control, const std::string& tip) {
    if (tips_ == nullptr && !tip.empty()) {
        tips_ = std::make_unique<ToolTips>(window_);
    }
    if (tips_ != nullptr) {
        tips_->set(control, tip);
    }
}

void FormWindow::refreshVisibility() {
    // A window that is shown and put aside within one turn of the program must not flash up: the
    // last word of the turn counts.
    if (form_.layout() != nullptr && !detached_ && !changePending_) {
        changePending_ = true;
        PostMessageA(window_, applyVisibilityMessage, 0, 0);
    }
}

void FormWindow::bringToFront() {
    frontWanted_ = true;
    refreshVisibility();
}

void FormWindow::applyVisibility() {
    if (!std::exchange(changePending_, false)) {
        return;
    }
    const bool front = std::exchange(frontWanted_, false);
    const bool aside = IsIconic(window_) != FALSE;
    if (!form_.visible()) {
        ShowWindow(window_, SW_HIDE);
        arrivalKnown_ = false; // whoever opens it again comes to it anew
        return;
    }
    makeContents();
    if (form_.minimised()) {
        if (!aside || IsWindowVisible(window_) == FALSE) {
            ShowWindow(window_, SW_SHOWMINNOACTIVE);
        }
        return;
    }
    followSight(true); // before its size is asked for
    if (const Control* wanted = std::exchange(focusWanted_, nullptr)) {
        moveFocusTo(*wanted);
    }
    appear(aside);
    if (front && !form_.isQuiet()) {
        SetForegroundWindow(window_);
    }
}

void FormWindow::appear(bool aside) {
    if (!form_.isQuiet()) {
        ShowWindow(window_, aside ? SW_RESTORE : SW_SHOW);
        return;
    }
    const HWND active = GetActiveWindow();
    ShowWindow(window_, aside ? SW_SHOWNOACTIVATE : SW_SHOWNA);
    if (active != nullptr && GetActiveWindow() != active) {
        SetActiveWindow(active); // not every system heeds the wish for one that was minimised
    }
    SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

LRESULT CALLBACK FormWindow::onMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTA*>(second);
        auto* created = static_cast<FormWindow*>(creation->lpCreateParams);
        created->window_ = window;
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* form = reinterpret_cast<FormWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (form == nullptr || form->detached_) {
        return DefDlgProcA(window, message, first, second);
    }
    const HandlingScope handling(form->context_);
    return form->handle(message, first, second);
}

LRESULT FormWindow::passOn(UINT message, WPARAM first, LPARAM second) {
    return DefDlgProcA(window_, message, first, second);
}

LRESULT FormWindow::handle(UINT message, WPARAM first, LPARAM second) {
    Answer answer = answerUser(message, first, second);
    answer = answer ? answer : answerSession(message, first, second);
    answer = answer ? answer : answerLooks(message, first, second);
    return answer ? *answer : passOn(message, first, second);
}

FormWindow::Answer FormWindow::answerUser(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
    case WM_COMMAND:
        onCommand(LOWORD(first), HIWORD(first));
        return 0;
    case WM_NOTIFY:
        return onNews(second);
    case WM_TIMER:
        onTimer(static_cast<int>(first));
        return 0;
    case WM_SYSCOMMAND:
        return onSystemCommand(first, second);
    case WM_CLOSE:
        onClose();
        return 0;
    case WM_ACTIVATE:
        onActivation(first);
        return 0;
    case WM_SETFOCUS:
        giveFocus();
        return 0;
    case WM_NEXTDLGCTL:
        onNextControl(first, LOWORD(second) != FALSE);
        return 0;
    default:
        return std::nullopt;
    }
}

FormWindow::Answer FormWindow::answerSession(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
    case WM_QUERYENDSESSION:
        form_.Pause.raise();
        return TRUE;
    case WM_POWERBROADCAST:
        if (first == PBT_APMSUSPEND) {
            form_.Pause.raise();
        }
        return TRUE;
    case WM_ENDSESSION:
        // The process may be gone when this returns: everything is saved within it.
        if (first != FALSE) {
            context_.end(reasonOf(second));
        }
        return 0;
    default:
        return std::nullopt;
    }
}

FormWindow::Answer FormWindow::answerLooks(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
    case WM_SHOWWINDOW:
        followSight(first != FALSE && IsIconic(window_) == FALSE);
        return std::nullopt;
    case WM_SIZE:
        onSize(first);
        return 0;
    case WM_GETMINMAXINFO:
        onSmallestSize(*reinterpret_cast<MINMAXINFO*>(second));
        return 0;
    case WM_CTLCOLORSTATIC:
        return onColour(reinterpret_cast<HDC>(first), reinterpret_cast<HWND>(second));
    case WM_SETCURSOR:
        return onCursor() ? Answer(TRUE) : std::nullopt;
    case resolutionChangedMessage:
        onResolution(LOWORD(first), *reinterpret_cast<const RECT*>(second));
        return 0;
    case WM_SETTINGCHANGE:
    case WM_THEMECHANGED:
        if (font_ != nullptr) {
            // Not every system can be asked for the resolution of a window again.
            useFont(dotsPerInch_);
            layOut();
        }
        return std::nullopt;
    case WM_SYSCOLORCHANGE:
        RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        return std::nullopt;
    case applyVisibilityMessage:
        applyVisibility();
        return 0;
    case layOutMessage:
        layOut();
        return 0;
    default:
        return std::nullopt;
    }
}

void FormWindow::onCommand(int id, int notification) {
    if (id == IDOK || id == IDCANCEL) {
        // Enter and Escape, wherever the focus is.
        const CommandButton* button = id == IDOK ? form_.defaultButton() : form_.cancelButton();
        if (ControlWindow* own = childOf(button)) {
            own->onNotification(BN_CLICKED);
        } else if (id == IDCANCEL && form_.escapeCloses()) {
            SendMessageA(window_, WM_SYSCOMMAND, SC_CLOSE, 0); // as the close box does
        }
    } else if (ControlWindow* own = childOf(controlWithId(form_, id))) {
        own->onNotification(notification);
    }
}

LRESULT FormWindow::onNews(LPARAM record) {
    // A record may stand at any address: the one of a key in a list has its fields without gaps.
    NMHDR news{};
    std::memcpy(&news, reinterpret_cast<const void*>(record), sizeof news);
    ControlWindow* const own = childOf(controlWithId(form_, static_cast<int>(news.idFrom)));
    return own == nullptr ? 0 : own->onNews(news.code, record);
}

LRESULT FormWindow::onSystemCommand(WPARAM command, LPARAM place) {
    constexpr WPARAM withoutDetails = 0xFFF0;
    const bool closes = (command & withoutDetails) == SC_CLOSE;
    const bool nested = std::exchange(closedByUser_, closedByUser_ || closes);
    const LRESULT result = passOn(WM_SYSCOMMAND, command, place);
    closedByUser_ = nested;
    return result;
}

void FormWindow::onClose() {
    // The first request after the user's command is the user's; whatever comes while that is
    // answered is not.
    if (!std::exchange(closedByUser_, false)) {
        // Nobody but the list of tasks closes a window past its system menu, and it kills a program
        // that does not end.
        context_.end(UnloadMode::AppTaskManager);
    } else if (context_.takesInput()) {
        const AskingScope asking(context_, &form_);
        form_.unload(UnloadMode::FormControlMenu);
    }
}

void FormWindow::onTimer(int id) {
    if (ControlWindow* own = childOf(controlWithId(form_, id))) {
        own->onTimer();
    }
}

void FormWindow::onSize(WPARAM how) {
    if (how == SIZE_MINIMIZED) {
        followSight(false);
        form_.setMinimised(true);
        return;
    }
    if (IsWindowVisible(window_) != FALSE) {
        followSight(true);
    }
    placeControls();
    // What the program asked for and is not done yet counts for more than what the window tells.
    if (form_.minimised() && !changePending_ && IsWindowVisible(window_) != FALSE) {
        form_.setMinimised(false);
    }
}

LRESULT FormWindow::onColour(HDC context, HWND control) const {
    const auto found = std::find_if(children_.begin(), children_.end(),
                                    [&](const auto& own) { return own->window() == control; });
    const COLORREF ground = GetSysColor(COLOR_3DFACE);
    SetTextColor(context, found == children_.end()
                              ? GetSysColor(COLOR_WINDOWTEXT)
                              : textColour((*found)->textColour(), ground, strongContrast()));
    // Read-only boxes look like the window: they do not invite typing.
    SetBkColor(context, ground);
    return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_3DFACE));
}

bool FormWindow::onCursor() const {
    if (context_.blocking) {
        SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_WAIT)));
    }
    return context_.blocking;
}

} // namespace tarvik::face
