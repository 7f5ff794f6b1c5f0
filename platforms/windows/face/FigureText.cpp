#include "windows/face/FigureText.h"

#include <algorithm>

namespace tarvik::face {

namespace {

/// What the box does all the same whatever its text is.
bool leavesTextAlone(UINT message) {
    switch (message) {
    case WM_GETFONT:
    case WM_ERASEBKGND:
    case WM_NCPAINT:
    case WM_NCHITTEST:
    case WM_NCMOUSEMOVE:
    case WM_SETCURSOR:
    case WM_MOUSEMOVE:
        return true;
    default:
        return false;
    }
}

/// After which the text may stand somewhere else.
bool movesText(UINT message) {
    switch (message) {
    case WM_SIZE:
    case WM_SETFONT:
    case WM_SETTINGCHANGE:
    case WM_STYLECHANGED:
    case EM_SETRECT:
    case EM_SETMARGINS:
        return true;
    default:
        return false;
    }
}

/// Letters of every code page, which any font draws one after the other.
bool isPlain(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char letter) { return letter >= ' ' && letter <= '~'; });
}

int widthOf(HDC context, const std::string& text) {
    SIZE size{};
    GetTextExtentPoint32A(context, text.c_str(), static_cast<int>(text.size()), &size);
    return static_cast<int>(size.cx);
}

/// The box's own sheet with its font, for as long as it is needed.
class BoxContext {
public:
    explicit BoxContext(HWND box) : box_(box), context_(GetDC(box)) { useFont(box, context_); }
    ~BoxContext() { ReleaseDC(box_, context_); }
    BoxContext(const BoxContext&) = delete;
    BoxContext& operator=(const BoxContext&) = delete;

    HDC get() const { return context_; }

    static void useFont(HWND box, HDC context) {
        const LRESULT font = SendMessageA(box, WM_GETFONT, 0, 0);
        SelectObject(context, reinterpret_cast<HGDIOBJ>(font));
    }

private:
    HWND box_;
    HDC context_;
};

} // namespace

bool FigureText::canDraw(const std::string& text) const {
    // The box itself shows where the keyboard is, what is selected, and that it is disabled.
    return place_ && isPlain(text) && GetFocus() != box_ && IsWindowEnabled(box_) != FALSE;
}

void FigureText::show(const std::string& text) {
    if (text == text_) {
        return;
    }
    text_ = text;
    ahead_ = true;
    if (!canDraw(text) || !draw(BoxContext(box_).get(), text)) {
        handOver();
        findPlace();
        return;
    }
    NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, box_, OBJID_CLIENT, CHILDID_SELF);
}

void FigureText::handOver() {
    if (ahead_) {
        ahead_ = false;
        SetWindowTextA(box_, text_.c_str());
    }
}

/// Where the box draws it, which only the box knows.
void FigureText::findPlace() {
    place_.reset();
    if (text_.empty() || !isPlain(text_)) {
        return;
    }
    RECT room{};
    SendMessageA(box_, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&room));
    const LRESULT first = SendMessageA(box_, EM_POSFROMCHAR, 0, 0);
    const int width = widthOf(BoxContext(box_).get(), text_);
    const int left = static_cast<short>(LOWORD(first));
    if (first != -1 && width <= room.right - room.left) {
        place_ = {.x = toTheRight_ ? left + width : left,
                  .y = static_cast<short>(HIWORD(first)),
                  .width = static_cast<int>(room.right - room.left)};
    }
}

bool FigureText::draw(HDC context, const std::string& text) const {
    if (widthOf(context, text) > place_->width) {
        return false;
    }
    RECT area{};
    GetClientRect(box_, &area);
    SendMessageA(GetParent(box_), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                 reinterpret_cast<LPARAM>(box_));
    SetTextAlign(context, toTheRight_ ? TA_RIGHT : TA_LEFT);
    ExtTextOutA(context, place_->x, place_->y, ETO_OPAQUE | ETO_CLIPPED, &area, text.c_str(),
                static_cast<UINT>(text.size()), nullptr);
    return true;
}

bool FigureText::answers(UINT message) {
    if (movesText(message)) {
        handOver();
        place_.reset();
    }
    if (!ahead_ || leavesTextAlone(message)) {
        return false;
    }
    if (message == WM_PAINT) {
        PAINTSTRUCT paint{};
        const HDC context = BeginPaint(box_, &paint);
        BoxContext::useFont(box_, context);
        draw(context, text_);
        EndPaint(box_, &paint);
        return true;
    }
    handOver();
    return false;
}

} // namespace tarvik::face
