#include "contracts/painted/PaintedFace.h"

#include "../../unit_windows/SystemColours.h"
#include "support/MemorySheet.h"
#include "support/Win32Windows.h"

namespace tarvik {

namespace {

SIZE innerSizeOf(const Control& control) {
    RECT area{};
    GetClientRect(windowOf(control), &area);
    return {area.right, area.bottom};
}

} // namespace

Pixels pixelsOf(const Chart& chart) {
    const SIZE size = innerSizeOf(chart);
    const MemorySheet sheet(size.cx, size.cy);
    SendMessageA(windowOf(chart), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(sheet.context()),
                 PRF_CLIENT);
    return sheet.pixels();
}

Pixels pixelsOf(const Control& control) {
    const HWND window = windowOf(control);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    const SIZE size = innerSizeOf(control);
    const MemorySheet sheet(size.cx, size.cy);
    const HDC context = GetDC(window);
    BitBlt(sheet.context(), 0, 0, size.cx, size.cy, context, 0, 0, SRCCOPY);
    ReleaseDC(window, context);
    return sheet.pixels();
}

void movePointer(const Chart& chart, int x) {
    SendMessageA(windowOf(chart), WM_MOUSEMOVE, 0, MAKELPARAM(x, innerSizeOf(chart).cy / 2));
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

std::shared_ptr<void> otherWindow(const Form& form) {
    const HWND own = windowOf(form);
    const HWND other = CreateWindowExA(0, "STATIC", "other", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                       100, 100, nullptr, nullptr, nullptr, nullptr);
    SetActiveWindow(other);
    SetFocus(other);
    return {other, [own](HWND shown) {
                SetActiveWindow(own);
                DestroyWindow(shown);
            }};
}

std::array<int, 2> sizeOf(const Form& form) {
    RECT outer{};
    GetWindowRect(windowOf(form), &outer);
    return {static_cast<int>(outer.right - outer.left), static_cast<int>(outer.bottom - outer.top)};
}

std::vector<int> resolutions() {
    return {96, 144};
}

void moveToResolution(const Form& form, int dotsPerInch) {
    constexpr UINT resolutionChanged = 0x02E0;
    constexpr int usual = 96;
    const RECT place{.left = 0, .top = 0, .right = 200, .bottom = 100};
    if (dotsPerInch != usual) {
        SendMessageA(windowOf(form), resolutionChanged, MAKEWPARAM(dotsPerInch, dotsPerInch),
                     reinterpret_cast<LPARAM>(&place));
    }
}

bool showsWholeText(const TextBox& field) {
    constexpr int lastLetter = 8;
    const HWND edit = windowOf(field);
    const LRESULT last = SendMessageA(edit, EM_POSFROMCHAR, field.text().size() - 1, 0);
    return static_cast<int>(LOWORD(last)) + lastLetter < innerSizeOf(field).cx;
}

int paintedLines(const Label& label) {
    return linesIn(pixelsOf(label));
}

std::shared_ptr<void> otherColours(const Form& form, const Colour& ground, const Colour& text) {
    const auto systems = [](const Colour& one) { return RGB(one.red, one.green, one.blue); };
    auto colours = std::make_shared<SystemColours>(systems(ground), systems(text));
    SendMessageA(windowOf(form), WM_SYSCOLORCHANGE, 0, 0);
    return colours;
}

std::shared_ptr<void> otherGround(const Colour& ground) {
    return std::make_shared<GroundColour>(RGB(ground.red, ground.green, ground.blue));
}

std::function<bool()> presenceOf(const Control& control) {
    return [window = windowOf(control)] { return IsWindow(window) != FALSE; };
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
