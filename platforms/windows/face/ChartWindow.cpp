#include "common/ChartReading.h"
#include "controls/ChartPainter.h"
#include "windows/face/ControlWindow.h"
#include "windows/face/GdiCanvas.h"

#include <map>
#include <optional>
#include <utility>

namespace tarvik::face {

namespace {

constexpr const char* chartClass = "TarvikChart";

Colour systemColour(int which) {
    const COLORREF colour = GetSysColor(which);
    return {GetRValue(colour), GetGValue(colour), GetBValue(colour)};
}

/// A bitmap in memory that is shown at once when it is finished.
class Sheet {
public:
    Sheet(HDC screen, SIZE size)
        : screen_(screen), size_(size), memory_(CreateCompatibleDC(screen)),
          bitmap_(CreateCompatibleBitmap(screen, size.cx, size.cy)),
          before_(SelectObject(memory_, bitmap_)) {}
    ~Sheet() {
        SelectObject(memory_, before_);
        DeleteObject(bitmap_);
        DeleteDC(memory_);
    }
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;

    HDC context() const { return memory_; }
    void show() const { BitBlt(screen_, 0, 0, size_.cx, size_.cy, memory_, 0, 0, SRCCOPY); }

private:
    HDC screen_;
    SIZE size_;
    HDC memory_;
    HBITMAP bitmap_;
    HGDIOBJ before_;
};

std::optional<ReadingStep> stepOf(WPARAM key) {
    static const std::map<WPARAM, ReadingStep> steps{
        {VK_LEFT, ReadingStep::Back},      {VK_RIGHT, ReadingStep::On},
        {VK_PRIOR, ReadingStep::PageBack}, {VK_NEXT, ReadingStep::PageOn},
        {VK_HOME, ReadingStep::First},     {VK_END, ReadingStep::Last},
    };
    const auto found = steps.find(key);
    const bool plain = GetKeyState(VK_CONTROL) >= 0 && GetKeyState(VK_SHIFT) >= 0;
    return plain && found != steps.end() ? std::optional(found->second) : std::nullopt;
}

class ChartWindow : public ControlWindow {
public:
    ChartWindow(Chart& chart, ControlSite& site)
        : ControlWindow(
              chart, site,
              makeChild(chart, site, registeredClass(), site.shown(chart.title()), WS_TABSTOP)),
          chart_(chart), painter_(chart) {
        SetWindowLongPtrA(window(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        refresh(Property::Caption);
    }
    ~ChartWindow() override { SetWindowLongPtrA(window(), GWLP_USERDATA, 0); }
    ChartWindow(const ChartWindow&) = delete;
    ChartWindow& operator=(const ChartWindow&) = delete;

    LayoutSize measure(const FaceFont& font, int characters, int lines) const override {
        constexpr int usualCharacters = 30;
        constexpr int usualLines = 9;
        return {font.charactersWidth(characters > 0 ? characters : usualCharacters),
                font.lineHeight() * (lines > 0 ? lines : usualLines)};
    }

protected:
    void refreshOwn(Property changed) override {
        if (!reading_.differs(chart_, changed)) {
            return;
        }
        // The text of a window of its own kind is what screen readers say.
        setWindowText(shown(spokenName(chart_)));
        InvalidateRect(window(), nullptr, FALSE);
    }

private:
    static const char* registeredClass() {
        static const char* const name =
            registerClass(chartClass, onMessage, CS_HREDRAW | CS_VREDRAW);
        return name;
    }

    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
        auto* own = reinterpret_cast<ChartWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
        if (own != nullptr) {
            const HandlingScope handling(own->site().context());
            if (const auto answer = own->handle(message, first, second)) {
                return *answer;
            }
        }
        return DefWindowProcA(window, message, first, second);
    }

    /// Nothing for what the system should do.
    std::optional<LRESULT> handle(UINT message, WPARAM first, LPARAM second) {
        switch (message) {
        case WM_PAINT:
            paint();
            return 0;
        case WM_PRINTCLIENT:
            draw(reinterpret_cast<HDC>(first), clientArea());
            return 0;
        case WM_ERASEBKGND:
            return TRUE; // painting covers everything
        case WM_SETFONT:
            font_ = reinterpret_cast<HFONT>(first);
            InvalidateRect(window(), nullptr, FALSE);
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(font_);
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
        case WM_UPDATEUISTATE:
            InvalidateRect(window(), nullptr, FALSE);
            return std::nullopt;
        case WM_KEYDOWN:
            return onKey(first);
        case WM_LBUTTONDOWN:
            SetFocus(window());
            return 0;
        case WM_MOUSEMOVE:
            onMouseMove(second);
            return 0;
        case WM_MOUSELEAVE:
            onMouseLeave();
            return 0;
        default:
            return std::nullopt;
        }
    }

    RECT clientArea() const {
        RECT area{};
        GetClientRect(window(), &area);
        return area;
    }

    void paint() {
        PAINTSTRUCT painting{};
        const HDC screen = BeginPaint(window(), &painting);
        const RECT area = clientArea();
        if (area.right > 0 && area.bottom > 0) {
            const Sheet sheet(screen, {area.right, area.bottom});
            draw(sheet.context(), area);
            sheet.show();
        }
        EndPaint(window(), &painting);
    }

    void draw(HDC context, const RECT& area) {
        constexpr double plainResolution = 96;
        {
            GdiCanvas canvas(context, {area.right, area.bottom},
                             dotsPerInch(window()) / plainResolution, font_,
                             site().context().codePage);
            painter_.draw(canvas, ChartPalette::on(systemColour(COLOR_WINDOW),
                                                   systemColour(COLOR_WINDOWTEXT)));
        }
        const LRESULT state = SendMessageA(window(), WM_QUERYUISTATE, 0, 0);
        if (GetFocus() == window() && (state & UISF_HIDEFOCUS) == 0) {
            DrawFocusRect(context, &area);
        }
    }

    std::optional<LRESULT> onKey(WPARAM key) {
        const auto step = stepOf(key);
        if (!step) {
            return std::nullopt;
        }
        fromUser(Property::Reading, [&] { goOn(chart_, *step); });
        return 0;
    }

    void onMouseMove(LPARAM place) {
        // The system also tells of movements when something else has moved under the pointer.
        if (std::exchange(pointer_, place) == place) {
            return;
        }
        TRACKMOUSEEVENT leaving{};
        leaving.cbSize = sizeof leaving;
        leaving.dwFlags = TME_LEAVE;
        leaving.hwndTrack = window();
        TrackMouseEvent(&leaving);
        const int x = static_cast<std::int16_t>(LOWORD(place));
        fromUser(Property::Reading, [&] { chart_.setReadRow(painter_.rowAt(x)); });
    }

    void onMouseLeave() {
        pointer_.reset();
        fromUser(Property::Reading, [&] { chart_.setReadRow(Chart::none); });
    }

    Chart& chart_;
    ChartPainter painter_;
    HFONT font_ = nullptr;
    ShownReading reading_;
    std::optional<LPARAM> pointer_; ///< where it is over the window
};

} // namespace

std::unique_ptr<ControlWindow> makeChart(Control& control, ControlSite& site) {
    return std::make_unique<ChartWindow>(static_cast<Chart&>(control), site);
}

} // namespace tarvik::face
