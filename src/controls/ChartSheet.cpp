#include "controls/ChartPainter.h"

#include <algorithm>
#include <array>
#include <cmath>

// The sheet around the values of a chart, and what is written on it.

namespace tarvik {

namespace {

constexpr double swatchWidth = 16; ///< in plain pixels

/// The words in lines that are no wider than that; nothing where a word alone is.
std::vector<std::string> brokenText(const Canvas& canvas, const std::string& text, double width) {
    std::vector<std::string> lines;
    for (std::size_t begin = 0, end = 0; begin < text.size(); begin = end + 1) {
        end = std::min(text.find(' ', begin), text.size());
        const std::string word = text.substr(begin, end - begin);
        if (canvas.textSize(word).width > width) {
            return {};
        }
        const std::string longer = lines.empty() ? word : lines.back() + " " + word;
        if (lines.empty() || canvas.textSize(longer).width > width) {
            lines.push_back(word);
        } else {
            lines.back() = longer;
        }
    }
    return lines;
}

/// The places of minor lines between two major ones, as parts of the way.
template <class Draw>
void drawBetween(const ChartAxis& axis, Draw draw) {
    for (int k = 1; k <= axis.minorDivisions && axis.minorPen != GridPen::None; ++k) {
        draw(static_cast<double>(k) / (axis.minorDivisions + 1));
    }
}

} // namespace

/// A text that does not fit on the sheet is left out.
void ChartPainter::write(Canvas& canvas, CanvasPoint leftTop, const std::string& text,
                         const Colour& colour) const {
    if (leftTop.x >= 0 && leftTop.x + canvas.textSize(text).width <= size_.x) {
        canvas.text(leftTop, text, colour);
    }
}

void ChartPainter::drawTitles(Canvas& canvas, const ChartPalette& palette) const {
    const auto centred = [&](const std::string& text, double left, double right, double top) {
        const double spare = right - left - canvas.textSize(text).width;
        write(canvas, {std::round(left + spare / 2), top}, text, palette.text);
    };
    const double gap = std::round(labelGap * unit_);
    centred(chart_.drawnTitle(), 0, size_.x, margin_);
    write(canvas, {margin_, margin_ + lineHeight_ + gap}, chart_.drawnValueTitle(), palette.text);
    centred(chart_.axis(ChartAxisId::X).title, plot_.left, plot_.right,
            plot_.bottom + lineHeight_ + 2 * gap);
}

void ChartPainter::drawGrid(Canvas& canvas, const ChartPalette& palette) const {
    const auto dotted = [this](const Colour& colour) {
        return Stroke{.colour = colour, .width = std::round(unit_), .style = LineStyle::Dotted};
    };
    const Stroke major = dotted(palette.majorGrid);
    const Stroke minor = dotted(palette.minorGrid);
    drawValueGrid(canvas, major, minor);
    if (chart_.rowCount() > 0) {
        drawRowGrid(canvas, major, minor);
    }
}

void ChartPainter::drawValueGrid(Canvas& canvas, const Stroke& major, const Stroke& minor) const {
    const ChartAxis& axis = chart_.axis(ChartAxisId::Y);
    const auto across = [&](double division, const Stroke& stroke) {
        const double y = std::round(yOf(scale_.low + scale_.step * division));
        canvas.line(std::vector<CanvasPoint>{{plot_.left, y}, {plot_.right, y}}, stroke);
    };
    for (int division = 0; division <= scale_.divisions; ++division) {
        if (division > 0) {
            drawBetween(axis, [&](double part) { across(division - 1 + part, minor); });
        }
        if (axis.majorPen != GridPen::None) {
            across(division, major);
        }
    }
}

/// At the rows that are labelled, and between round numbers.
void ChartPainter::drawRowGrid(Canvas& canvas, const Stroke& major, const Stroke& minor) const {
    const ChartAxis& axis = chart_.axis(ChartAxisId::X);
    const auto down = [&](double number, const Stroke& stroke) {
        const double x = std::round(middleOf(number));
        canvas.line(std::vector<CanvasPoint>{{x, plot_.top}, {x, plot_.bottom}}, stroke);
    };
    const auto first = static_cast<double>(rowScale_.numbers.front());
    const auto last = static_cast<double>(rowScale_.numbers.back());
    const auto step = static_cast<double>(rowScale_.step);
    const auto steps = static_cast<int>(std::ceil(last / step));
    for (auto count = static_cast<int>(std::floor(first / step)); count < steps; ++count) {
        drawBetween(axis, [&](double part) {
            const double number = step * (count + part);
            if (number > first && number < last) {
                down(number, minor);
            }
        });
    }
    if (axis.majorPen != GridPen::None) {
        for (const std::int64_t number : rowScale_.numbers) {
            down(static_cast<double>(number), major);
        }
    }
}

void ChartPainter::drawAxes(Canvas& canvas, const ChartPalette& palette) const {
    const Stroke stroke{.colour = palette.axis, .width = std::round(unit_)};
    canvas.line(std::vector<CanvasPoint>{{plot_.left, plot_.top}, {plot_.left, plot_.bottom}},
                stroke);
    const double zero = std::round(yOf(0));
    canvas.line(std::vector<CanvasPoint>{{plot_.left, zero}, {plot_.right, zero}}, stroke);
}

void ChartPainter::drawValueLabels(Canvas& canvas, const ChartPalette& palette) const {
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

/// Both ends come first; of the others, those that have room between them.
void ChartPainter::drawRowLabels(Canvas& canvas, const ChartPalette& palette) const {
    const double top = plot_.bottom + std::round(labelGap * unit_);
    const double apart = labelGap * unit_;
    double from = plot_.left - std::round(apart); // the room that is still free
    double to = size_.x;
    const auto textOf = [this](std::int64_t number) {
        return chart_.rowName(static_cast<int>(number - chart_.rowNumber(0)));
    };
    // False where there is no room; `left` is where the label would begin.
    const auto drawn = [&](std::int64_t number, double left, double width) {
        const bool fits = left >= from && left + width <= to;
        if (fits) {
            canvas.text({left, top}, textOf(number), palette.text);
        }
        return fits;
    };
    const auto widthOf = [&](std::int64_t number) { return canvas.textSize(textOf(number)).width; };
    const auto leftOf = [&](std::int64_t number) {
        return std::round(middleOf(static_cast<double>(number)) - widthOf(number) / 2);
    };
    const std::int64_t first = rowScale_.numbers.front();
    const std::int64_t last = rowScale_.numbers.back();
    // Beside the numbers of the values, and not beyond the sheet.
    const double begin = std::max(leftOf(first), from);
    if (drawn(first, begin, widthOf(first))) {
        from = begin + widthOf(first) + apart;
    }
    const double end = std::min(leftOf(last), std::floor(to - widthOf(last)));
    if (last > first && drawn(last, end, widthOf(last))) {
        to = end - apart;
    }
    for (const std::int64_t number : rowScale_.numbers) {
        const bool between = number > first && number < last;
        if (between && drawn(number, leftOf(number), widthOf(number))) {
            from = leftOf(number) + widthOf(number) + apart;
        }
    }
}

/// At the right, in the line of the values' title; left out where there is no room beside that.
void ChartPainter::drawKey(Canvas& canvas, const ChartPalette& palette) const {
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
    if (left < margin_ + canvas.textSize(chart_.drawnValueTitle()).width) {
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

void ChartPainter::drawReading(Canvas& canvas, const ChartPalette& palette) const {
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
    drawReadingBox(canvas, palette, x);
}

/// Beside the line on the side that has room for it, else wherever it is on the sheet.
void ChartPainter::drawReadingBox(Canvas& canvas, const ChartPalette& palette, double x) const {
    const std::vector<std::string> lines = chart_.readingLines();
    const double gap = std::round(labelGap * unit_);
    double width = 0;
    for (const std::string& line : lines) {
        width = std::max(width, std::ceil(canvas.textSize(line).width) + 2 * gap);
    }
    if (width > size_.x) {
        return;
    }
    const double beside = x + gap + width < size_.x ? x + gap : x - gap - width;
    const double left = std::clamp(beside, 0.0, size_.x - width);
    const double bottom = plot_.top + static_cast<double>(lines.size()) * lineHeight_ + gap;
    const std::vector<CanvasPoint> box{
        {left, plot_.top}, {left + width, plot_.top}, {left + width, bottom}, {left, bottom}};
    canvas.polygon(box, palette.background);
    canvas.line(std::vector<CanvasPoint>{box[0], box[1], box[2], box[3], box[0]},
                {.colour = palette.text, .width = std::round(unit_)});
    for (std::size_t i = 0; i < lines.size(); ++i) {
        canvas.text(
            {left + gap, plot_.top + std::round(gap / 2) + static_cast<double>(i) * lineHeight_},
            lines[i], palette.text);
    }
}

/// In the middle of the plot, in as many lines as it needs; left out where there is no room.
void ChartPainter::drawEmptyText(Canvas& canvas, const ChartPalette& palette) const {
    if (chart_.filledRows() > 0 || chart_.emptyText().empty()) {
        return;
    }
    const double gap = std::round(labelGap * unit_);
    const std::vector<std::string> lines =
        brokenText(canvas, chart_.emptyText(), plot_.width() - 2 * gap);
    const double height = static_cast<double>(lines.size()) * lineHeight_;
    if (lines.empty() || height > plot_.height()) {
        return;
    }
    double widest = 0;
    for (const std::string& line : lines) {
        widest = std::max(widest, std::ceil(canvas.textSize(line).width));
    }
    const double middle = std::round((plot_.left + plot_.right) / 2);
    double top = std::round((plot_.top + plot_.bottom - height) / 2);
    // The grid does not run through the words.
    canvas.polygon(std::vector<CanvasPoint>{{middle - widest / 2 - gap, top - gap},
                                            {middle + widest / 2 + gap, top - gap},
                                            {middle + widest / 2 + gap, top + height + gap},
                                            {middle - widest / 2 - gap, top + height + gap}},
                   palette.background);
    for (const std::string& line : lines) {
        canvas.text({std::round(middle - canvas.textSize(line).width / 2), top}, line,
                    palette.text);
        top += lineHeight_;
    }
}

} // namespace tarvik
