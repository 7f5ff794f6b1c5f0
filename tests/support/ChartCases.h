#pragma once

#include "controls/ChartPainter.h"
#include "controls/Form.h"

#include <array>
#include <ostream>
#include <string>
#include <vector>

namespace tarvik {

/// A chart that is drawn and compared with the image of that name in tests/reference_images.
struct ChartCase {
    // Pixels.
    static constexpr int width = 480;
    static constexpr int height = 300;

    std::string name;
    ChartType type = ChartType::Line;
    int columns = 1;
    int rows = 24;
    bool negative = false;
    bool dark = false;

    ChartPalette palette() const {
        return dark ? ChartPalette::on({32, 32, 36}, {230, 230, 230})
                    : ChartPalette::on({255, 255, 255}, {0, 0, 0});
    }

    friend std::ostream& operator<<(std::ostream& out, const ChartCase& one) {
        return out << one.name;
    }
};

inline std::vector<ChartCase> chartCases() {
    return {
        {.name = "line_one"},
        {.name = "line_two", .columns = 2},
        {.name = "bar_one", .type = ChartType::Bar},
        {.name = "bar_two", .type = ChartType::Bar, .columns = 2},
        {.name = "area_one", .type = ChartType::Area},
        {.name = "area_two", .type = ChartType::Area, .columns = 2},
        {.name = "step_one", .type = ChartType::Step},
        {.name = "step_two", .type = ChartType::Step, .columns = 2},
        {.name = "bar_negative", .type = ChartType::Bar, .columns = 2, .negative = true},
        {.name = "line_negative", .columns = 2, .negative = true},
        {.name = "empty", .rows = 0},
        {.name = "single_row", .columns = 2, .rows = 1},
        {.name = "many_rows", .columns = 2, .rows = 100'000},
        {.name = "dark", .columns = 2, .dark = true},
    };
}

inline std::string nameOf(const ChartCase& one) {
    return one.name;
}

/// The chart of a case, in a form that nobody shows.
class ChartOfCase : public Form {
public:
    explicit ChartOfCase(const ChartCase& one) : Form("frmChart", "Chart") {
        chart.setType(one.type);
        chart.setColumnCount(one.columns);
        chart.setEmptyText("Nothing to draw yet. Press a button that fills the chart.");
        chart.setColumnLabel(0, "Received");
        chart.setColumnLabel(1, "Sent");
        for (const auto& [id, title] :
             {std::pair(ChartAxisId::X, "Day"), std::pair(ChartAxisId::Y, "Megabytes")}) {
            ChartAxis axis = chart.axis(id);
            axis.title = title;
            axis.majorPen = GridPen::Ditted;
            chart.setAxis(id, axis);
        }
        chart.setRowCount(one.rows);
        for (int column = 0; column < one.columns; ++column) {
            for (int row = 0; row < one.rows; ++row) {
                chart.setData(column, row, value(one, column, row));
            }
        }
        chart.showData();
    }

    Chart chart{*this, "chtCase", {.title = "Traffic of a month"}};

private:
    static double value(const ChartCase& one, int column, int row) {
        // Days of a month, and beyond them waves that grow and are not smooth.
        static constexpr std::array<std::array<int, 24>, 2> days{{
            {620,  710,  655,  300, 280,  540, 590,  810, 990,  1210, 1180, 870,
             1020, 1340, 1275, 960, 1100, 905, 1480, 760, 1390, 1315, 1405, 1120},
            {120, 160, 90,  40,  35,  210, 180, 240, 330, 310, 150, 260,
             280, 420, 390, 275, 300, 190, 510, 220, 460, 350, 480, 305},
        }};
        const auto place = static_cast<std::size_t>(column);
        if (one.rows > 24) {
            const int wave = std::abs(row % 20'000 - 10'000) / 10;
            const int noise = (row * (31 + 12 * column)) % 97;
            return (wave + noise * 3) * (column == 0 ? 1.0 : 0.4);
        }
        const int day = days[place][static_cast<std::size_t>(row)];
        return one.negative && row % 5 == 3 ? -day : day;
    }
};

} // namespace tarvik
