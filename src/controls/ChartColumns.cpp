#include "controls/ChartPainter.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvik {

namespace {

// In plain pixels.
constexpr double lineWidth = 2;
constexpr double markSize = 3;      ///< from its middle
constexpr double roomForMarks = 12; ///< from one to the next
constexpr double barPart = 0.8;     ///< of the room that a row has
constexpr double narrowestBar = 2;
/// A mark stands around the middle of its pixel.
constexpr double halfPixel = 0.5;

/// Fills columns of pixels from left to right. Much is drawn faster so than as one shape with
/// thousands of corners.
class Strips {
public:
    Strips(Canvas& canvas, const Colour& colour, double left)
        : canvas_(canvas), colour_(colour), left_(left), right_(left) {}
    ~Strips() { draw(); }
    Strips(const Strips&) = delete;
    Strips& operator=(const Strips&) = delete;

    void add(double top, double bottom) {
        if (top != top_ || bottom != bottom_) {
            draw();
            left_ = right_;
            top_ = top;
            bottom_ = bottom;
        }
        ++right_;
    }

private:
    /// Columns of the same height as one.
    void draw() const {
        if (right_ > left_ && bottom_ > top_) {
            canvas_.polygon(
                std::array<CanvasPoint, 4>{
                    {{left_, top_}, {right_, top_}, {right_, bottom_}, {left_, bottom_}}},
                colour_);
        }
    }

    Canvas& canvas_;
    const Colour& colour_;
    double left_;
    double right_;
    double top_ = 0;
    double bottom_ = 0;
};

} // namespace

/// There are more rows than can be told apart.
bool ChartPainter::crowded() const {
    const bool bars = chart_.type() == ChartType::Bar;
    const double needed = bars ? narrowestBar * chart_.columnCount() / barPart : narrowestRow;
    return rowWidth() < needed * unit_;
}

void ChartPainter::fillColumn(Canvas& canvas, const ChartPalette& palette, int column) const {
    const auto place = static_cast<std::size_t>(column);
    if (chart_.type() == ChartType::Bar) {
        if (crowded()) {
            fillCrowded(canvas, palette.columns[place], column);
        } else {
            fillBars(canvas, palette.columns[place], column);
        }
    } else if (chart_.type() == ChartType::Area) {
        if (crowded()) {
            fillCrowded(canvas, palette.fills[place], column);
            return;
        }
        Points area = plainLine(column);
        area.push_back({area.back().x, yOf(0)});
        area.push_back({area.front().x, yOf(0)});
        canvas.polygon(area, palette.fills[place]);
    }
}

void ChartPainter::fillBars(Canvas& canvas, const Colour& colour, int column) const {
    const double width = rowWidth() * barPart / chart_.columnCount();
    const double zero = std::round(yOf(0));
    const double before = (rowWidth() - rowWidth() * barPart) / 2 + width * column;
    for (int row = 0; row < chart_.filledRows(); ++row) {
        const double left = std::round(xOf(row) + before);
        const double right = std::max(left + 1, std::round(xOf(row) + before + width));
        const auto [top, bottom] = std::minmax({zero, std::round(yOf(chart_.data(column, row)))});
        canvas.polygon(
            std::vector<CanvasPoint>{{left, top}, {right, top}, {right, bottom}, {left, bottom}},
            colour);
    }
}

/// A second line is told from the first also by what it is made of.
Stroke ChartPainter::strokeOf(const ChartPalette& palette, int column) const {
    return {.colour = palette.columns[static_cast<std::size_t>(column)],
            .width = std::round(lineWidth * unit_),
            .style = column == 0 ? LineStyle::Solid : LineStyle::Dashed};
}

/// Shows how a column is drawn.
void ChartPainter::drawSample(Canvas& canvas, const ChartPalette& palette, int column,
                              const CanvasArea& area) const {
    const Stroke stroke = strokeOf(palette, column);
    if (chart_.type() == ChartType::Bar) {
        canvas.polygon(std::array<CanvasPoint, 4>{{{area.left, area.top},
                                                   {area.right, area.top},
                                                   {area.right, area.bottom},
                                                   {area.left, area.bottom}}},
                       stroke.colour);
        return;
    }
    const double middle = (area.top + area.bottom) / 2;
    canvas.line(std::array<CanvasPoint, 2>{{{area.left, middle}, {area.right, middle}}}, stroke);
    if (chart_.type() == ChartType::Line) {
        drawMark(canvas, stroke.colour, column, {std::round((area.left + area.right) / 2), middle});
    }
}

