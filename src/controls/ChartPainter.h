#pragma once

#include "controls/Canvas.h"
#include "controls/Chart.h"
#include "controls/ChartPalette.h"
#include "controls/ChartScale.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvik {

/// A rectangle of pixels: `right` and `bottom` belong to it no more.
struct CanvasArea {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    double width() const { return right - left; }
    double height() const { return bottom - top; }
    friend bool operator==(const CanvasArea&, const CanvasArea&) = default;
};

/// Draws a chart on a canvas. It remembers, from one drawing to the next, where things stand and
/// what the columns of pixels hold, so that a moving pointer costs little.
class ChartPainter {
public:
    explicit ChartPainter(const Chart& chart) : chart_(chart) {}

    void draw(Canvas& canvas, const ChartPalette& palette);

    /// The row that stands at that many pixels from the left; `Chart::none` beside the plot. For
    /// the canvas that was drawn on last.
    int rowAt(double x) const;
    /// Where the values stood in the last drawing.
    const CanvasArea& plot() const { return plot_; }

private:
    /// What the rows that share a column of pixels hold.
    struct Span {
        double low = 0;
        double high = 0;
        double last = 0;
    };
    using Points = std::vector<CanvasPoint>;

    // Where things stand.
    void measure(const Canvas& canvas);
    void takeData();
    void fillSpans(int column);
    double widestValueLabel(const Canvas& canvas) const;
    std::string valueLabel(int division) const;
    double rowWidth() const { return plot_.width() / chart_.rowCount(); }
    double xOf(double row) const { return plot_.left + row * rowWidth(); }
    /// The middle of a row by its number; a fraction stands between two.
    double middleOf(double number) const {
        return xOf(number - static_cast<double>(chart_.rowNumber(0)) + 0.5);
    }
    double yOf(double value) const;
    double pixelOf(int row) const;
    static constexpr double labelGap = 4; ///< plain pixels between a text and what is beside it
    /// Rows that are narrower, in plain pixels, cannot be told apart.
    static constexpr double narrowestRow = 2;
    bool crowded() const;

    // The sheet around the values.
    void write(Canvas& canvas, CanvasPoint leftTop, const std::string& text,
               const Colour& colour) const;
    void drawGrid(Canvas& canvas, const ChartPalette& palette) const;
    void drawRowGrid(Canvas& canvas, const Stroke& major, const Stroke& minor) const;
    void drawValueGrid(Canvas& canvas, const Stroke& major, const Stroke& minor) const;
    void drawEmptyText(Canvas& canvas, const ChartPalette& palette) const;
    void drawAxes(Canvas& canvas, const ChartPalette& palette) const;
    void drawValueLabels(Canvas& canvas, const ChartPalette& palette) const;
    void drawRowLabels(Canvas& canvas, const ChartPalette& palette) const;
    void drawTitles(Canvas& canvas, const ChartPalette& palette) const;
    void drawKey(Canvas& canvas, const ChartPalette& palette) const;
    void drawReading(Canvas& canvas, const ChartPalette& palette) const;
    void drawReadingBox(Canvas& canvas, const ChartPalette& palette, double x) const;

    // The values: room that is filled first, lines above all of it.
    void fillColumn(Canvas& canvas, const ChartPalette& palette, int column) const;
    void fillBars(Canvas& canvas, const Colour& colour, int column) const;
    Stroke strokeOf(const ChartPalette& palette, int column) const;
    void drawSample(Canvas& canvas, const ChartPalette& palette, int column,
                    const CanvasArea& area) const;
    void outlineColumn(Canvas& canvas, const ChartPalette& palette, int column) const;
    void drawCrowdedLine(Canvas& canvas, const Colour& colour, int column) const;
    void fillCrowded(Canvas& canvas, const Colour& colour, int column) const;
    Points plainLine(int column) const;
    Points plainSteps(int column) const;
    void drawMark(Canvas& canvas, const Colour& colour, int column, CanvasPoint at) const;
    void drawMarks(Canvas& canvas, const Colour& colour, int column) const;

    const Chart& chart_;
    CanvasPoint size_;
    CanvasArea plot_;
    double unit_ = 1;       ///< pixels of one plain pixel
    double lineHeight_ = 0; ///< of a text
    double margin_ = 0;
    RowScale rowScale_;
    ValueScale scale_;
    /// What the values below stand for: the chart's generation and columns.
    std::optional<std::uint32_t> generation_;
    int columns_ = 0;
    double least_ = 0;
    double most_ = 0;
    std::array<std::vector<Span>, Chart::mostColumns> spans_;
};

} // namespace tarvik
