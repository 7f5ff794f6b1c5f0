#include "Win32Eyes.h"

#include "support/MemorySheet.h"
#include "support/Win32Windows.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tarvik::scenarios {

namespace {

/// A window of the program that a person sees; its boxes are none.
bool isSeen(HWND window) {
    return window != nullptr && IsWindowVisible(window) != FALSE && IsIconic(window) == FALSE &&
           classOf(window).starts_with("frm");
}

BOOL CALLBACK collect(HWND window, LPARAM list) {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

std::vector<HWND> seenWindows() {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), collect, reinterpret_cast<LPARAM>(&windows));
    std::erase_if(windows, [](HWND window) { return !isSeen(window); });
    return windows;
}

/// The controls of a window that are seen.
std::vector<HWND> seenControls(HWND window) {
    std::vector<HWND> controls;
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if (IsWindowVisible(child) != FALSE) {
            controls.push_back(child);
        }
    }
    return controls;
}

std::string nameOf(HWND window) {
    if (window == nullptr) {
        return "nothing";
    }
    if ((GetWindowLongA(window, GWL_STYLE) & WS_CHILD) == 0) {
        return classOf(window);
    }
    return classOf(GetAncestor(window, GA_ROOT)) + "." + std::to_string(GetDlgCtrlID(window)) +
           " (" + classOf(window) + " \"" + textOf(window) + "\")";
}

std::string textOf(const SIZE& size) {
    return std::to_string(size.cx) + " x " + std::to_string(size.cy);
}

SIZE sizeOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

bool operator==(const SIZE& one, const SIZE& other) {
    return one.cx == other.cx && one.cy == other.cy;
}

// How the system paints a text.

enum class TextKind { Line, Lines, Button, Mark, Frame };

/// How the text of a control is painted; none for what is neither label nor button.
std::optional<TextKind> textKind(HWND control) {
    const auto style = static_cast<DWORD>(GetWindowLongA(control, GWL_STYLE));
    const std::string className = classOf(control);
    if (className == "Static") {
        const bool text = (style & SS_TYPEMASK) <= SS_RIGHT;
        const TextKind kind = (style & SS_CENTERIMAGE) != 0 ? TextKind::Line : TextKind::Lines;
        return text ? std::optional(kind) : std::nullopt;
    }
    if (className != "Button") {
        return std::nullopt;
    }
    switch (style & BS_TYPEMASK) {
    case BS_PUSHBUTTON:
    case BS_DEFPUSHBUTTON:
        return TextKind::Button;
    case BS_GROUPBOX:
        return TextKind::Frame;
    default:
        return TextKind::Mark;
    }
}

/// A device context that measures with the control's own font.
class Measure {
public:
    explicit Measure(HWND control) : control_(control), context_(GetDC(control)) {
        before_ = SelectObject(context_,
                               reinterpret_cast<HGDIOBJ>(SendMessageA(control, WM_GETFONT, 0, 0)));
    }
    ~Measure() {
        SelectObject(context_, before_);
        ReleaseDC(control_, context_);
    }
    Measure(const Measure&) = delete;
    Measure& operator=(const Measure&) = delete;

    /// The room that a text takes, broken into lines of that width if there is one.
    SIZE text(const std::string& text, bool marks, LONG lineWidth = 0) const {
        RECT room{0, 0, lineWidth, 0};
        const UINT breaks = lineWidth > 0 ? DT_WORDBREAK | DT_EXPANDTABS : DT_SINGLELINE;
        DrawTextA(context_, text.c_str(), static_cast<int>(text.size()), &room,
                  DT_CALCRECT | breaks | (marks ? 0U : DT_NOPREFIX));
        return {room.right, room.bottom};
    }

    /// How far the text of a box or an option stands from its left edge.
    LONG markWidth() const {
        constexpr int mark = 12; // on a plain screen, without its border
        constexpr int plainScreen = 96;
        const int width = MulDiv(mark, GetDeviceCaps(context_, LOGPIXELSX), plainScreen) + 1;
        return width + text("0", false).cx / 2;
    }

private:
    HWND control_;
    HDC context_;
    HGDIOBJ before_ = nullptr;
};

/// The part of a control in which its text stands.
RECT textArea(HWND control, TextKind kind) {
    constexpr LONG border = 3;
    constexpr LONG frameSide = 8;
    RECT area{};
    GetClientRect(control, &area);
    if (kind == TextKind::Button) {
        InflateRect(&area, -border, -border);
    } else if (kind == TextKind::Mark) {
        area.left += Measure(control).markWidth();
    } else if (kind == TextKind::Frame) {
        InflateRect(&area, -frameSide, 0);
    }
    return area;
}

