#pragma once

#include "controls/Canvas.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {

/// A rectangle around something that was drawn.
struct DrawnBox {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    /// Whether it shares pixels with another. Places are rounded: half a pixel is none.
    bool meets(const DrawnBox& other) const {
        constexpr double half = 0.5;
        return left + half < other.right && other.left + half < right &&
               top + half < other.bottom && other.top + half < bottom;
    }
    bool within(const DrawnBox& other) const {
        return left >= other.left && right <= other.right && top >= other.top &&
               bottom <= other.bottom;
    }
    friend bool operator==(const DrawnBox&, const DrawnBox&) = default;
};

/// A sheet that notes what is drawn, in the order in which it is. Each character of a text is a box
/// of 7 by 14 plain pixels.
class RecordingCanvas : public Canvas {
public:
    using Points = std::vector<CanvasPoint>;
    enum class Kind { Line, Polygon, Text };

    /// One thing that was drawn: a line through the points, a polygon with these corners, or a text
    /// with its box from the first point to the second.
    struct Drawn {
        Kind kind = Kind::Line;
        Points points;
        Colour colour;
        double width = 0;
        LineStyle style = LineStyle::Solid;
        std::string text = {};

        DrawnBox box() const {
            DrawnBox box{points[0].x, points[0].y, points[0].x, points[0].y};
            for (const CanvasPoint& point : points) {
                box = {std::min(box.left, point.x), std::min(box.top, point.y),
                       std::max(box.right, point.x), std::max(box.bottom, point.y)};
            }
            return box;
        }
    };

    explicit RecordingCanvas(CanvasSize size, double scale = 1) : size_(size), scale_(scale) {}

    CanvasSize size() const override { return size_; }
    double scale() const override { return scale_; }

    void line(std::span<const CanvasPoint> points, const Stroke& stroke) override {
        drawn.push_back({.kind = Kind::Line,
                         .points = Points(points.begin(), points.end()),
                         .colour = stroke.colour,
                         .width = stroke.width,
                         .style = stroke.style});
    }
    void polygon(std::span<const CanvasPoint> corners, const Colour& fill) override {
        drawn.push_back({.kind = Kind::Polygon,
                         .points = Points(corners.begin(), corners.end()),
                         .colour = fill});
    }
    void text(CanvasPoint leftTop, const std::string& text, const Colour& colour) override {
        const CanvasSize size = textSize(text);
        drawn.push_back({.kind = Kind::Text,
                         .points = {leftTop, {leftTop.x + size.width, leftTop.y + size.height}},
                         .colour = colour,
                         .text = text});
    }
    CanvasSize textSize(const std::string& text) const override {
        return {7 * scale_ * static_cast<double>(text.size()), 14 * scale_};
    }

    /// All of a kind, and of a colour, in order.
    std::vector<Drawn> of(Kind kind) const {
        std::vector<Drawn> found;
        for (const Drawn& one : drawn) {
            if (one.kind == kind) {
                found.push_back(one);
            }
        }
        return found;
    }
    std::vector<Drawn> of(Kind kind, const Colour& colour) const {
        std::vector<Drawn> found;
        for (Drawn& one : of(kind)) {
            if (one.colour == colour) {
                found.push_back(std::move(one));
            }
        }
        return found;
    }
    /// The place of the first text that reads so; null when there is none.
    const Drawn* textThatReads(const std::string& text) const {
        const auto found = std::find_if(drawn.begin(), drawn.end(), [&](const Drawn& one) {
            return one.kind == Kind::Text && one.text == text;
        });
        return found == drawn.end() ? nullptr : &*found;
    }
    DrawnBox sheet() const { return {0, 0, size_.width, size_.height}; }

    std::vector<Drawn> drawn;

private:
    CanvasSize size_;
    double scale_;
};

} // namespace tarvik
