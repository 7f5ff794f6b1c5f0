#include "ImagePixels.h"

#include "contracts/painted/PaintedCanvas.h"
#include "linux/face/QtCanvas.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

/// A white image of that many pixels, so many of them to a unit.
QImage sheet(int width, int height, double ratio = 1) {
    QImage image(width, height, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    return image;
}

class SolidCanvasTest : public testing::TestWithParam<CanvasCase> {};

TEST_P(SolidCanvasTest, IsSharpBetweenAPlainAndAFineScreen) {
    EXPECT_EQ(seenOnCanvas(GetParam().draw, 1.25), GetParam().seen);
}

INSTANTIATE_TEST_SUITE_P(QtCanvas, SolidCanvasTest, testing::ValuesIn(solidCases()),
                         [](const auto& one) { return nameOf(one.param); });

TEST(QtCanvasTest, ItIsAsLargeAsTheScreenHasPixels) {
    QImage image = sheet(240, 150, 1.5);
    QPainter painter(&image);

    const face::QtCanvas canvas(painter, {160, 100}, QFont());

    EXPECT_EQ(canvas.size(), (CanvasSize{240, 150}));
    EXPECT_EQ(canvas.scale(), 1.5);
}

TEST(QtCanvasTest, ItBeginsAtAWholePixel) {
    QImage image = sheet(12, 7, 1.5);
    {
        QPainter painter(&image);
        painter.translate(1, 1); // a pixel and a half
        face::QtCanvas canvas(painter, {7, 4}, QFont());
        drawLine(canvas, {{1, 1}, {5, 1}}, 1);
    }

    EXPECT_EQ(inCharacters(pixelsOf(image)), "............\n"
                                             "............\n"
                                             "............\n"
                                             "...#####....\n"
                                             "............\n"
                                             "............\n"
                                             "............\n");
}

TEST(QtCanvasTest, ThePainterIsAsBeforeAfterwards) {
    QImage image = sheet(12, 7, 2);
    QPainter painter(&image);
    {
        face::QtCanvas canvas(painter, {6, 3}, QFont());
        drawLine(canvas, {{1, 1}, {5, 3}}, 1);
    }

    EXPECT_EQ(painter.transform(), QTransform());
    EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
}

TEST(QtCanvasTest, LevelPartsOfASlantedLineAreSharp) {
    const auto mixed = [](Canvas& canvas) { drawLine(canvas, {{1, 2}, {6, 2}, {10, 5}}, 1); };

    const std::string image = seenOnCanvas(mixed, 1);

    EXPECT_EQ(image.substr(0, 13), "............\n");
    EXPECT_EQ(image.substr(26, 6), ".#####");
    EXPECT_NE(image.find('?'), std::string::npos) << "slanted parts are smooth";
}

TEST(QtCanvasTest, DashesGoOnFromPartToPart) {
    const auto drawn = [](int parts) {
        std::vector<CanvasPoint> points;
        for (int i = 0; i <= parts; ++i) {
            points.push_back({i * 120.0 / parts, i * 60.0 / parts});
        }
        return paintedOnCanvas(
            {120, 60},
            [&points](Canvas& canvas) { drawLine(canvas, points, 2, LineStyle::Dashed); }, 1);
    };

    EXPECT_LT(differingPart(drawn(30), drawn(1)), 0.002);
}

TEST(QtCanvasTest, AnAreaWithManyCornersIsFilled) {
    std::vector<CanvasPoint> corners{{120, 60}, {0, 60}};
    for (int i = 0; i <= 600; ++i) {
        corners.push_back({i * 0.2, 30 + i % 2 * 5.0});
    }

    const Pixels pixels = paintedOnCanvas(
        {120, 60}, [&corners](Canvas& canvas) { drawPolygon(canvas, corners); }, 1);

    for (int x = 0; x < 120; ++x) {
        EXPECT_EQ(pixels.at(x, 29), 0xFFFFFFU) << x;
        EXPECT_EQ(pixels.at(x, 36), 0U) << x;
        EXPECT_EQ(pixels.at(x, 59), 0U) << x;
    }
}

TEST(QtCanvasTest, TextIsTwiceAsLargeOnAFineScreen) {
    const auto widthOn = [](double ratio) {
        QImage image = sheet(12, 7, ratio);
        QPainter painter(&image);
        return face::QtCanvas(painter, {12, 7}, QFont()).textSize("Received").width;
    };

    EXPECT_NEAR(widthOn(2), 2 * widthOn(1), widthOn(1) / 8);
}

} // namespace
} // namespace tarvik
