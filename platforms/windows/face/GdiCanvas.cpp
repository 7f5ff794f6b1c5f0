#include "windows/face/GdiCanvas.h"

#include "common/CanvasPixels.h"
#include "common/HiddenCharacters.h"

#include <algorithm>
#include <vector>

namespace tarvik::face {

namespace {

COLORREF colourOf(const Colour& colour) {
    return RGB(colour.red, colour.green, colour.blue);
}

void fill(HDC context, const std::vector<PixelRect>& rects, const Colour& colour) {
    SetDCBrushColor(context, colourOf(colour));
    for (const PixelRect& rect : rects) {
        const RECT area{rect.left, rect.top, rect.right, rect.bottom};
        FillRect(context, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    }
}

std::vector<POINT> placesOf(std::span<const CanvasPoint> points) {
    std::vector<POINT> places;
    places.reserve(points.size());
    for (const CanvasPoint& point : points) {
        const PixelPoint pixel = nearestPixel(point);
        places.push_back({pixel.x, pixel.y});
    }
    return places;
}

/// A pen in a device context, as long as this lives.
class Pen {
public:
    Pen(HDC context, const Stroke& stroke, double scale) : context_(context) {
        const LOGBRUSH brush{.lbStyle = BS_SOLID, .lbColor = colourOf(stroke.colour), .lbHatch = 0};
        std::vector<DWORD> lengths;
        for (const int length : dashes(stroke, scale)) {
            lengths.push_back(static_cast<DWORD>(length));
        }
        const auto width = static_cast<DWORD>(pixelWidth(stroke));
        const bool solid = lengths.empty();
        if (solid && width == 1) {
            pen_ = CreatePen(PS_SOLID, 1, brush.lbColor);
        } else {
            const DWORD style = solid ? PS_SOLID | PS_ENDCAP_ROUND : PS_USERSTYLE | PS_ENDCAP_FLAT;
            pen_ =
                ExtCreatePen(PS_GEOMETRIC | PS_JOIN_ROUND | style, width, &brush,
                             static_cast<DWORD>(lengths.size()), solid ? nullptr : lengths.data());
        }
        before_ = SelectObject(context_, pen_);
    }
    ~Pen() {
        SelectObject(context_, before_);
        DeleteObject(pen_);
    }
    Pen(const Pen&) = delete;
    Pen& operator=(const Pen&) = delete;

private:
    HDC context_;
    HPEN pen_ = nullptr;
    HGDIOBJ before_ = nullptr;
};

} // namespace

GdiCanvas::GdiCanvas(HDC context, SIZE size, double scale, HFONT font, const CodePage& codePage)
    : context_(context), size_(size), scale_(std::max(1.0, scale)), codePage_(codePage),
      saved_(SaveDC(context)) {
    SelectObject(context_, font);
    SetBkMode(context_, TRANSPARENT);
}

GdiCanvas::~GdiCanvas() {
    RestoreDC(context_, saved_);
}

CanvasSize GdiCanvas::size() const {
    return {static_cast<double>(size_.cx), static_cast<double>(size_.cy)};
}

void GdiCanvas::line(std::span<const CanvasPoint> points, const Stroke& stroke) {
    if (points.size() < 2) {
        return;
    }
    const auto pieces = pixelsOf(points, stroke, scale_);
    if (!pieces) {
        slantedLine(points, stroke);
        return;
    }
    fill(context_, *pieces, stroke.colour);
}

void GdiCanvas::slantedLine(std::span<const CanvasPoint> points, const Stroke& stroke) {
    const std::vector<POINT> places = placesOf(thinned(points));
    const Pen pen(context_, stroke, scale_);
    Polyline(context_, places.data(), static_cast<int>(places.size()));
    if (stroke.style == LineStyle::Solid && pixelWidth(stroke) == 1) {
        // The system leaves out the last pixel of a thin line.
        SetPixelV(context_, places.back().x, places.back().y, colourOf(stroke.colour));
    }
}

void GdiCanvas::polygon(std::span<const CanvasPoint> corners, const Colour& colour) {
    if (const auto rect = rectangleOf(corners)) {
        fill(context_, {*rect}, colour);
    } else {
        fill(context_, columnsOf(corners), colour);
    }
}

void GdiCanvas::text(CanvasPoint leftTop, const std::string& text, const Colour& colour) {
    const PixelPoint place = nearestPixel(leftTop);
    SetTextColor(context_, colourOf(colour));
    const std::string told = withHiddenTold(text, codePage_);
    TextOutA(context_, place.x, place.y, told.data(), static_cast<int>(told.size()));
}

CanvasSize GdiCanvas::textSize(const std::string& text) const {
    SIZE size{};
    const std::string told = withHiddenTold(text, codePage_);
    GetTextExtentPoint32A(context_, told.data(), static_cast<int>(told.size()), &size);
    return {static_cast<double>(size.cx), static_cast<double>(size.cy)};
}

} // namespace tarvik::face
