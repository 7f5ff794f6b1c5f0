#include "windows/face/DrawingRaster.h"

#include <algorithm>
#include <cmath>

namespace tarvik::face {

namespace {

/// Each point of the result is the mean of so many by so many.
constexpr int fineness = 8;

/// A bitmap in memory with a device context to draw on it.
class MemoryBitmap {
public:
    explicit MemoryBitmap(int side) : side_(side), context_(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = side;
        info.bmiHeader.biHeight = -side; // the first row is the top one
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        points_ = static_cast<const std::uint32_t*>(bits);
        previous_ = SelectObject(context_, bitmap_);
    }
    ~MemoryBitmap() {
        SelectObject(context_, previous_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }
    MemoryBitmap(const MemoryBitmap&) = delete;
    MemoryBitmap& operator=(const MemoryBitmap&) = delete;

    explicit operator bool() const { return points_ != nullptr; }

    void fill(Colour colour) {
        const RECT all{0, 0, side_, side_};
        const HBRUSH brush = CreateSolidBrush(RGB(colour.red, colour.green, colour.blue));
        FillRect(context_, &all, brush);
        DeleteObject(brush);
    }

    void draw(const DrawingShape& shape) {
        const COLORREF colour = RGB(shape.colour.red, shape.colour.green, shape.colour.blue);
        const LOGBRUSH ink{BS_SOLID, colour, 0};
        const bool filled = shape.stroke <= 0;
        const auto width = static_cast<DWORD>(std::max(1, length(shape.stroke)));
        // Such a pen has round ends and joins unless it is told otherwise.
        const HPEN pen = filled ? CreatePen(PS_SOLID, 0, colour)
                                : ExtCreatePen(PS_GEOMETRIC, width, &ink, 0, nullptr);
        const HBRUSH brush = CreateSolidBrush(colour);
        const HGDIOBJ penBefore = SelectObject(context_, pen);
        const HGDIOBJ brushBefore = SelectObject(context_, filled ? static_cast<HGDIOBJ>(brush)
                                                                  : GetStockObject(NULL_BRUSH));
        outline(shape);
        SelectObject(context_, brushBefore);
        SelectObject(context_, penBefore);
        DeleteObject(brush);
        DeleteObject(pen);
    }

    /// The mean of one colour over the square that becomes one point; `shift` chooses the colour.
    std::uint32_t mean(int column, int row, unsigned shift) const {
        std::uint32_t sum = 0;
        for (int y = row * fineness; y < (row + 1) * fineness; ++y) {
            for (int x = column * fineness; x < (column + 1) * fineness; ++x) {
                sum += (points_[y * side_ + x] >> shift) & 0xFFU;
            }
        }
        constexpr std::uint32_t count = fineness * fineness;
        return (sum + count / 2) / count;
    }

private:
    int length(double part) const { return static_cast<int>(std::lround(part * side_)); }

    void outline(const DrawingShape& shape) {
        std::vector<POINT> points;
        for (const DrawingPoint& point : shape.points) {
            points.push_back({length(point.x), length(point.y)});
        }
        const auto count = static_cast<int>(points.size());
        if (shape.type == DrawingShape::Type::Polygon) {
            ::Polygon(context_, points.data(), count);
        } else if (shape.type == DrawingShape::Type::Line) {
            ::Polyline(context_, points.data(), count);
        } else if (count == 2) {
            const double reach = std::hypot(shape.points[1].x - shape.points[0].x,
                                            shape.points[1].y - shape.points[0].y);
            const int radius = length(reach);
            const POINT middle = points[0];
            ::Ellipse(context_, middle.x - radius, middle.y - radius, middle.x + radius + 1,
                      middle.y + radius + 1);
        }
    }

    int side_;
    HDC context_;
    HBITMAP bitmap_ = nullptr;
    const std::uint32_t* points_ = nullptr;
    HGDIOBJ previous_ = nullptr;
};

constexpr std::uint32_t opaque = 0xFF000000U;

} // namespace

Raster rasterOn(const Drawing& drawing, int side, Colour background) {
    Raster raster{.side = side, .points = {}};
    MemoryBitmap bitmap(side * fineness);
    if (!bitmap) {
        return {};
    }
    bitmap.fill(background);
    for (const DrawingShape& shape : drawing.shapes) {
        bitmap.draw(shape);
    }
    GdiFlush();
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            std::uint32_t point = opaque;
            for (const unsigned shift : {0U, 8U, 16U}) {
                point |= bitmap.mean(column, row, shift) << shift;
            }
            raster.points.push_back(point);
        }
    }
    return raster;
}

Raster rasterAlone(const Drawing& drawing, int side) {
    // Where the drawing covers nothing, black and white backgrounds differ wholly; where it covers
    // all, not at all.
    Raster onBlack = rasterOn(drawing, side, {0, 0, 0});
    const Raster onWhite = rasterOn(drawing, side, {255, 255, 255});
    for (std::size_t i = 0; i < onBlack.points.size() && i < onWhite.points.size(); ++i) {
        const std::uint32_t black = onBlack.points[i];
        const std::uint32_t cover = 255 - ((onWhite.points[i] & 0xFFU) - (black & 0xFFU));
        std::uint32_t point = cover << 24U;
        for (const unsigned shift : {0U, 8U, 16U}) {
            const std::uint32_t part = (black >> shift) & 0xFFU;
            point |= (cover == 0 ? 0 : std::min(255U, part * 255U / cover)) << shift;
        }
        onBlack.points[i] = point;
    }
    return onBlack;
}

HICON makeIcon(const Drawing& drawing, int side) {
    const Raster raster = rasterAlone(drawing, side);
    if (raster.points.empty()) {
        return nullptr;
    }
    // The mask says nothing where colours carry their own cover; systems want one all the same.
    const std::vector<std::uint8_t> mask(static_cast<std::size_t>((side + 15) / 16 * 2 * side));
    ICONINFO icon{};
    icon.fIcon = TRUE;
    icon.hbmColor = CreateBitmap(side, side, 1, 32, raster.points.data());
    icon.hbmMask = CreateBitmap(side, side, 1, 1, mask.data());
    const HICON result = CreateIconIndirect(&icon);
    DeleteObject(icon.hbmColor);
    DeleteObject(icon.hbmMask);
    return result;
}

} // namespace tarvik::face
