#pragma once

#include "controls/Layout.h"

#include <functional>
#include <vector>

namespace tarvik {

/// A width and a height in the units of whoever asks: pixels or character cells.
struct LayoutSize {
    int width = 0;
    int height = 0;

    friend bool operator==(const LayoutSize&, const LayoutSize&) = default;
};

struct LayoutRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const LayoutRect&, const LayoutRect&) = default;
};

/// What the solver has to be told of the place where the form is shown.
struct LayoutMetrics {
    /// The size a control needs at least, for an item of that many characters and lines (0: as its
    /// content needs).
    std::function<LayoutSize(const Control& control, int characters, int lines)> measure;
    int horizontalGap = 0; ///< between neighbours in a row or grid
    int verticalGap = 0;   ///< between neighbours in a column or grid
    int margin = 0;        ///< around the whole form
    /// Room that a frame takes on each side of what it holds.
    int frameLeft = 0;
    int frameTop = 0;
    int frameRight = 0;
    int frameBottom = 0;
};

struct PlacedControl {
    const Control* control = nullptr;
    LayoutRect rect;
};

/// The smallest size in which the whole tree fits, margins included. It is the same whatever of the
/// tree is visible, but for what collapses: no window changes its size by what else is shown or
/// hidden in it.
LayoutSize minimumSize(const LayoutNode& root, const LayoutMetrics& metrics);

/// The rectangle of every visible control, in tree order, frames before what they hold. Room beyond
/// the minimum goes to the nodes with a share, in proportion; the last takes the rounding. A size
/// below the minimum is answered as the minimum.
///
/// An item is as wide as its column. It is as high as it needs to be, in the middle of its row; in
/// a column, frame or deck one with a share takes the whole height. What is not visible keeps its
/// room and its gap, unless it collapses, which leaves neither room, gap nor share; a space takes
/// no gap, but a grid's column or row of blanks does.
std::vector<PlacedControl> solveLayout(const LayoutNode& root, const LayoutMetrics& metrics,
                                       LayoutSize size);

} // namespace tarvik
