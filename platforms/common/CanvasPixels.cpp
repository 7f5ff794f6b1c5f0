#include "common/CanvasPixels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <utility>

namespace tarvik::face {

namespace {

/// The pixels that a stroke of that width takes across its direction.
std::pair<int, int> across(int place, int width) {
    const int first = place - (width - 1) / 2;
    return {first, first + width};
}

/// The pixels from one end to the other of a piece that runs along an axis.
PixelRect pieceOf(const PixelPoint& from, const PixelPoint& to, int width) {
    return {.left = across(std::min(from.x, to.x), width).first,
            .top = across(std::min(from.y, to.y), width).first,
            .right = across(std::max(from.x, to.x), width).second,
            .bottom = across(std::max(from.y, to.y), width).second};
}

/// Lays dashes along one part of a line after the other.
class Dasher {
public:
    Dasher(std::vector<int> lengths, int width) : lengths_(std::move(lengths)), width_(width) {}

    /// The last pixel of a part is the first of the next one; with the last part it is drawn too.
    void add(const PixelPoint& from, const PixelPoint& to, bool last,
             std::vector<PixelRect>& pieces) {
        const int stepX = (to.x > from.x) - (to.x < from.x);
        const int stepY = (to.y > from.y) - (to.y < from.y);
        const int length = std::abs(to.x - from.x) + std::abs(to.y - from.y) + (last ? 1 : 0);
        for (int place = 0; place < length;) {
            const int run = std::min(lengths_[part_] - done_, length - place);
            if (part_ % 2 == 0) {
                const PixelPoint begin{from.x + stepX * place, from.y + stepY * place};
                const PixelPoint end{begin.x + stepX * (run - 1), begin.y + stepY * (run - 1)};
                pieces.push_back(dashOf(begin, end, stepX != 0));
                if (place == 0) {
                    pieces.push_back(pieceOf(from, from, width_)); // the whole corner
                }
            }
            place += run;
            done_ += run;
            if (done_ == lengths_[part_]) {
                part_ = (part_ + 1) % lengths_.size();
                done_ = 0;
            }
        }
    }

private:
    /// A dash is as long as it is told; only across is it as wide as the stroke.
    PixelRect dashOf(const PixelPoint& begin, const PixelPoint& end, bool level) const {
        PixelRect dash = pieceOf(begin, end, 1);
        if (level) {
            std::tie(dash.top, dash.bottom) = across(begin.y, width_);
        } else {
            std::tie(dash.left, dash.right) = across(begin.x, width_);
        }
        return dash;
    }

    std::vector<int> lengths_;
    int width_;
    std::size_t part_ = 0;
    int done_ = 0; ///< of the part
};

/// The first pixel whose middle lies at a place or behind it.
int firstPixel(double place) {
    return static_cast<int>(std::ceil(place - 0.5));
}

/// The heights at which the edges of an area cross the middle of each column of pixels.
class Crossings {
public:
    explicit Crossings(std::span<const CanvasPoint> corners) {
        const auto [least, most] = std::minmax_element(
            corners.begin(), corners.end(),
            [](const CanvasPoint& a, const CanvasPoint& b) { return a.x < b.x; });
        first_ = firstPixel(least->x);
        heights_.resize(static_cast<std::size_t>(firstPixel(most->x) - first_));
        for (std::size_t i = 0; i < corners.size(); ++i) {
            addEdge(corners[i], corners[(i + 1) % corners.size()]);
        }
    }

    std::vector<PixelRect> inside() {
        std::vector<PixelRect> rects;
        int x = first_;
        for (std::vector<double>& heights : heights_) {
            std::sort(heights.begin(), heights.end());
            for (std::size_t i = 1; i < heights.size(); i += 2) {
                const PixelRect rect{.left = x,
                                     .top = firstPixel(heights[i - 1]),
                                     .right = x + 1,
                                     .bottom = firstPixel(heights[i])};
                if (rect.top < rect.bottom) {
                    rects.push_back(rect);
                }
            }
            ++x;
        }
        return rects;
    }

private:
    void addEdge(const CanvasPoint& from, const CanvasPoint& to) {
        const auto [left, right] = from.x < to.x ? std::pair(from, to) : std::pair(to, from);
        for (int x = firstPixel(left.x); x < firstPixel(right.x); ++x) {
            const double part = (x + 0.5 - left.x) / (right.x - left.x);
            heights_[static_cast<std::size_t>(x - first_)].push_back(left.y +
                                                                     (right.y - left.y) * part);
        }
    }

