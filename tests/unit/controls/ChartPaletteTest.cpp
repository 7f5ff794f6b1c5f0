#include "controls/ChartPalette.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <vector>

namespace tarvik {
namespace {

constexpr Colour black{0, 0, 0};
constexpr Colour white{255, 255, 255};

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
