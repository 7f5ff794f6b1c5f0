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

} // namespace
} // namespace tarvik
