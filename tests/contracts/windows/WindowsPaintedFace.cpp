#include "contracts/painted/PaintedFace.h"

#include "support/MemorySheet.h"
#include "support/Win32Windows.h"

namespace tarvik {

namespace {

SIZE sizeOf(const Control& control) {
    RECT area{};
    GetClientRect(windowOf(control), &area);
    return {area.right, area.bottom};
}

} // namespace

Pixels pixelsOf(const Chart& chart) {
    const SIZE size = sizeOf(chart);
    const MemorySheet sheet(size.cx, size.cy);
    SendMessageA(windowOf(chart), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(sheet.context()),
                 PRF_CLIENT);
    return sheet.pixels();
}

void movePointer(const Chart& chart, int x) {
    SendMessageA(windowOf(chart), WM_MOUSEMOVE, 0, MAKELPARAM(x, sizeOf(chart).cy / 2));
}

void takePointerAway(const Chart& chart) {
    SendMessageA(windowOf(chart), WM_MOUSELEAVE, 0, 0);
}

void giveFocus(const Control& control) {
    SendMessageA(windowOf(control.list()), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS),
                 0);
    SetFocus(windowOf(control));
}

void enlarge(const Form& form, int width, int height) {
    const HWND window = windowOf(form);
    RECT outer{};
    GetWindowRect(window, &outer);
    SetWindowPos(window, nullptr, 0, 0, outer.right - outer.left + width,
                 outer.bottom - outer.top + height, SWP_NOMOVE | SWP_NOZORDER);
}

bool isActive(const Form& form) {
    return GetActiveWindow() == windowOf(form);
}

bool clickDuringCall(const Control& button) {
    const HWND window = windowOf(button);
    const DWORD user = GetWindowThreadProcessId(window, nullptr);
    PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    PostMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    PostMessageA(window, WM_KEYDOWN, VK_SPACE, 1);
    PostMessageA(window, WM_KEYUP, VK_SPACE, 1);
    AttachThreadInput(GetCurrentThreadId(), user, TRUE);
    const LRESULT waits =
        SendMessageA(windowOf(button.list()), WM_SETCURSOR, 0, MAKELPARAM(HTCLIENT, 0));
    AttachThreadInput(GetCurrentThreadId(), user, FALSE);
    return waits == TRUE;
}

std::string ownerOfOpenBox() {
    const HWND owner = GetWindow(openBox(GetCurrentProcessId()).window, GW_OWNER);
    return owner == nullptr ? "" : classOf(owner);
}

bool openBoxFitsTheScreen() {
    RECT place{};
    GetWindowRect(openBox(GetCurrentProcessId()).window, &place);
    return place.left >= 0 && place.top >= 0 && place.right <= GetSystemMetrics(SM_CXSCREEN) &&
           place.bottom <= GetSystemMetrics(SM_CYSCREEN);
}

} // namespace tarvik
