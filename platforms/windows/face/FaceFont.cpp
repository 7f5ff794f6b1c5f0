#include "windows/face/FaceFont.h"

namespace tarvik::face {

namespace {

/// The desktop's device context for one measurement, with a font in it.
class Measurement {
public:
    explicit Measurement(HFONT font) : context_(GetDC(nullptr)) {
        previous_ = SelectObject(context_, font);
    }
    ~Measurement() {
        SelectObject(context_, previous_);
        ReleaseDC(nullptr, context_);
    }
    Measurement(const Measurement&) = delete;
    Measurement& operator=(const Measurement&) = delete;

    SIZE size(const std::string& text) const {
        SIZE size{};
        GetTextExtentPoint32A(context_, text.data(), static_cast<int>(text.size()), &size);
        return size;
    }
    TEXTMETRICA metrics() const {
        TEXTMETRICA metrics{};
        GetTextMetricsA(context_, &metrics);
        return metrics;
    }

private:
    HDC context_;
    HGDIOBJ previous_ = nullptr;
};

int desktopResolution() {
    const HDC context = GetDC(nullptr);
    const int resolution = GetDeviceCaps(context, LOGPIXELSX);
    ReleaseDC(nullptr, context);
    return resolution;
}

/// Only systems whose screens may differ have these functions.
template <class Function>
Function* newerFunction(const char* name) {
    const HMODULE user = GetModuleHandleA("user32.dll");
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(user, name)));
}

} // namespace

int dotsPerInch(HWND window) {
    using Ask = UINT WINAPI(HWND);
    static Ask* const ask = newerFunction<Ask>("GetDpiForWindow");
    const UINT resolution = ask == nullptr || window == nullptr ? 0 : ask(window);
    return resolution == 0 ? desktopResolution() : static_cast<int>(resolution);
}

SIZE frameSize(HWND window, int dotsPerInch) {
    using Adjust = BOOL WINAPI(RECT*, DWORD, BOOL, DWORD, UINT);
    static Adjust* const adjust = newerFunction<Adjust>("AdjustWindowRectExForDpi");
    const auto style = static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
    const auto extended = static_cast<DWORD>(GetWindowLongA(window, GWL_EXSTYLE));
    RECT frame{};
    if (adjust != nullptr) {
        adjust(&frame, style & ~WS_MINIMIZE, FALSE, extended, static_cast<UINT>(dotsPerInch));
    } else {
        AdjustWindowRectEx(&frame, style & ~WS_MINIMIZE, FALSE, extended);
    }
    return {frame.right - frame.left, frame.bottom - frame.top};
}

void dontScaleDialog(HWND window) {
    using Change = BOOL WINAPI(HWND, int, int);
    constexpr int nothing = 1;
    if (Change* const change = newerFunction<Change>("SetDialogDpiChangeBehavior")) {
        change(window, nothing, nothing);
    }
}

FaceFont::FaceFont(int dotsPerInch) {
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    LOGFONTA& description = metrics.lfMessageFont;
    // The system tells the size for the desktop, not for the screen in question.
    description.lfHeight = MulDiv(description.lfHeight, dotsPerInch, desktopResolution());
    description.lfWidth = 0;
    font_ = CreateFontIndirectA(&description);

    const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const Measurement measurement(font_);
    const int count = static_cast<int>(letters.size());
    averageWidth_ = (static_cast<int>(measurement.size(letters).cx) + count / 2) / count;
    digitWidth_ = static_cast<int>(measurement.size("0").cx);
    lineHeight_ = static_cast<int>(measurement.metrics().tmHeight);
}

FaceFont::~FaceFont() {
    DeleteObject(font_);
}

int FaceFont::textWidth(const std::string& text) const {
    return static_cast<int>(Measurement(font_).size(text).cx);
}

int FaceFont::horizontalUnits(int units) const {
    return MulDiv(units, averageWidth_, 4);
}

int FaceFont::verticalUnits(int units) const {
    return MulDiv(units, lineHeight_, 8);
}

} // namespace tarvik::face