void ChartPainter::outlineColumn(Canvas& canvas, const ChartPalette& palette, int column) const {
    const Colour& colour = palette.columns[static_cast<std::size_t>(column)];
    if (crowded()) {
        // Of bars that hide each other, the edge of the hidden ones.
        if (chart_.type() != ChartType::Bar || column + 1 < chart_.columnCount()) {
            drawCrowdedLine(canvas, colour, column);
        }
        return;
    }
    if (chart_.type() == ChartType::Bar) {
        return;
    }
    canvas.line(chart_.type() == ChartType::Step ? plainSteps(column) : plainLine(column),
                strokeOf(palette, column));
    if (chart_.type() == ChartType::Line) {
        drawMarks(canvas, colour, column);
    }
}

/// Each column of pixels from its smallest value to its largest, and on from where the one before
/// it ended.
void ChartPainter::drawCrowdedLine(Canvas& canvas, const Colour& colour, int column) const {
    const double width = std::round(unit_);
    Strips strips(canvas, colour, plot_.left);
    const Span* before = nullptr;
    for (const Span& span : spans_[static_cast<std::size_t>(column)]) {
        const double high = before == nullptr ? span.high : std::max(span.high, before->last);
        const double low = before == nullptr ? span.low : std::min(span.low, before->last);
        strips.add(std::round(yOf(high)), std::round(yOf(low)) + width);
        before = &span;
    }
}

/// All room between zero and the values.
void ChartPainter::fillCrowded(Canvas& canvas, const Colour& colour, int column) const {
    Strips strips(canvas, colour, plot_.left);
    for (const Span& span : spans_[static_cast<std::size_t>(column)]) {
        strips.add(std::round(yOf(std::max(span.high, 0.0))),
                   std::round(yOf(std::min(span.low, 0.0))));
    }
}

/// Through the middle of each row; a single one reaches over all its room.
ChartPainter::Points ChartPainter::plainLine(int column) const {
    if (chart_.filledRows() == 1) {
        return plainSteps(column);
    }
    Points points;
    for (int row = 0; row < chart_.filledRows(); ++row) {
        points.push_back({xOf(row + 0.5), yOf(chart_.data(column, row))});
    }
    return points;
}

/// Level over each row.
ChartPainter::Points ChartPainter::plainSteps(int column) const {
    Points points;
    for (int row = 0; row < chart_.filledRows(); ++row) {
        const double y = std::round(yOf(chart_.data(column, row)));
        points.push_back({std::round(xOf(row)), y});
        points.push_back({std::round(xOf(row + 1.0)), y});
    }
    return points;
}

/// A square for the first column, a square on its corner for the second.
void ChartPainter::drawMark(Canvas& canvas, const Colour& colour, int column,
                            CanvasPoint at) const {
    const double reach = std::round(markSize * unit_);
    if (column == 0) {
        canvas.polygon(std::vector<CanvasPoint>{{at.x - reach, at.y - reach},
                                                {at.x + reach + 1, at.y - reach},
                                                {at.x + reach + 1, at.y + reach + 1},
                                                {at.x - reach, at.y + reach + 1}},
                       colour);
        return;
    }
    const double corner = std::round(reach * 1.5);
    const CanvasPoint middle{at.x + halfPixel, at.y + halfPixel};
    canvas.polygon(std::vector<CanvasPoint>{{middle.x, middle.y - corner},
                                            {middle.x + corner, middle.y},
                                            {middle.x, middle.y + corner},
                                            {middle.x - corner, middle.y}},
                   colour);
}

void ChartPainter::drawMarks(Canvas& canvas, const Colour& colour, int column) const {
    if (rowWidth() < roomForMarks * unit_) {
        return;
    }
    for (int row = 0; row < chart_.filledRows(); ++row) {
        drawMark(canvas, colour, column,
                 {std::round(xOf(row + 0.5)), std::round(yOf(chart_.data(column, row)))});
    }
}

} // namespace tarvik
