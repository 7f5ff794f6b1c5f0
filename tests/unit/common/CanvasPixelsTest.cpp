#include "common/CanvasPixels.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using face::PixelRect;
using Points = std::vector<CanvasPoint>;

TEST(CanvasPixelsTest, ALineAlongTheAxesIsMadeOfRectangles) {
    const auto pieces = face::pixelsOf(Points{{3, 2}, {9, 2}, {9, 4}}, {}, 1);

    EXPECT_EQ(pieces, (std::vector<PixelRect>{{3, 2, 10, 3}, {9, 2, 10, 5}}));
}

TEST(CanvasPixelsTest, ASlantedLineIsNot) {
    EXPECT_EQ(face::pixelsOf(Points{{3, 2}, {9, 2}, {10, 4}}, {}, 1), std::nullopt);
}

TEST(CanvasPixelsTest, PlacesBetweenPixelsGoToTheNearest) {
    const auto pieces = face::pixelsOf(Points{{2.6, 2.4}, {9.4, 2.4}}, {}, 1);

    EXPECT_EQ(pieces, (std::vector<PixelRect>{{3, 2, 10, 3}}));
}

TEST(CanvasPixelsTest, APlaceIsALineOfOnePixel) {
    EXPECT_EQ(face::pixelsOf(Points{{3, 2}, {3, 2}}, {}, 1),
              (std::vector<PixelRect>{{3, 2, 4, 3}}));
}

TEST(CanvasPixelsTest, DashesGrowWithTheScaleOrTheWidth) {
    EXPECT_EQ(face::dashes({}, 1), std::vector<int>{});
    EXPECT_EQ(face::dashes({.colour = {}, .width = 1, .style = LineStyle::Dotted}, 1),
              (std::vector{1, 2}));
    EXPECT_EQ(face::dashes({.colour = {}, .width = 1, .style = LineStyle::Dotted}, 2),
              (std::vector{2, 4}));
    EXPECT_EQ(face::dashes({.colour = {}, .width = 3, .style = LineStyle::Dashed}, 2),
              (std::vector{12, 6}));
}

TEST(CanvasPixelsTest, AStrokeIsAtLeastAPixelWide) {
    EXPECT_EQ(face::pixelWidth({.colour = {}, .width = 0.2}), 1);
    EXPECT_EQ(face::pixelWidth({.colour = {}, .width = 1.4}), 1);
    EXPECT_EQ(face::pixelWidth({.colour = {}, .width = 1.5}), 2);
}

TEST(CanvasPixelsTest, ARectangleIsKnownByItsCorners) {
    EXPECT_EQ(face::rectangleOf(Points{{3, 2}, {9, 2}, {9, 5}, {3, 5}}), (PixelRect{3, 2, 9, 5}));
    EXPECT_EQ(face::rectangleOf(Points{{9, 5}, {9, 2}, {3, 2}, {3, 5}}), (PixelRect{3, 2, 9, 5}));
    EXPECT_EQ(face::rectangleOf(Points{{3, 2}, {9, 2}, {9, 5}, {4, 5}}), std::nullopt);
    EXPECT_EQ(face::rectangleOf(Points{{3, 2}, {9, 2}, {9, 5}}), std::nullopt);
}

TEST(CanvasPixelsTest, AnAreaIsMadeOfColumns) {
    const Points triangle{{0, 0}, {3, 0}, {0, 6}};

    EXPECT_EQ(face::columnsOf(triangle),
              (std::vector<PixelRect>{{0, 0, 1, 5}, {1, 0, 2, 3}, {2, 0, 3, 1}}));
}

TEST(CanvasPixelsTest, AnAreaMayLieOnBothSidesOfALine) {
    const Points bow{{0, 3}, {0, 0}, {4, 6}, {4, 3}};

    EXPECT_EQ(face::columnsOf(bow),
              (std::vector<PixelRect>{{0, 1, 1, 3}, {1, 2, 2, 3}, {2, 3, 3, 4}, {3, 3, 4, 5}}));
}

TEST(CanvasPixelsTest, FewerThanThreeCornersHaveNoArea) {
    EXPECT_TRUE(face::columnsOf({}).empty());
    EXPECT_TRUE(face::columnsOf(Points{{0, 0}}).empty());
    EXPECT_TRUE(face::columnsOf(Points{{0, 0}, {5, 5}}).empty());
}

TEST(CanvasPixelsTest, OfManyPointsInAColumnFourAreKept) {
    const Points points{{1, 5}, {1.1, 6}, {1.2, 9}, {1.3, 8}, {1.4, 2}, {1.45, 3}, {2, 4}};

    EXPECT_EQ(face::thinned(points), (Points{{1, 5}, {1.2, 9}, {1.4, 2}, {1.45, 3}, {2, 4}}));
}

TEST(CanvasPixelsTest, FewPointsStayAsTheyAre) {
    const Points points{{1, 5}, {1.1, 6}, {2, 9}, {7, 9}, {7, 9}, {2, 1}};

    EXPECT_EQ(face::thinned(points), points);
}

TEST(CanvasPixelsTest, AMillionPointsBecomeAFewForEachColumn) {
    Points points;
    for (int i = 0; i < 1'000'000; ++i) {
        points.push_back({i / 1000.0, static_cast<double>(i * 7 % 1000)});
    }

    EXPECT_LE(face::thinned(points).size(), 4U * 1001U);
}

} // namespace
} // namespace tarvik
