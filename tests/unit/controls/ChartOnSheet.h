#pragma once

#include "controls/ChartPainter.h"
#include "controls/RecordingCanvas.h"
#include "controls/TestForm.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {

/// A chart of its own, drawn on recording sheets in colours that tell what is what.
class ChartOnSheet : public testing::Test {
protected:
    using Kind = RecordingCanvas::Kind;
    using Drawn = RecordingCanvas::Drawn;
    using Points = RecordingCanvas::Points;
    using Values = std::vector<double>;

    ChartOnSheet() {
        setAxis(ChartAxisId::X, "Days", GridPen::Ditted, GridPen::Ditted);
        setAxis(ChartAxisId::Y, "Bytes", GridPen::Ditted, GridPen::Ditted);
        chart.setShowsLegend(false);
        chart.setColumnLabel(0, "Rcvd");
        chart.setColumnLabel(1, "Sent");
    }

    void setAxis(ChartAxisId id, std::string title, GridPen major, GridPen minor) {
        chart.setAxis(id, {.title = std::move(title), .majorPen = major, .minorPen = minor});
    }

    void fill(const std::vector<Values>& columns) {
        chart.setColumnCount(static_cast<int>(columns.size()));
        chart.setRowCount(static_cast<int>(columns[0].size()));
        for (int column = 0; column < chart.columnCount(); ++column) {
            for (int row = 0; row < chart.rowCount(); ++row) {
                chart.setData(
                    column, row,
                    columns[static_cast<std::size_t>(column)][static_cast<std::size_t>(row)]);
            }
        }
        chart.showData();
    }

    RecordingCanvas draw(double width, double height, double scale = 1) {
        RecordingCanvas canvas({width, height}, scale);
        painter.draw(canvas, palette);
        return canvas;
    }

    DrawnBox plot() const {
        const CanvasArea& area = painter.plot();
        return {area.left, area.top, area.right, area.bottom};
    }
    /// Where a value of a scale stands, in whole pixels.
    double rowOf(double value, double low, double high) const {
        return std::round(plot().bottom -
                          (value - low) / (high - low) * (plot().bottom - plot().top));
    }

    /// What is filled with a colour in one column of pixels: from a row to before another.
    struct Filled {
        double top = 0;
        double bottom = 0;
    };
    /// What rectangles of a colour fill within the plot, by columns of pixels.
    std::map<int, Filled> filled(const RecordingCanvas& canvas, const Colour& colour) const {
        std::map<int, Filled> columns;
        for (const Drawn& one : canvas.of(Kind::Polygon, colour)) {
            const DrawnBox box = one.box();
            if (one.points.size() != 4 || box.bottom < plot().top) {
                continue; // no rectangle, or a part of the key
            }
            for (int x = static_cast<int>(box.left); x < box.right; ++x) {
                const auto [place, isNew] = columns.try_emplace(x, Filled{box.top, box.bottom});
                place->second.top = std::min(place->second.top, box.top);
                place->second.bottom = std::max(place->second.bottom, box.bottom);
            }
        }
        return columns;
    }

    static bool isNumber(const Drawn& one) {
        return std::isdigit(static_cast<unsigned char>(one.text.back())) != 0;
    }
    std::vector<Drawn> labels(const RecordingCanvas& canvas, bool ofRows) const {
        std::vector<Drawn> found;
        for (const Drawn& one : canvas.of(Kind::Text)) {
            if (isNumber(one) && (one.points[0].y > plot().bottom) == ofRows) {
                found.push_back(one);
            }
        }
        return found;
    }
    std::vector<Drawn> valueLabels(const RecordingCanvas& canvas) const {
        return labels(canvas, false);
    }
    std::vector<Drawn> rowLabels(const RecordingCanvas& canvas) const {
        std::vector<Drawn> found = labels(canvas, true);
        std::sort(found.begin(), found.end(), [](const Drawn& one, const Drawn& other) {
            return one.points[0].x < other.points[0].x;
        });
        return found;
    }

    static constexpr Colour background{250, 250, 250};
    static constexpr Colour text{10, 10, 10};
    static constexpr Colour axis{20, 20, 20};
    static constexpr Colour majorGrid{30, 30, 30};
    static constexpr Colour minorGrid{40, 40, 40};
    static constexpr std::array<Colour, 2> lineColours{{{0, 0, 200}, {200, 100, 0}}};
    static constexpr std::array<Colour, 2> fillColours{{{0, 0, 100}, {100, 50, 0}}};
    const ChartPalette palette{.background = background,
                               .text = text,
                               .axis = axis,
                               .majorGrid = majorGrid,
                               .minorGrid = minorGrid,
                               .columns = lineColours,
                               .fills = fillColours};

    BareForm form;
    Chart chart{form, "chtValues", {.title = "Traffic"}};
    ChartPainter painter{chart};
};

/// Numbers that look thrown but are the same in every run.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : state_(seed) {}

    /// From `least` to `most`.
    std::int64_t whole(std::int64_t least, std::int64_t most) {
        const auto count = static_cast<std::uint64_t>(most - least) + 1;
        return least + static_cast<std::int64_t>(next() % count);
    }

private:
    std::uint64_t next() {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31U);
    }

    std::uint64_t state_;
};

} // namespace tarvik