    int first_ = 0;
    std::vector<std::vector<double>> heights_;
};

bool alongAxes(std::span<const CanvasPoint> points) {
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (points[i].x != points[i - 1].x && points[i].y != points[i - 1].y) {
            return false;
        }
    }
    return true;
}

std::vector<CanvasPoint> rounded(std::span<const CanvasPoint> points) {
    std::vector<CanvasPoint> result;
    result.reserve(points.size());
    for (const CanvasPoint& point : points) {
        result.push_back({std::round(point.x), std::round(point.y)});
    }
    return result;
}

} // namespace

PixelPoint nearestPixel(const CanvasPoint& point) {
    return {static_cast<int>(std::lround(point.x)), static_cast<int>(std::lround(point.y))};
}

int pixelWidth(const Stroke& stroke) {
    return std::max(1, static_cast<int>(std::lround(stroke.width)));
}

std::vector<int> dashes(const Stroke& stroke, double scale) {
    const int unit = std::max(pixelWidth(stroke), static_cast<int>(std::lround(scale)));
    switch (stroke.style) {
    case LineStyle::Dashed:
        return {4 * unit, 2 * unit};
    case LineStyle::Dotted:
        return {unit, 2 * unit};
    case LineStyle::Solid:
        break;
    }
    return {};
}

std::optional<std::vector<PixelRect>> pixelsOf(std::span<const CanvasPoint> points,
                                               const Stroke& stroke, double scale) {
    if (!alongAxes(points)) {
        return std::nullopt;
    }
    // Whole places first: what is in one column then stays there.
    const std::vector<CanvasPoint> places = thinned(rounded(points));
    const std::vector<int> lengths = dashes(stroke, scale);
    const int width = pixelWidth(stroke);
    Dasher dasher(lengths, width);
    std::vector<PixelRect> pieces;
    for (std::size_t i = 1; i < places.size(); ++i) {
        const PixelPoint from = nearestPixel(places[i - 1]);
        const PixelPoint to = nearestPixel(places[i]);
        if (lengths.empty()) {
            pieces.push_back(pieceOf(from, to, width));
        } else {
            dasher.add(from, to, i + 1 == places.size(), pieces);
        }
    }
    return pieces;
}

std::optional<PixelRect> rectangleOf(std::span<const CanvasPoint> corners) {
    if (corners.size() != 4) {
        return std::nullopt;
    }
    const PixelPoint first = nearestPixel(corners[0]);
    const PixelPoint opposite = nearestPixel(corners[2]);
    const bool level = corners[0].y == corners[1].y && corners[1].x == corners[2].x &&
                       corners[2].y == corners[3].y && corners[3].x == corners[0].x;
    const bool upright = corners[0].x == corners[1].x && corners[1].y == corners[2].y &&
                         corners[2].x == corners[3].x && corners[3].y == corners[0].y;
    if (!level && !upright) {
        return std::nullopt;
    }
    return PixelRect{.left = std::min(first.x, opposite.x),
                     .top = std::min(first.y, opposite.y),
                     .right = std::max(first.x, opposite.x),
                     .bottom = std::max(first.y, opposite.y)};
}

std::vector<PixelRect> columnsOf(std::span<const CanvasPoint> corners) {
    return corners.empty() ? std::vector<PixelRect>() : Crossings(corners).inside();
}

std::vector<CanvasPoint> thinned(std::span<const CanvasPoint> points) {
    std::vector<CanvasPoint> result;
    for (std::size_t begin = 0; begin < points.size();) {
        const double column = std::round(points[begin].x);
        std::size_t end = begin + 1;
        std::size_t highest = begin;
        std::size_t lowest = begin;
        for (; end < points.size() && std::round(points[end].x) == column; ++end) {
            highest = points[end].y < points[highest].y ? end : highest;
            lowest = points[end].y > points[lowest].y ? end : lowest;
        }
        std::array<std::size_t, 4> kept{begin, highest, lowest, end - 1};
        std::sort(kept.begin(), kept.end());
        std::for_each(kept.begin(), std::unique(kept.begin(), kept.end()),
                      [&](std::size_t place) { result.push_back(points[place]); });
        begin = end;
    }
    return result;
}

} // namespace tarvik::face
