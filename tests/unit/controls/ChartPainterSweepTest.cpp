#include "controls/ChartOnSheet.h"

#include <algorithm>

namespace tarvik {
namespace {

/// From nothing much to more than a large screen, narrow ones and low ones, and what the history
/// window leaves its chart.
const std::vector<CanvasSize> sizes{{40, 30},   {60, 300},  {120, 90},   {160, 120},
                                    {210, 126}, {320, 200}, {532, 252},  {800, 600},
                                    {100, 900}, {1900, 90}, {3000, 2000}};
constexpr std::array scales{1.0, 1.25, 1.5, 2.0};
constexpr std::array rowCounts{0, 1, 2, 9, 10, 11, 99, 1000, 123'456};
constexpr std::array types{ChartType::Line, ChartType::Bar, ChartType::Area, ChartType::Step};

class ChartPainterSweepTest : public ChartOnSheet {
protected:
    ChartPainterSweepTest() {
        chart.setTitle("Data total (received+sent)");
        setAxis(ChartAxisId::X, "connections", GridPen::Ditted, GridPen::Ditted);
        setAxis(ChartAxisId::Y, "transfer (kilo-bytes)", GridPen::Ditted, GridPen::Ditted);
    }

    /// So many values from `least` to `most`, both of them among these.
    static Values thrown(int count, double least, double most, std::uint32_t seed = 1) {
        Dice dice(seed);
        Values values;
        for (int row = 0; row < count; ++row) {
            const auto part = static_cast<double>(dice.whole(0, 1000)) / 1000;
            values.push_back(least + (most - least) * part);
        }
        if (count > 1) {
            values[static_cast<std::size_t>(count) / 3] = least;
            values.back() = most;
        }
        return values;
    }
    /// Gives rows the names of records from `first` on.
    void startAt(int first) { chart.setFirstRow(first); }
    static void expectDisjoint(const std::vector<Drawn>& texts) {
        for (std::size_t i = 0; i < texts.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                EXPECT_FALSE(texts[i].box().meets(texts[j].box()))
                    << "\"" << texts[i].text << "\" lies over \"" << texts[j].text << "\"";
            }
        }
    }
    /// Draws on sheets of all sizes at all scales; `look` is to find fault with each.
    template <class Look>
    void onAllSheets(Look look) {
        for (const CanvasSize& size : sizes) {
            for (const double scale : scales) {
                SCOPED_TRACE(testing::Message() << size.width << " x " << size.height << " at "
                                                << scale << ", " << chart.rowCount() << " rows");
                look(draw(size.width, size.height, scale));
                if (HasFailure()) {
                    return; // one is enough
                }
            }
        }
    }
    /// The pixels from the left edge of the plot over which a row reaches, the last one included.
    std::pair<int, int> pixelsOf(int row) const {
        const auto width = static_cast<std::int64_t>(plot().right - plot().left);
        const std::int64_t rows = chart.rowCount();
        return {static_cast<int>(row * width / rows),
                static_cast<int>(((row + 1) * width + rows - 1) / rows - 1)};
    }
    /// Where the line of what is read off stands.
    double readingLine(const RecordingCanvas& canvas) const {
        const std::vector<Drawn> lines = canvas.of(Kind::Line, text);
        return lines.empty() ? -1 : lines[0].points[0].x;
    }
};

/// Values of one kind.
struct Spread {
    const char* name;
    double least;
    double most;