bool liesInItsWindow(HWND control) {
    RECT place{};
    GetWindowRect(control, &place);
    const HWND window = GetParent(control);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    RECT area{};
    GetClientRect(window, &area);
    return place.left >= 0 && place.top >= 0 && place.right <= area.right &&
           place.bottom <= area.bottom;
}

bool isCut(HWND control) {
    const std::optional<TextKind> kind = textKind(control);
    const std::string text = tarvik::textOf(control);
    if (!kind || text.empty()) {
        return false;
    }
    const auto style = static_cast<DWORD>(GetWindowLongA(control, GWL_STYLE));
    const bool label = *kind == TextKind::Line || *kind == TextKind::Lines;
    const bool marks = !label || (style & SS_NOPREFIX) == 0;
    const RECT area = textArea(control, *kind);
    const LONG width = area.right - area.left;
    const LONG lineWidth = *kind == TextKind::Lines ? std::max<LONG>(width, 1) : 0;
    const SIZE needed = Measure(control).text(text, marks, lineWidth);
    return needed.cx > width || needed.cy > area.bottom - area.top || !liesInItsWindow(control);
}

int brightness(COLORREF colour) {
    return (GetRValue(colour) * 30 + GetGValue(colour) * 59 + GetBValue(colour) * 11) / 100;
}

/// As the pixels of a sheet are: blue in the lowest byte.
int brightnessOfPixel(std::uint32_t pixel) {
    return brightness(RGB((pixel >> 16U) & 0xFFU, (pixel >> 8U) & 0xFFU, pixel & 0xFFU));
}

/// The colour that the control's text has while it is enabled.
COLORREF colourOfText(HWND control, HDC context) {
    if (classOf(control) == "Button") {
        return GetSysColor(COLOR_BTNTEXT);
    }
    SendMessageA(GetParent(control), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                 reinterpret_cast<LPARAM>(control));
    return GetTextColor(context);
}

/// A disabled control whose text is painted nearly as dark as that of one that can be used.
bool looksUsable(HWND control) {
    const bool field = classOf(control) == "Edit";
    const std::optional<TextKind> kind = field ? TextKind::Line : textKind(control);
    if (!kind || *kind == TextKind::Frame || tarvik::textOf(control).empty()) {
        return false;
    }
    RECT whole{};
    GetClientRect(control, &whole);
    const MemorySheet sheet(static_cast<int>(whole.right), static_cast<int>(whole.bottom));
    SendMessageA(control, WM_PRINT, reinterpret_cast<WPARAM>(sheet.context()),
                 PRF_CLIENT | PRF_ERASEBKGND);
    const Pixels painted = sheet.pixels();
    const RECT area = textArea(control, *kind);
    int darkest = 0xFF;
    for (LONG y = area.top; y < area.bottom; ++y) {
        for (LONG x = area.left; x < area.right; ++x) {
            const auto place = static_cast<std::size_t>(y * whole.right + x);
            darkest = std::min(darkest, brightnessOfPixel(painted.values[place]));
        }
    }
    const int usable = brightness(colourOfText(control, sheet.context()));
    const int pale = brightness(GetSysColor(COLOR_GRAYTEXT));
    return darkest < (usable + pale) / 2;
}

bool canTakeFocus(HWND control) {
    // Of options the tab key comes to one alone, arrows come to each.
    const bool keysComeTo = (GetWindowLongA(control, GWL_STYLE) & WS_TABSTOP) != 0 ||
                            (SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0;
    return keysComeTo && IsWindowVisible(control) != FALSE && IsWindowEnabled(control) != FALSE;
}

/// What is wrong with the focus while that window is the active one; empty when nothing is.
std::string lostFocus(HWND window) {
    const HWND focus = GetFocus();
    if (focus != nullptr && IsChild(window, focus) != FALSE && canTakeFocus(focus)) {
        return {};
    }
    const std::vector<HWND> controls = seenControls(window);
    const bool anyPlace = std::any_of(controls.begin(), controls.end(), canTakeFocus);
    return !anyPlace || IsWindowEnabled(window) == FALSE
               ? std::string()
               : nameOf(window) + " is active and the focus is on " + nameOf(focus) + "\n";
}

/// How many labels are seen in the main window, which has one line more while a plan is on; 0 of
/// any other window.
int labelsOfMainWindow(HWND window) {
    int count = 0;
    if (classOf(window) == "frmMain") {
        for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            count += IsWindowVisible(child) != FALSE && classOf(child) == "Static" ? 1 : 0;
        }
    }
    return count;
}

} // namespace

