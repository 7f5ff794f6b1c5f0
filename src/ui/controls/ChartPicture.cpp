#include "ui/controls/ChartPicture.h"

#include "types/Convert.h"

#include <algorithm>
#include <cmath>

namespace tarvik {

namespace {

// Distances in plain pixels.
constexpr double outerMargin = 8;
constexpr double labelGap = 4;
constexpr double labelsApart = 10;
constexpr double swatchWidth = 16;

} // namespace

void ChartPicture::draw(Canvas& canvas, const ChartPalette& palette) {
    measure(canvas);
    const std::vector<CanvasPoint> sheet{{0, 0}, {size_.x, 0}, {size_.x, size_.y}, {0, size_.y}};
    canvas.polygon(sheet, palette.background);
    if (plot_.width() < 1 || plot_.height() < 1) {
        plot_ = {}; // no room for anything
        return;
    }
    drawTitles(canvas, palette);
    drawGrid(canvas, palette);
    if (chart_.rowCount() > 0) {
        for (int column = 0; column < chart_.columnCount(); ++column) {
            fillColumn(canvas, palette, column);
        }
        for (int column = 0; column < chart_.columnCount(); ++column) {
            outlineColumn(canvas, palette, column);
        }
        drawValueLabels(canvas, palette);
        drawRowLabels(canvas, palette);
    }
    drawAxes(canvas, palette);
    drawKey(canvas, palette);
    drawReading(canvas, palette);
}

int ChartPicture::rowAt(double x) const {
    const bool inside = chart_.rowCount() > 0 && x >= plot_.left && x < plot_.right;
    return inside ? std::min(static_cast<int>((x - plot_.left) / rowWidth()), chart_.rowCount() - 1)
                  : Chart::none;
}

void ChartPicture::measure(const Canvas& canvas) {
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
    const double labelRoom =
        canvas.textSize(chart_.rowLabel(chart_.rowCount() - 1)).width + labelsApart * unit_;
    const int most = std::min(chart_.axis(ChartAxisId::X).majorDivisions + 1,
                              static_cast<int>(plot_.width() / labelRoom));
    labelStep_ = labelStep(chart_.rowCount(), std::max(1, most));
    if (spans_[0].empty() || plot_.width() != oldWidth) {
        for (int column = 0; column < chart_.columnCount(); ++column) {
            fillSpans(column);
        }
    }
}

/// Reads the values anew where there are others.
void ChartPicture::takeData() {
    if (generation_ == chart_.generation() && columns_ == chart_.columnCount()) {
        return;
    }
    generation_ = chart_.generation();
    columns_ = chart_.columnCount();
    least_ = 0;
    most_ = 0;
    for (int column = 0; column < columns_; ++column) {
        for (const double value : chart_.values(column)) {
            least_ = std::min(least_, value);
            most_ = std::max(most_, value);
        }
    }
    scale_ = valueScale(least_, most_, chart_.axis(ChartAxisId::Y).majorDivisions);
    spans_ = {};
}

/// Rows that share a column of pixels are put together; a row that is wider than one is in several.
void ChartPicture::fillSpans(int column) {
    const std::vector<double>& values = chart_.values(column);
    const auto rows = static_cast<std::int64_t>(values.size());
    const auto width = static_cast<std::int64_t>(plot_.width());
    auto& spans = spans_[static_cast<std::size_t>(column)];
    spans.resize(static_cast<std::size_t>(width));
    for (std::int64_t x = 0; x < width; ++x) {
        const std::int64_t begin = x * rows / width;
        const std::int64_t end = std::max(begin + 1, (x + 1) * rows / width);
        Span span{.low = values[static_cast<std::size_t>(begin)],
                  .high = values[static_cast<std::size_t>(begin)],
                  .last = values[static_cast<std::size_t>(end - 1)]};
        for (std::int64_t row = begin + 1; row < end; ++row) {
            const double value = values[static_cast<std::size_t>(row)];
            span.low = std::min(span.low, value);
            span.high = std::max(span.high, value);
        }
        spans[static_cast<std::size_t>(x)] = span;
    }
}

double ChartPicture::yOf(double value) const {
    return plot_.bottom - (value - scale_.low) / (scale_.high() - scale_.low) * plot_.height();
}

/// The column of pixels that stands for a row: where rows are narrow, one that `rowAt` gives this
/// row for, if there is one.
double ChartPicture::pixelOf(int row) const {
    const double middle = xOf(row + 0.5);
    if (rowWidth() >= narrowestRow) {
        return std::round(middle);
    }
    const double first = std::ceil(xOf(row));
    return first > std::floor(middle) && first < xOf(row + 1.0) ? first : std::floor(middle);
}

std::string ChartPicture::valueLabel(int division) const {
    // What should be 0 may be a little beside it.
    const double value = scale_.at(division);
    const bool zero = std::abs(value) < scale_.step / 2;
    return formatGrouped(zero ? 0 : value, scale_.decimals, chart_.locale());
}

double ChartPicture::widestValueLabel(const Canvas& canvas) const {
    double widest = 0;
    for (int division = 0; division <= scale_.divisions; ++division) {
        widest = std::max(widest, canvas.textSize(valueLabel(division)).width);
    }
    return widest;
}

/// A text that does not fit on the sheet is left out.
void ChartPicture::write(Canvas& canvas, CanvasPoint leftTop, const std::string& text,
                         const Colour& colour) const {
    if (leftTop.x >= 0 && leftTop.x + canvas.textSize(text).width <= size_.x) {
        canvas.text(leftTop, text, colour);
    }
}

void ChartPicture::drawTitles(Canvas& canvas, const ChartPalette& palette) const {
    const auto centred = [&](const std::string& text, double left, double right, double top) {
        const double spare = right - left - canvas.textSize(text).width;
        write(canvas, {std::round(left + spare / 2), top}, text, palette.text);
    };
    const double gap = std::round(labelGap * unit_);
    centred(chart_.title(), 0, size_.x, margin_);
    write(canvas, {margin_, margin_ + lineHeight_ + gap}, chart_.axis(ChartAxisId::Y).title,
          palette.text);
    centred(chart_.axis(ChartAxisId::X).title, plot_.left, plot_.right,
            plot_.bottom + lineHeight_ + 2 * gap);
}

void ChartPicture::drawGrid(Canvas& canvas, const ChartPalette& palette) const {
    const auto dotted = [this](const Colour& colour) {
        return Stroke{.colour = colour, .width = std::round(unit_), .style = LineStyle::Dotted};
    };
    const Stroke major = dotted(palette.majorGrid);
    const Stroke minor = dotted(palette.minorGrid);
    const auto across = [&](double y, const Stroke& stroke) {
        const double row = std::round(y);
        canvas.line(std::vector<CanvasPoint>{{plot_.left, row}, {plot_.right, row}}, stroke);
    };
    const auto down = [&](double x, const Stroke& stroke) {
        const double place = std::round(x);
        if (place <= plot_.right) {
            canvas.line(std::vector<CanvasPoint>{{place, plot_.top}, {place, plot_.bottom}},
                        stroke);
        }
    };
    // Lines of one kind at each `step` up to `end`: the major ones, and the minor ones between
    // them.
    const auto lines = [](const ChartAxis& axis, int step, int end, const auto& drawMinor,
                          const auto& drawMajor) {
        for (int i = 0; i <= end / step; ++i) {
            const double place = static_cast<double>(step) * i;
            for (int k = 1; k <= axis.minorDivisions && axis.minorPen != GridPen::None; ++k) {
                const double between =
                    place + static_cast<double>(step) * k / (axis.minorDivisions + 1);
                if (between < end) {
                    drawMinor(between);
                }
            }
            if (axis.majorPen != GridPen::None) {
                drawMajor(place);
            }
        }
    };
    lines(
        chart_.axis(ChartAxisId::Y), 1, scale_.divisions,
        [&](double part) { across(yOf(scale_.low + scale_.step * part), minor); },
        [&](double part) { across(yOf(scale_.low + scale_.step * part), major); });
    if (chart_.rowCount() > 0) {
        lines(
            chart_.axis(ChartAxisId::X), labelStep_, chart_.rowCount() - 1,
            [&](double row) { down(xOf(row + 0.5), minor); },
            [&](double row) { down(xOf(row + 0.5), major); });
    }
}

void ChartPicture::drawAxes(Canvas& canvas, const ChartPalette& palette) const {
    const Stroke stroke{.colour = palette.axis, .width = std::round(unit_)};
    canvas.line(std::vector<CanvasPoint>{{plot_.left, plot_.top}, {plot_.left, plot_.bottom}},
                stroke);
    const double zero = std::round(yOf(0));
    canvas.line(std::vector<CanvasPoint>{{plot_.left, zero}, {plot_.right, zero}}, stroke);
}

void ChartPicture::drawValueLabels(Canvas& canvas, const ChartPalette& palette) const {
    const double gap = std::round(labelGap * unit_);
    const double apart = plot_.height() / scale_.divisions;
    const int step = apart <= 0 ? scale_.divisions
                                : std::max(1, static_cast<int>(std::ceil(lineHeight_ / apart)));
    for (int division = 0; division <= scale_.divisions; division += step) {
        const std::string label = valueLabel(division);
        const CanvasSize size = canvas.textSize(label);
        const double y = yOf(scale_.at(division));
        canvas.text({std::round(plot_.left - gap - size.width), std::round(y - size.height / 2)},
                    label, palette.text);
    }
}

void ChartPicture::drawRowLabels(Canvas& canvas, const ChartPalette& palette) const {
    const double top = plot_.bottom + std::round(labelGap * unit_);
    double free = plot_.left - std::round(labelGap * unit_); // where the next label may begin
    for (int row = 0; row < chart_.rowCount(); row += labelStep_) {
        const std::string label = chart_.rowLabel(row);
        const double width = canvas.textSize(label).width;
        double left = std::round(xOf(row + 0.5) - width / 2);
        if (row == 0) {
            left = std::max(left, free); // beside the numbers of the values
        }
        if (left >= free && left + width <= size_.x) {
            canvas.text({left, top}, label, palette.text);
            free = left + width + labelGap * unit_;
        }
        if (row > chart_.rowCount() - labelStep_) {
            return; // the next one might be beyond all numbers
        }
    }
}

/// At the right, in the line of the values' title; left out where there is no room beside that.
void ChartPicture::drawKey(Canvas& canvas, const ChartPalette& palette) const {
    if (!chart_.showsLegend() && chart_.columnCount() < 2) {
        return;
    }
    const double gap = std::round(labelGap * unit_);
    const double swatch = std::round(swatchWidth * unit_);
    double left = plot_.right;
    std::array<double, Chart::mostColumns> labelLefts{};
    for (int column = chart_.columnCount() - 1; column >= 0; --column) {
        const double width = canvas.textSize(chart_.columnLabel(column)).width;
        labelLefts[static_cast<std::size_t>(column)] = std::round(left - width);
        left = std::round(left - width) - gap - swatch - 3 * gap;
    }
    if (left < margin_ + canvas.textSize(chart_.axis(ChartAxisId::Y).title).width) {
        return;
    }
    const double top = margin_ + lineHeight_ + gap;
    const double middle = std::round(top + lineHeight_ / 2);
    for (int column = 0; column < chart_.columnCount(); ++column) {
        const double labelLeft = labelLefts[static_cast<std::size_t>(column)];
        canvas.text({labelLeft, top}, chart_.columnLabel(column), palette.text);
        drawSample(canvas, palette, column,
                   {.left = labelLeft - gap - swatch,
                    .top = middle - gap,
                    .right = labelLeft - gap,
                    .bottom = middle + gap});
    }
}

void ChartPicture::drawReading(Canvas& canvas, const ChartPalette& palette) const {
    const int row = chart_.readRow();
    if (row == Chart::none) {
        return;
    }
    const double x = pixelOf(row);
    canvas.line(std::vector<CanvasPoint>{{x, plot_.top}, {x, plot_.bottom}},
                {.colour = palette.text, .width = std::round(unit_)});
    for (int column = 0; column < chart_.columnCount(); ++column) {
        drawMark(canvas, palette.text, column, {x, std::round(yOf(chart_.data(column, row)))});
    }
    const std::string text = chart_.reading();
    const double gap = std::round(labelGap * unit_);
    const double width = std::ceil(canvas.textSize(text).width) + 2 * gap;
    // Beside the line on the side that has room for it.
    const double left = x + gap + width < size_.x ? x + gap : x - gap - width;
    if (left < 0) {
        return;
    }
    const double bottom = plot_.top + lineHeight_ + gap;
    const std::vector<CanvasPoint> box{
        {left, plot_.top}, {left + width, plot_.top}, {left + width, bottom}, {left, bottom}};
    canvas.polygon(box, palette.background);
    canvas.line(std::vector<CanvasPoint>{box[0], box[1], box[2], box[3], box[0]},
                {.colour = palette.text, .width = std::round(unit_)});
    canvas.text({left + gap, plot_.top + std::round(gap / 2)}, text, palette.text);
}

} // namespace tarvik