    friend std::ostream& operator<<(std::ostream& out, const Spread& one) {
        return out << one.least << " to " << one.most;
    }
};

class LabelsTest : public ChartPainterSweepTest, public testing::WithParamInterface<Spread> {};

TEST_P(LabelsTest, AreApartAndOnTheSheet) {
    for (const int rows : rowCounts) {
        fill({thrown(rows, GetParam().least, GetParam().most)});
        for (const int first : {1, 100, 98'765}) {
            startAt(first);
            onAllSheets([&](const RecordingCanvas& canvas) {
                std::vector<Drawn> labels = rowLabels(canvas);
                for (const Drawn& label : valueLabels(canvas)) {
                    labels.push_back(label);
                }
                expectDisjoint(labels);
                for (const Drawn& label : labels) {
                    EXPECT_TRUE(label.box().within(canvas.sheet())) << label.text;
                }
            });
        }
    }
}

TEST_P(LabelsTest, AreThereWhereThereIsRoom) {
    for (const int rows : rowCounts) {
        fill({thrown(rows, GetParam().least, GetParam().most)});
        onAllSheets([&](const RecordingCanvas& canvas) {
            const bool room = canvas.size().width >= 320 * canvas.scale() &&
                              canvas.size().height >= 200 * canvas.scale();
            if (rows > 0 && room) {
                EXPECT_GE(valueLabels(canvas).size(), 3U);
                EXPECT_GE(rowLabels(canvas).size(),
                          std::min<std::size_t>(static_cast<std::size_t>(rows), 2U));
                EXPECT_LE(rowLabels(canvas).size(), 11U);
            }
        });
    }
}

INSTANTIATE_TEST_SUITE_P(All, LabelsTest,
                         testing::Values(Spread{"Bytes", 0, 123'456'789}, Spread{"Tiny", 0, 0.0001},
                                         Spread{"Huge", 0, 900'000'000'000'000},
                                         Spread{"Negative", -12'345.678, 0},
                                         Spread{"Mixed", -0.5, 99.9}, Spread{"Zero", 0, 0}),
                         [](const auto& given) { return std::string(given.param.name); });

TEST_F(ChartPainterSweepTest, NothingIsDrawnBesideTheSheet) {
    for (const int rows : {0, 1, 2, 11, 1000}) {
        for (const ChartType type : types) {
            chart.setType(type);
            fill({thrown(rows, -20, 100), thrown(rows, -50, 30, 2)});
            for (const int row : {Chart::none, 0, rows - 1}) {
                chart.setReadRow(row);
                onAllSheets([](const RecordingCanvas& canvas) {
                    for (const Drawn& one : canvas.drawn) {
                        DrawnBox box = one.box();
                        if (one.kind == Kind::Line) {
                            box.right += 1;
                            box.bottom += 1;
                        }
                        EXPECT_TRUE(one.kind == Kind::Text || box.within(canvas.sheet()))
                            << box.left << "," << box.top << " to " << box.right << ","
                            << box.bottom;
                    }
                });
            }
        }
    }
}

TEST_F(ChartPainterSweepTest, NoTextReachesBeyondTheSheet) {
    fill({thrown(50, -20, 100), thrown(50, -50, 30, 2)});
    for (const int row : {Chart::none, 0, 25, 49}) {
        chart.setReadRow(row);
        onAllSheets([](const RecordingCanvas& canvas) {
            for (const Drawn& one : canvas.of(Kind::Text)) {
                EXPECT_TRUE(one.box().within(canvas.sheet())) << one.text;
            }
        });
    }
}

TEST_F(ChartPainterSweepTest, TextsAreApartOnSheetsAsLargeAsTheWindowGives) {
    for (const double scale : scales) {
        for (const double width : {532.0, 640.0, 1200.0}) {
            fill({thrown(500, 0, 900'000'000'000'000), thrown(500, 0, 5)});

            expectDisjoint(draw(width * scale, 252 * scale, scale).of(Kind::Text));
        }
    }
}

TEST_F(ChartPainterSweepTest, SheetsWithoutRoomAreLeftEmpty) {
    fill({thrown(50, -20, 100), thrown(50, -50, 30, 2)});
    chart.setReadRow(10);
    for (const ChartType type : types) {
        chart.setType(type);
        for (const CanvasSize& size : std::vector<CanvasSize>{
                 {0, 0}, {1, 1}, {0, 500}, {500, 0}, {2, 3000}, {3000, 2}, {17, 17}, {40, 30}}) {
            for (const double scale : scales) {
                EXPECT_EQ(draw(size.width, size.height, scale).drawn.size(), 1U);
                for (const double x : {-1.0, 0.0, size.width / 2, size.width, 1e9}) {
                    EXPECT_EQ(painter.rowAt(x), Chart::none);
                }
            }
        }
    }
}

TEST_F(ChartPainterSweepTest, SheetsOfEverySizeCanBeDrawnOn) {
    for (const int rows : {0, 1, 3, 200}) {
        fill({thrown(rows, -20, 100), thrown(rows, -50, 30, 2)});
        chart.setReadRow(rows - 1);
        for (const ChartType type : types) {
            chart.setType(type);
            for (int side = 0; side < 150; ++side) {
                EXPECT_FALSE(draw(side, 300 - side, 1).drawn.empty());
                EXPECT_FALSE(draw(side + 0.5, side + 0.25, 1.25).drawn.empty());
            }
        }
    }
}

TEST_F(ChartPainterSweepTest, AMillionRowsAreDrawnWithNoMoreThanThePixelsNeed) {
    fill({thrown(1'000'000, 0, 100), thrown(1'000'000, 0, 100, 2)});
    for (const ChartType type : types) {
        chart.setType(type);

        EXPECT_LT(draw(1000, 600).drawn.size(), 4U * 1000);
    }
}

/// Many rows of one kind.
class CrowdTest : public ChartPainterSweepTest, public testing::WithParamInterface<Spread> {
protected:
    const ValueScale scale = valueScale(GetParam().least, GetParam().most, 10);

    /// Where a row's value and zero stand.
    double yOf(int column, int row) const {
        return rowOf(chart.data(column, row), scale.low, scale.high());
    }
    double zero() const { return rowOf(0, scale.low, scale.high()); }

    /// Each row's value is within what is filled in one of its columns of pixels.
    void expectPeaksSeen(const std::map<int, Filled>& columns, int column, bool fromZero) {
        for (int row = 0; row < chart.rowCount(); ++row) {
            const double y = yOf(column, row);
            bool seen = fromZero && y == zero();
            const auto [first, last] = pixelsOf(row);
            for (int x = first; x <= last && !seen; ++x) {
                const auto found = columns.find(x + static_cast<int>(plot().left));
                seen = found != columns.end() && found->second.top <= y &&
                       y <= found->second.bottom - (fromZero ? 0 : 1);
            }
            ASSERT_TRUE(seen) << "row " << row << " of " << chart.rowCount();
        }
    }
    /// Nothing is filled beyond the values of the rows around.
    void expectNothingElse(const std::map<int, Filled>& columns, int column, bool fromZero) {
        const auto width = static_cast<std::int64_t>(plot().right - plot().left);
        const std::int64_t rows = chart.rowCount();
        for (const auto& [place, shown] : columns) {
            const std::int64_t x = place - static_cast<int>(plot().left);
            ASSERT_TRUE(x >= 0 && x < width);
            // A line comes from the column before.
            const std::int64_t from =
                std::max<std::int64_t>(0, (x - (fromZero ? 0 : 1)) * rows / width - 1);
            const std::int64_t to = std::min(rows - 1, ((x + 1) * rows + width - 1) / width);
            double top = fromZero ? zero() : plot().bottom;
            double bottom = fromZero ? zero() : plot().top;
            for (std::int64_t row = from; row <= to; ++row) {
                top = std::min(top, yOf(column, static_cast<int>(row)));
                bottom = std::max(bottom, yOf(column, static_cast<int>(row)));
            }
            ASSERT_GE(shown.top, top) << x;
            ASSERT_LE(shown.bottom, bottom + (fromZero ? 0 : 1)) << x;
        }
    }
};

TEST_P(CrowdTest, LosesNoPeak) {
    for (const int rows : {400, 451, 701, 5000, 23'456}) {
        for (const std::uint32_t seed : {1U, 2U}) {
            fill({thrown(rows, GetParam().least, GetParam().most, seed)});
            for (const ChartType type : types) {
                SCOPED_TRACE(testing::Message() << rows << " rows, type " << static_cast<int>(type)
                                                << ", seed " << seed);
                chart.setType(type);
                const RecordingCanvas canvas = draw(533, 311);
                const bool bars = type == ChartType::Bar;
                const auto lines = filled(canvas, lineColours[0]);
                expectPeaksSeen(lines, 0, bars);
                expectNothingElse(lines, 0, bars);
                if (type == ChartType::Area) {
                    expectPeaksSeen(filled(canvas, fillColours[0]), 0, true);
                    expectNothingElse(filled(canvas, fillColours[0]), 0, true);
                }
            }
        }
    }
}

TEST_P(CrowdTest, HasALineWithoutGaps) {
    const Values noise = thrown(20'000, GetParam().least, GetParam().most);
    fill({noise});
    draw(533, 311);
    // Forty rows share a column of pixels; the values jump where one ends.
    const auto width = static_cast<std::size_t>(plot().right - plot().left);
    Values jumps(40 * width, GetParam().least);
    std::fill(jumps.begin() + 40 * 100, jumps.begin() + 40 * 300, GetParam().most);
    for (const Values& values : {noise, jumps}) {
        fill({values});

        const auto columns = filled(draw(533, 311), lineColours[0]);

        ASSERT_EQ(columns.size(), width);
        for (auto column = std::next(columns.begin()); column != columns.end(); ++column) {
            const Filled& before = std::prev(column)->second;
            EXPECT_TRUE(column->second.top <= before.bottom && before.top <= column->second.bottom);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, CrowdTest,
                         testing::Values(Spread{"Positive", 0, 1000},
                                         Spread{"FarFromZero", 900, 1000},
                                         Spread{"Negative", -1000, -1}, Spread{"Mixed", -730, 912}),
                         [](const auto& given) { return std::string(given.param.name); });

TEST_F(ChartPainterSweepTest, AColumnOfPixelsBelongsToTheRowAtItsLeft) {
    for (const int rows : {1, 2, 7, 100, 496, 497, 498, 1000, 123'456}) {
        fill({thrown(rows, 0, 100)});
        draw(533, 311);
        const auto width = static_cast<std::int64_t>(plot().right - plot().left);

        for (std::int64_t x = 0; x < width; ++x) {
            ASSERT_EQ(painter.rowAt(plot().left + static_cast<double>(x)), x * rows / width)
                << rows << " rows, pixel " << x;
        }
        for (const double beside : {plot().left - 1, plot().right, plot().right + 50, -7.0, 1e12}) {
            EXPECT_EQ(painter.rowAt(beside), Chart::none);
        }
    }
}

TEST_F(ChartPainterSweepTest, ARowIsFoundWhereItsBarIs) {
    chart.setType(ChartType::Bar);
    for (const int rows : {1, 2, 7, 50, 90}) {
        fill({Values(static_cast<std::size_t>(rows), 50),
              Values(static_cast<std::size_t>(rows), 5)});
        const RecordingCanvas canvas = draw(533, 311);
        for (const Colour& colour : lineColours) {
            const std::vector<Drawn> bars = canvas.of(Kind::Polygon, colour);
            ASSERT_GT(bars.size(), static_cast<std::size_t>(rows)); // with the mark of the key
            for (int row = 0; row < rows; ++row) {
                const DrawnBox bar = bars[static_cast<std::size_t>(row)].box();
                EXPECT_EQ(painter.rowAt(bar.left), row);
                EXPECT_EQ(painter.rowAt(bar.right - 1), row);
            }
        }
    }
}

TEST_F(ChartPainterSweepTest, WhatIsReadOffStandsWhereItsRowIs) {
    for (const int rows : {1, 2, 7, 100, 247, 482, 483, 484, 485, 490, 700, 5000}) {
        fill({thrown(rows, 0, 100)});
        // Rows from both ends, and some between.
        for (int step = 0; step < 60; ++step) {
            const int row = static_cast<int>(std::int64_t{rows - 1} * step / 59);
            chart.setReadRow(row);
            const auto line = static_cast<int>(readingLine(draw(533, 311)) - plot().left);
            const auto [first, last] = pixelsOf(row);
            ASSERT_TRUE(line >= first && line <= last)
                << "row " << row << " of " << rows << " from " << first << " to " << last
                << " is read off at " << line;
        }
    }
}

TEST_F(ChartPainterSweepTest, ThePointerReadsOffWhatIsBelowIt) {
    for (const int rows : {700, 5000, 123'456}) {
        fill({thrown(rows, 0, 100)});
        draw(533, 311);
        for (double x = plot().left; x < plot().right; x += 3) {
            chart.setReadRow(painter.rowAt(x));
            ASSERT_EQ(readingLine(draw(533, 311)), x) << rows;
        }
    }
}

TEST_F(ChartPainterSweepTest, RowsAreCrowdedAtTheSamePlainWidthAtEveryScale) {
    const auto crowded = [this](int rows, double scale) {
        fill({thrown(rows, 0, 100)});
        const RecordingCanvas canvas = draw(600 * scale, 320 * scale, scale);
        const auto pieces = chart.type() == ChartType::Bar
                                ? canvas.of(Kind::Polygon, lineColours[0]).size()
                                : canvas.of(Kind::Line, lineColours[0]).size();
        return pieces != (chart.type() == ChartType::Bar ? static_cast<std::size_t>(rows) : 1U);
    };
    for (const ChartType type : types) {
        chart.setType(type);
        for (const int rows : {150, 205, 240, 300, 400, 550}) {
            for (const double scale : {1.25, 1.5, 2.0}) {
                EXPECT_EQ(crowded(rows, scale), crowded(rows, 1))
                    << rows << " rows, type " << static_cast<int>(type) << ", scale " << scale;
            }
        }
    }
}

/// A chart that is drawn at different scales.
struct ScaledChart {
    const char* name;
    ChartType type;
    int rows;
};

class ScaleTest : public ChartPainterSweepTest, public testing::WithParamInterface<ScaledChart> {};

TEST_P(ScaleTest, TheSameImageIsLargerAtLargerScales) {
    chart.setType(GetParam().type);
    fill({thrown(GetParam().rows, -20, 100), thrown(GetParam().rows, -50, 30, 2)});
    chart.setReadRow(GetParam().rows / 2);
    const RecordingCanvas small = draw(600, 320);
    for (const double scale : {1.25, 1.5, 2.0}) {
        SCOPED_TRACE(scale);
        const RecordingCanvas large = draw(600 * scale, 320 * scale, scale);

        ASSERT_EQ(large.drawn.size(), small.drawn.size());
        for (std::size_t i = 0; i < small.drawn.size(); ++i) {
            const Drawn& one = small.drawn[i];
            const Drawn& other = large.drawn[i];
            ASSERT_EQ(other.kind, one.kind);
            EXPECT_EQ(other.text, one.text);
            EXPECT_EQ(other.style, one.style);
            EXPECT_NEAR(other.width, one.width * scale, 0.5);
            ASSERT_EQ(other.points.size(), one.points.size());
            for (std::size_t point = 0; point < one.points.size(); ++point) {
                // Each distance is rounded for itself.
                EXPECT_NEAR(other.points[point].x, one.points[point].x * scale, 3);
                EXPECT_NEAR(other.points[point].y, one.points[point].y * scale, 3);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, ScaleTest,
                         testing::Values(ScaledChart{"Line", ChartType::Line, 12},
                                         ScaledChart{"LineWithoutMarks", ChartType::Line, 90},
                                         ScaledChart{"Area", ChartType::Area, 90},
                                         ScaledChart{"Step", ChartType::Step, 30},
                                         ScaledChart{"Bars", ChartType::Bar, 30},
                                         ScaledChart{"NarrowBars", ChartType::Bar, 100}),
                         [](const auto& given) { return std::string(given.param.name); });

} // namespace
} // namespace tarvik
