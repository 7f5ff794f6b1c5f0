#include "windows/face/ControlWindow.h"

#include "windows/face/ControlIds.h"

#include <commctrl.h>

#include <algorithm>
#include <map>

namespace tarvik::face {

namespace {
constexpr UINT_PTR focusWatch = 1; // beside the subclasses of the kinds
}

ControlWindow::ControlWindow(Control& control, ControlSite& site, HWND window)
    : ControlPeer(control, site.context()), site_(site), window_(window) {
    if (window_ != nullptr) {
        refreshShared(Property::Enabled);
        refreshShared(Property::ToolTip);
        refreshShared(Property::AccessibleName);
        SetWindowSubclass(window_, onMessage, focusWatch, reinterpret_cast<DWORD_PTR>(this));
    }
}

ControlWindow::~ControlWindow() {
    detach(); // before the window, which tells of its end
    if (window_ != nullptr) {
        RemoveWindowSubclass(window_, onMessage, focusWatch);
        site_.context().accessibleNames.clear(window_);
        DestroyWindow(window_);
    }
}

LRESULT CALLBACK ControlWindow::onMessage(HWND window, UINT message, WPARAM first, LPARAM second,
                                          UINT_PTR, DWORD_PTR own) {
    if (message != WM_SETFOCUS) {
        return DefSubclassProc(window, message, first, second);
    }
    auto& control = *reinterpret_cast<ControlWindow*>(own);
    const HandlingScope handling(control.site().context());
    const LRESULT result = DefSubclassProc(window, message, first, second);
    if (control.site().tookFocus(control)) {
        control.onArrival();
    }
    return result;
}

std::uint32_t ControlWindow::handle() const {
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window_));
}

bool ControlWindow::refreshShared(Property changed) {
    if (window_ == nullptr) {
        return false;
    }
    switch (changed) {
    case Property::Enabled:
        EnableWindow(window_, control().enabled() ? TRUE : FALSE);
        site_.focusMayMove();
        return true;
    case Property::Visible:
        ShowWindow(window_, control().visible() ? SW_SHOWNA : SW_HIDE);
        site_.layOutAgain();
        return true;
    case Property::ToolTip:
        site_.showToolTip(window_, shown(control().toolTip()));
        return true;
    case Property::AccessibleName:
        site_.context().accessibleNames.set(window_, shown(control().accessibleName()));
        return true;
    default:
        return false;
    }
}

std::string ControlWindow::windowText() const {
    const int length = GetWindowTextLengthA(window_);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(window_, text.data(), length + 1)));
    return text;
}

void ControlWindow::setWindowText(const std::string& text) {
    SetWindowTextA(window_, text.c_str());
}

int widestText(const FaceFont& font, const std::string& text,
               const std::vector<std::string>& others) {
    int widest = font.textWidth(text);
    for (const std::string& other : others) {
        widest = std::max(widest, font.textWidth(other));
    }
    return widest;
}

HWND makeChild(const Control& control, const ControlSite& site, const char* className,
               const std::string& text, DWORD style, DWORD extendedStyle) {
    const DWORD shown = control.visible() ? WS_VISIBLE : 0U;
    const auto id = static_cast<std::intptr_t>(controlId(control));
    return CreateWindowExA(extendedStyle, className, text.c_str(), WS_CHILD | shown | style, 0, 0,
                           0, 0, site.window(), reinterpret_cast<HMENU>(id),
                           GetModuleHandleA(nullptr), nullptr);
}

const char* registerClass(const char* name, WNDPROC onMessage, UINT style) {
    WNDCLASSA window{};
    window.style = style;
    window.lpfnWndProc = onMessage;
    window.hInstance = GetModuleHandleA(nullptr);
    window.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    window.lpszClassName = name;
    RegisterClassA(&window);
    return name;
}

std::unique_ptr<ControlWindow> makeControlWindow(Control& control, ControlSite& site) {
    using Maker = std::unique_ptr<ControlWindow> (*)(Control&, ControlSite&);
    static const std::map<ControlKind, Maker> makers{
        {ControlKind::OptionButton, makeOptionButton},
        {ControlKind::ListView, makeListView},
        {ControlKind::Chart, makeChart},
        {ControlKind::ProgressBar, makeProgressBar},
        {ControlKind::Label, makeLabel},
        {ControlKind::TextBox, makeTextBox},
        {ControlKind::CheckBox, makeCheckBox},
        {ControlKind::CommandButton, makeCommandButton},
        {ControlKind::ComboBox, makeComboBox},
        {ControlKind::Frame, makeFrame},
        {ControlKind::Picture, makePicture},
        {ControlKind::Timer, makeTimer},
    };
    const auto maker = makers.find(control.kind());
    return maker == makers.end() ? nullptr : maker->second(control, site);
}

} // namespace tarvik::face
