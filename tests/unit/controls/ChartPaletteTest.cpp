#include "controls/ChartPalette.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>
#include <vector>

namespace tarvik {
namespace {

constexpr Colour black{0, 0, 0};
constexpr Colour white{255, 255, 255};

// What the colours are measured with. `KnownContrastTest` holds it against figures that were worked
// out apart from any code: the program's own measure cannot be wrong in the same way unnoticed.

/// Relative luminance as accessibility guidelines define it.
double luminance(const Colour& colour) {
    const auto linear = [](int channel) {
        const double part = channel / 255.0;
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) +
           0.0722 * linear(colour.blue);
}

double contrast(const Colour& a, const Colour& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// How light the eye takes a colour to be, from 0 to 100 (L* of CIELAB).
double lightness(const Colour& colour) {
    const double y = luminance(colour);
    return y > 0.008856 ? 116 * std::cbrt(y) - 16 : 903.3 * y;
}

struct KnownContrast {
    Colour colour;
    double withWhite;
    double withBlack;
    double light; ///< L*
};

class KnownContrastTest : public testing::TestWithParam<KnownContrast> {};

TEST_P(KnownContrastTest, IsWhatIsMeasured) {
    EXPECT_NEAR(contrast(GetParam().colour, white), GetParam().withWhite, 0.0005);
    EXPECT_NEAR(contrast(black, GetParam().colour), GetParam().withBlack, 0.0005);
    EXPECT_NEAR(lightness(GetParam().colour), GetParam().light, 0.005);
}

INSTANTIATE_TEST_SUITE_P(All, KnownContrastTest,
                         testing::Values(KnownContrast{{255, 255, 255}, 1, 21, 100},
                                         KnownContrast{{0, 0, 0}, 21, 1, 0},
                                         KnownContrast{{255, 0, 0}, 3.998, 5.252, 53.23},
                                         KnownContrast{{0, 255, 0}, 1.372, 15.304, 87.74},
                                         KnownContrast{{0, 0, 255}, 8.592, 2.444, 32.3},
                                         KnownContrast{{119, 119, 119}, 4.478, 4.689, 50.03},
                                         KnownContrast{{10, 10, 10}, 19.798, 1.061, 2.74},
                                         KnownContrast{{11, 11, 11}, 19.683, 1.067, 3.02},
                                         KnownContrast{{217, 95, 2}, 3.758, 5.588, 55.01}));

/// A background that a desktop uses, with the text on it.
struct Ground {
    Colour background;
    Colour text;

    friend std::ostream& operator<<(std::ostream& out, const Ground& one) {
        return out << one.background.red << "_" << one.background.green << "_"
                   << one.background.blue;
    }
};

std::vector<Ground> grounds() {
    std::vector<Ground> all{
        {{255, 255, 225}, black}, {{253, 246, 227}, {88, 110, 117}},
        {{240, 240, 255}, black}, {{255, 240, 240}, black},
        {{0, 0, 64}, white},      {{35, 38, 41}, {239, 240, 241}},
        {{0, 43, 54}, white},     {{48, 10, 36}, white},
        {{0, 0, 0}, {0, 255, 0}},
    };
    // Every grey, and colours from all over; the text is what can be read on them.
    const auto add = [&all](const Colour& background) {
        all.push_back({background,
                       contrast(background, black) > contrast(background, white) ? black : white});
    };
    for (int grey = 0; grey <= 255; ++grey) {
        add({grey, grey, grey});
    }
    for (int red = 0; red <= 255; red += 51) {
        for (int green = 0; green <= 255; green += 51) {
            for (int blue = 0; blue <= 255; blue += 51) {
                add({red, green, blue});
            }
        }
    }
    return all;
}

/// What stands on the two grounds that most desktops have, measured against them.
struct UsualCase {
    Ground ground;
    std::array<Colour, 2> columns;
    std::array<double, 2> ofColumns;
    std::array<double, 2> ofFills;
    double ofMinorGrid;
    double ofMajorGrid;
    double ofAxis;
};

class UsualPaletteTest : public testing::TestWithParam<UsualCase> {};

TEST_P(UsualPaletteTest, HasTheContrastsThatWereChosen) {
    const UsualCase& expected = GetParam();
    const Colour& background = expected.ground.background;

    const ChartPalette palette = ChartPalette::on(background, expected.ground.text);

    EXPECT_EQ(palette.columns, expected.columns);
    for (std::size_t i = 0; i < expected.columns.size(); ++i) {
        EXPECT_NEAR(contrast(palette.columns[i], background), expected.ofColumns[i], 0.005);
        EXPECT_NEAR(contrast(palette.fills[i], background), expected.ofFills[i], 0.005);
    }
    EXPECT_NEAR(contrast(palette.minorGrid, background), expected.ofMinorGrid, 0.005);
    EXPECT_NEAR(contrast(palette.majorGrid, background), expected.ofMajorGrid, 0.005);
    EXPECT_NEAR(contrast(palette.axis, background), expected.ofAxis, 0.005);
}

INSTANTIATE_TEST_SUITE_P(All, UsualPaletteTest,
                         testing::Values(UsualCase{.ground = {white, black},
                                                   .columns = {{{16, 68, 140}, {217, 95, 2}}},
                                                   .ofColumns = {9.427, 3.758},
                                                   .ofFills = {1.896, 1.556},
                                                   .ofMinorGrid = 1.412,
                                                   .ofMajorGrid = 2.434,
                                                   .ofAxis = 5.742},
                                         UsualCase{.ground = {black, white},
                                                   .columns = {{{140, 200, 255}, {222, 116, 34}}},
                                                   .ofColumns = {11.821, 6.627},
                                                   .ofFills = {2.151, 1.646},
                                                   .ofMinorGrid = 1.388,
                                                   .ofMajorGrid = 2.998,
                                                   .ofAxis = 7.371}));

class ChartPaletteTest : public testing::TestWithParam<Ground> {
protected:
    Colour background = GetParam().background;
    ChartPalette palette = ChartPalette::on(background, GetParam().text);
};

TEST_P(ChartPaletteTest, KeepsBackgroundAndText) {
    EXPECT_EQ(palette.background, background);
    EXPECT_EQ(palette.text, GetParam().text);
}

TEST_P(ChartPaletteTest, ColumnsStandOutFromTheBackground) {
    EXPECT_GE(contrast(palette.columns[0], background), 3);
    EXPECT_GE(contrast(palette.columns[1], background), 3);
}

TEST_P(ChartPaletteTest, ColumnsDifferInLightness) {
    EXPECT_GE(std::abs(lightness(palette.columns[0]) - lightness(palette.columns[1])), 15);
}

TEST_P(ChartPaletteTest, FillsArePalerThanTheirLinesAndDifferToo) {
    for (std::size_t column = 0; column < palette.fills.size(); ++column) {
        EXPECT_LT(contrast(palette.fills[column], background),
                  contrast(palette.columns[column], background));
        EXPECT_GT(contrast(palette.fills[column], background), 1.05);
    }
    EXPECT_NE(palette.fills[0], palette.fills[1]);
}

TEST_P(ChartPaletteTest, TheGridStaysBehindTheAxesAndTheAxesBehindTheText) {
    EXPECT_GT(contrast(palette.minorGrid, background), 1.02);
    EXPECT_LT(contrast(palette.minorGrid, background), contrast(palette.majorGrid, background));
    EXPECT_LT(contrast(palette.majorGrid, background), contrast(palette.axis, background));
    EXPECT_LT(contrast(palette.axis, background), contrast(palette.text, background));
}

TEST_P(ChartPaletteTest, ChannelsAreColours) {
    for (const Colour& colour :
         {palette.axis, palette.majorGrid, palette.minorGrid, palette.columns[0],
          palette.columns[1], palette.fills[0], palette.fills[1]}) {
        for (const int channel : {colour.red, colour.green, colour.blue}) {
            EXPECT_GE(channel, 0);
            EXPECT_LE(channel, 255);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Grounds, ChartPaletteTest, testing::ValuesIn(grounds()));

} // namespace
} // namespace tarvik
