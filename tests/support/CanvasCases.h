#pragma once

#include "controls/Canvas.h"

#include <ostream>
#include <string>
#include <vector>

namespace tarvik {

/// Something drawn in black on a white canvas of 12 by 7 pixels, and what is seen of it.
struct CanvasCase {
    static constexpr int width = 12;
    static constexpr int height = 7;

    std::string name;
    void (*draw)(Canvas& canvas);
    std::string seen;

    friend std::ostream& operator<<(std::ostream& out, const CanvasCase& one) {
        return out << one.name;
    }
};

inline void drawLine(Canvas& canvas, const std::vector<CanvasPoint>& points, double width,
                     LineStyle style = LineStyle::Solid) {
    canvas.line(points, {.colour = {}, .width = width, .style = style});
}

inline void drawPolygon(Canvas& canvas, const std::vector<CanvasPoint>& corners) {
    canvas.polygon(corners, {});
}

// clang-format off

/// What looks the same at every scale.
inline std::vector<CanvasCase> solidCases() {
    return {
        {"ALevelLineTakesBothItsEnds",
         [](Canvas& canvas) { drawLine(canvas, {{3, 2}, {9, 2}}, 1); },
         "............\n"
         "............\n"
         "...#######..\n"
         "............\n"
         "............\n"
         "............\n"
         "............\n"},
        {"ALineMayRunBackwards",
         [](Canvas& canvas) { drawLine(canvas, {{9, 2}, {3, 2}}, 1); },
         "............\n"
         "............\n"
         "...#######..\n"
         "............\n"
         "............\n"
         "............\n"
         "............\n"},
        {"AnUprightLineTakesBothItsEnds",
         [](Canvas& canvas) { drawLine(canvas, {{4, 1}, {4, 5}}, 1); },
         "............\n"
         "....#.......\n"
         "....#.......\n"
         "....#.......\n"
         "....#.......\n"
         "....#.......\n"
         "............\n"},
        {"ALineRunsThroughAllItsPoints",
         [](Canvas& canvas) { drawLine(canvas, {{1, 1}, {4, 1}, {4, 4}, {9, 4}, {9, 2}}, 1); },
         "............\n"
         ".####.......\n"
         "....#....#..\n"
         "....#....#..\n"
         "....######..\n"
         "............\n"
         "............\n"},
        {"AWideLineReachesToBothSidesAndBeyondItsEnds",
         [](Canvas& canvas) { drawLine(canvas, {{3, 2}, {8, 2}}, 3); },
         "............\n"
         "..########..\n"
         "..########..\n"
         "..########..\n"
         "............\n"
         "............\n"
         "............\n"},
        {"TheSecondRowOfALineOfTwoLiesBelow",
         [](Canvas& canvas) { drawLine(canvas, {{3, 2}, {8, 2}}, 2); },
         "............\n"
         "............\n"
         "...#######..\n"
         "...#######..\n"
         "............\n"
         "............\n"
         "............\n"},
        {"OnePointIsNoLine",
         [](Canvas& canvas) { drawLine(canvas, {{3, 2}}, 1); },
         "............\n"
         "............\n"
         "............\n"
         "............\n"
         "............\n"
         "............\n"
         "............\n"},
        {"ARectangleEndsBeforeItsLastCorner",
         [](Canvas& canvas) { drawPolygon(canvas, {{3, 2}, {9, 2}, {9, 5}, {3, 5}}); },
         "............\n"
         "............\n"
         "...######...\n"
         "...######...\n"
         "...######...\n"
         "............\n"
         "............\n"},
        {"ARectangleMayBeginAnywhere",
         [](Canvas& canvas) { drawPolygon(canvas, {{9, 5}, {9, 2}, {3, 2}, {3, 5}}); },
         "............\n"
         "............\n"
         "...######...\n"
         "...######...\n"
         "...######...\n"
         "............\n"
         "............\n"},
        {"AnAreaWithStepsEndsBeforeItsLastCornersToo",
         [](Canvas& canvas) {
             drawPolygon(canvas, {{1, 5}, {1, 3}, {4, 3}, {4, 1}, {8, 1}, {8, 4}, {10, 4}, {10, 5}});
         },
         "............\n"
         "....####....\n"
         "....####....\n"
         ".#######....\n"
         ".#########..\n"
         "............\n"
         "............\n"},
    };
}

/// Lines of dots and dashes on a canvas of scale 1.
inline std::vector<CanvasCase> dashedCases() {
    return {
        {"ADotIsAsLongAsALineIsWide",
         [](Canvas& canvas) {
             drawLine(canvas, {{0, 1}, {11, 1}}, 1, LineStyle::Dotted);
             drawLine(canvas, {{0, 4}, {11, 4}}, 2, LineStyle::Dotted);
         },
         "............\n"
         "#..#..#..#..\n"
         "............\n"
         "............\n"
         "##....##....\n"
         "##....##....\n"
         "............\n"},
        {"DashesAreLonger",
         [](Canvas& canvas) { drawLine(canvas, {{0, 1}, {11, 1}}, 1, LineStyle::Dashed); },
         "............\n"
         "####..####..\n"
         "............\n"
         "............\n"
         "............\n"
         "............\n"
         "............\n"},
        {"DashesGoOnAroundACorner",
         [](Canvas& canvas) { drawLine(canvas, {{0, 1}, {8, 1}, {8, 6}}, 1, LineStyle::Dashed); },
         "............\n"
         "####..###...\n"
         "........#...\n"
         "............\n"
         "............\n"
         "........#...\n"
         "........#...\n"},
        {"ACornerOfAWideDashIsWhole",
         [](Canvas& canvas) { drawLine(canvas, {{0, 4}, {6, 4}, {6, 0}}, 2, LineStyle::Dotted); },
         "............\n"
         "............\n"
         "............\n"
         "......##....\n"
         "##....##....\n"
         "##....##....\n"
         "............\n"},
    };
}

/// The same lines on a canvas of scale 2.
inline std::vector<CanvasCase> dashedCasesOfScaleTwo() {
    return {
        {"DotsGrowWithTheScale",
         [](Canvas& canvas) { drawLine(canvas, {{0, 1}, {11, 1}}, 1, LineStyle::Dotted); },
         "............\n"
         "##....##....\n"
         "............\n"
         "............\n"
         "............\n"
         "............\n"
         "............\n"},
        {"DashesGrowWithTheScale",
         [](Canvas& canvas) { drawLine(canvas, {{0, 1}, {11, 1}}, 1, LineStyle::Dashed); },
         "............\n"
         "########....\n"
         "............\n"
         "............\n"
         "............\n"
         "............\n"
         "............\n"},
    };
}

// clang-format on

inline std::string nameOf(const CanvasCase& one) {
    return one.name;
}

} // namespace tarvik
