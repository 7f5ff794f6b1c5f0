#include "controls/ChartPainter.h"

#include "types/Convert.h"

#include <algorithm>
#include <cmath>

namespace tarvik {

namespace {

// Distances in plain pixels.
constexpr double outerMargin = 8;
constexpr double labelsApart = 10;

} // namespace

void ChartPainter::draw(Canvas& canvas, const ChartPalette& palette) {
    measure(canvas);
    const std::vector<CanvasPoint> sheet{{0, 0}, {size_.x, 0}, {size_.x, size_.y}, {0, size_.y}};
    canvas.polygon(sheet, palette.background);
    if (plot_.width() < 1 || plot_.height() < 1) {
        plot_ = {}; // no room for anything
        return;
    }
    drawTitles(canvas, palette);
    drawGrid(canvas, palette);
    if (chart_.filledRows() > 0) {
        for (int column = 0; column < chart_.columnCount(); ++column) {
            fillColumn(canvas, palette, column);
        }
        for (int column = 0; column < chart_.columnCount(); ++column) {
            outlineColumn(canvas, palette, column);
        }
        drawValueLabels(canvas, palette);
    }
    if (chart_.rowCount() > 0) {
        drawRowLabels(canvas, palette);
    }
    drawAxes(canvas, palette);
    drawKey(canvas, palette);
    drawEmptyText(canvas, palette);
    drawReading(canvas, palette);
}

int ChartPainter::rowAt(double x) const {
    const bool inside = chart_.rowCount() > 0 && x >= plot_.left && x < plot_.right;
    return inside ? std::min(static_cast<int>((x - plot_.left) / rowWidth()), chart_.rowCount() - 1)
                  : Chart::none;
}

void ChartPainter::measure(const Canvas& canvas) {
    takeData();
    size_ = {canvas.size().width, canvas.size().height};
    unit_ = canvas.scale();
    margin_ = std::round(outerMargin * unit_);
    lineHeight_ = std::ceil(canvas.textSize("0").height);
    const double gap = std::round(labelGap * unit_);
    const double oldWidth = plot_.width();
    // Above the plot the chart's title, the title of the values and half a label; below it the
    // labels and the title of the rows.
    plot_ = {.left = margin_ + std::ceil(widestValueLabel(canvas)) + gap,
             .top = margin_ + std::ceil(2.5 * lineHeight_) + 2 * gap,
             .right = std::floor(size_.x - 2 * margin_),
             .bottom = std::floor(size_.y - margin_ - 2 * lineHeight_ - 2 * gap)};
    if (chart_.rowCount() == 0 || plot_.width() < 1) {
        return;
    }
    const int lastRow = chart_.rowCount() - 1;
    const double labelRoom = canvas.textSize(chart_.rowName(lastRow)).width + labelsApart * unit_;
    const int most = std::min(chart_.axis(ChartAxisId::X).majorDivisions + 1,
                              static_cast<int>(plot_.width() / labelRoom));
    rowScale_ = rowScale(chart_.rowNumber(0), chart_.rowNumber(lastRow), most);
    if (spans_[0].empty() || plot_.width() != oldWidth) {
        for (int column = 0; column < chart_.columnCount(); ++column) {
            fillSpans(column);
        }
    }
}

/// Reads the values anew where there are others.
void ChartPainter::takeData() {
    if (generation_ == chart_.generation() && columns_ == chart_.columnCount()) {
        return;
    }
    generation_ = chart_.generation();
    columns_ = chart_.columnCount();
    least_ = 0;
    most_ = 0;
    for (int column = 0; column < columns_; ++column) {
        for (int row = 0; row < chart_.filledRows(); ++row) {
            least_ = std::min(least_, chart_.data(column, row));
            most_ = std::max(most_, chart_.data(column, row));
        }
    }
    scale_ = valueScale(least_, most_, chart_.axis(ChartAxisId::Y).majorDivisions);
    spans_ = {};
}

/// Rows that share a column of pixels are put together; a row that is wider than one is in several.
void ChartPainter::fillSpans(int column) {
    const std::vector<double>& values = chart_.values(column);
    const auto rows = static_cast<std::int64_t>(values.size());
    const auto filled = static_cast<std::int64_t>(chart_.filledRows());
    const auto width = static_cast<std::int64_t>(plot_.width());
    auto& spans = spans_[static_cast<std::size_t>(column)];
    spans.clear();
    for (std::int64_t x = 0; x < width; ++x) {
        const std::int64_t begin = x * rows / width;
        if (begin >= filled) {
            return; // beyond the last value
        }
        const std::int64_t end = std::min(filled, std::max(begin + 1, (x + 1) * rows / width));
        Span span{.low = values[static_cast<std::size_t>(begin)],
                  .high = values[static_cast<std::size_t>(begin)],
                  .last = values[static_cast<std::size_t>(end - 1)]};
        for (std::int64_t row = begin + 1; row < end; ++row) {
            const double value = values[static_cast<std::size_t>(row)];
            span.low = std::min(span.low, value);
            span.high = std::max(span.high, value);
        }
        spans.push_back(span);
    }
}

double ChartPainter::yOf(double value) const {
    return plot_.bottom - (value - scale_.low) / (scale_.high() - scale_.low) * plot_.height();
}

/// The column of pixels that stands for a row: where rows are narrow, one that `rowAt` gives this
/// row for, if there is one.
double ChartPainter::pixelOf(int row) const {
    const double middle = xOf(row + 0.5);
    if (rowWidth() >= narrowestRow) {
        return std::round(middle);
    }
    const double first = std::ceil(xOf(row));
    return first > std::floor(middle) && first < xOf(row + 1.0) ? first : std::floor(middle);
}

std::string ChartPainter::valueLabel(int division) const {
    // What should be 0 may be a little beside it.
    const double value = scale_.at(division);
    const bool zero = std::abs(value) < scale_.step / 2;
    return formatGrouped(zero ? 0 : value, scale_.decimals, chart_.locale());
}

double ChartPainter::widestValueLabel(const Canvas& canvas) const {
    double widest = 0;
    for (int division = 0; division <= scale_.divisions; ++division) {
        widest = std::max(widest, canvas.textSize(valueLabel(division)).width);
    }
    return widest;
}

} // namespace tarvik
