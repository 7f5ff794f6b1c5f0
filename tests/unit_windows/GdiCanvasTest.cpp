#include "support/MemorySheet.h"

#include "contracts/painted/PaintedCanvas.h"
#include "windows/face/GdiCanvas.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

HFONT systemFont() {
    return static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

// clang-format off

TEST(GdiCanvasTest, ASlantedLineTakesBothItsEnds) {
    const auto draw = [](Canvas& canvas) { drawLine(canvas, {{2, 1}, {6, 5}}, 1); };

    EXPECT_EQ(seenOnCanvas(draw, 1),
              "............\n"
              "..#.........\n"
              "...#........\n"
              "....#.......\n"
              ".....#......\n"
              "......#.....\n"
              "............\n");
}

TEST(GdiCanvasTest, LevelPartsOfASlantedLineAreSharp) {
    const auto draw = [](Canvas& canvas) { drawLine(canvas, {{1, 2}, {6, 2}, {9, 5}, {10, 5}}, 1); };

    EXPECT_EQ(seenOnCanvas(draw, 1),
              "............\n"
              "............\n"
              ".######.....\n"
              ".......#....\n"
              "........#...\n"
              ".........##.\n"
              "............\n");
}

// clang-format on

TEST(GdiCanvasTest, AWideSlantedLineIsWider) {
    const auto blackOf = [](const std::string& image) {
        return std::count(image.begin(), image.end(), '#');
    };
    const auto thin = [](Canvas& canvas) { drawLine(canvas, {{1, 1}, {9, 5}}, 1); };
    const auto wide = [](Canvas& canvas) { drawLine(canvas, {{1, 1}, {9, 5}}, 3); };

    EXPECT_GE(blackOf(seenOnCanvas(wide, 1)), 2 * blackOf(seenOnCanvas(thin, 1)));
}

TEST(GdiCanvasTest, ASlantedLineMayBeDashed) {
    const auto solid = [](Canvas& canvas) { drawLine(canvas, {{1, 1}, {9, 5}}, 1); };
    const auto dotted = [](Canvas& canvas) {
        drawLine(canvas, {{1, 1}, {9, 5}}, 1, LineStyle::Dotted);
    };
    const std::string whole = seenOnCanvas(solid, 1);
    const std::string parts = seenOnCanvas(dotted, 1);

    EXPECT_NE(parts.find('#'), std::string::npos);
    EXPECT_LT(std::count(parts.begin(), parts.end(), '#'),
              std::count(whole.begin(), whole.end(), '#') * 2 / 3);
}

TEST(GdiCanvasTest, ASlantedAreaIsFilled) {
    const auto draw = [](Canvas& canvas) { drawPolygon(canvas, {{0, 0}, {12, 0}, {0, 6}}); };

    const std::string image = seenOnCanvas(draw, 1);

    EXPECT_EQ(image.substr(0, 9), "#########");
    EXPECT_EQ(image.substr(13 * 6), "............\n");
}

TEST(GdiCanvasTest, TheContextIsAsBeforeAfterwards) {
    const MemorySheet sheet(12, 7);
    const HGDIOBJ font = GetCurrentObject(sheet.context(), OBJ_FONT);
    const HGDIOBJ pen = GetCurrentObject(sheet.context(), OBJ_PEN);
    {
        face::GdiCanvas canvas(sheet.context(), {12, 7}, 1, systemFont());
        drawLine(canvas, {{1, 1}, {5, 3}}, 1);
        canvas.text({0, 0}, "x", {255, 0, 0});
    }

    EXPECT_EQ(GetCurrentObject(sheet.context(), OBJ_FONT), font);
    EXPECT_EQ(GetCurrentObject(sheet.context(), OBJ_PEN), pen);
    EXPECT_EQ(GetBkMode(sheet.context()), OPAQUE);
    EXPECT_EQ(GetTextColor(sheet.context()), RGB(0, 0, 0));
}

TEST(GdiCanvasTest, TextStandsInItsBox) {
    const MemorySheet sheet(120, 60);
    CanvasSize size;
    {
        face::GdiCanvas canvas(sheet.context(), {120, 60}, 1, systemFont());
        size = canvas.textSize("Xg");
        canvas.text({20, 10}, "Xg", {});
    }

    const Pixels pixels = sheet.pixels();
    bool any = false;
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            const bool inside = x >= 19 && x <= 21 + size.width && y >= 10 && y < 10 + size.height;
            const bool white = pixels.at(x, y) == 0xFFFFFFU;
            EXPECT_TRUE(inside || white) << x << ' ' << y;
            any = any || !white;
        }
    }
    EXPECT_TRUE(any);
}

TEST(GdiCanvasTest, AMillionPointsAreDrawn) {
    std::vector<CanvasPoint> points;
    for (int i = 0; i < 1'000'000; ++i) {
        points.push_back({i * 480.0 / 1'000'000, static_cast<double>(i * 7 % 300)});
    }
    const MemorySheet sheet(480, 300);

    face::GdiCanvas(sheet.context(), {480, 300}, 1, systemFont())
        .line(points, {.colour = {}, .width = 1});

    EXPECT_EQ(sheet.pixels().at(240, 150), 0U);
}

} // namespace
} // namespace tarvik