Win32Eyes* Win32Eyes::current = nullptr;

Win32Eyes::Win32Eyes() {
    current = this;
    hook_ = SetWindowsHookExA(WH_CBT, onEvent, nullptr, GetCurrentThreadId());
}

Win32Eyes::~Win32Eyes() {
    UnhookWindowsHookEx(hook_);
    current = nullptr;
}

LRESULT CALLBACK Win32Eyes::onEvent(int code, WPARAM first, LPARAM second) {
    const HWND window = reinterpret_cast<HWND>(first);
    if (code == HCBT_ACTIVATE && current != nullptr && classOf(window).starts_with("frm")) {
        current->active_ = window;
    }
    return CallNextHookEx(nullptr, code, first, second);
}

bool Win32Eyes::Look::operator==(const Look& other) const {
    return text == other.text && style == other.style && EqualRect(&place, &other.place) != FALSE;
}

void Win32Eyes::compareSizes(bool complain) {
    std::erase_if(rooms_, [](const auto& each) { return IsWindow(each.first) == FALSE; });
    for (const HWND window : seenWindows()) {
        const Room room{.size = sizeOf(window), .labels = labelsOfMainWindow(window)};
        const auto [known, isNew] = rooms_.insert({window, room});
        const Room before = known->second;
        const bool mayGrow = room.labels != before.labels && room.size.cx == before.size.cx;
        if (!isNew && complain && !mayGrow && !(before.size == room.size)) {
            noted_ += nameOf(window) + " was " + textOf(before.size) + " and is " +
                      textOf(room.size) + "\n";
        }
        known->second = room;
    }
}

void Win32Eyes::look() {
    compareSizes(true);
    const HWND active = GetActiveWindow();
    if (isSeen(active)) {
        noted_ += lostFocus(active);
    }
}

/// The windows before which a box may stand: the one in which the user acts, as far as a person can
/// see it; or else the one that was active, or else the main window, or else any.
std::vector<HWND> Win32Eyes::windowsThatMayAsk() const {
    for (const HWND one : {actor_, active_}) {
        if (isSeen(one)) {
            return {one};
        }
    }
    const HWND main = ownWindow("frmMain");
    return isSeen(main) ? std::vector{main} : seenWindows();
}

void Win32Eyes::lookAtBox(HWND box) {
    const HWND owner = GetWindow(box, GW_OWNER);
    const std::vector<HWND> may = windowsThatMayAsk();
    const bool fits =
        may.empty() ? owner == nullptr : std::find(may.begin(), may.end(), owner) != may.end();
    if (!fits) {
        noted_ += "A box stands before " + nameOf(owner) + " instead of " +
                  nameOf(may.empty() ? nullptr : may.front()) + "\n";
    }
    const std::vector<HWND> boxes = topLevelWindows(classOf(box), GetCurrentProcessId());
    if (std::count_if(boxes.begin(), boxes.end(),
                      [](HWND each) { return IsWindowVisible(each) != FALSE; }) > 1) {
        noted_ += "A box came while another was open\n";
    }
}

bool Win32Eyes::looksOtherwise(HWND control) {
    Look now{.text = tarvik::textOf(control), .style = GetWindowLongA(control, GWL_STYLE)};
    GetWindowRect(control, &now.place);
    MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&now.place), 2);
    Look& before = looks_[control];
    if (before == now) {
        return false;
    }
    before = std::move(now);
    return true;
}

std::string Win32Eyes::complaints() {
    std::erase_if(looks_, [](const auto& each) { return IsWindow(each.first) == FALSE; });
    for (const HWND window : seenWindows()) {
        for (const HWND control : seenControls(window)) {
            if (!looksOtherwise(control)) {
                continue;
            }
            if (isCut(control)) {
                noted_ += nameOf(control) + " is cut\n";
            }
            if (IsWindowEnabled(control) == FALSE && looksUsable(control)) {
                noted_ += nameOf(control) + " is disabled and does not look so\n";
            }
        }
    }
    return std::exchange(noted_, {});
}

} // namespace tarvik::scenarios
