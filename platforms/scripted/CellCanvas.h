#pragma once

#include "controls/Controls.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// The number of cells that a text takes: its code points, and each stray byte as one.
std::size_t cellsOf(std::string_view text);

/// A sheet of character cells. What does not fit into it, or into its place, is cut off; a cell
/// that is drawn on twice shows `#`.
class CellCanvas {
public:
    CellCanvas(int width, int height);

    /// Writes a line into a place of that many cells.
    void text(int left, int top, int width, std::string_view line,
              TextAlignment alignment = TextAlignment::Left);
    /// Draws a border with a title in its upper edge.
    void border(int left, int top, int width, int height, std::string_view title);

    /// All rows, each ended by a line feed.
    std::string lines() const;

private:
    void put(int left, int top, std::string_view character);

    int width_;
    int height_;
    std::vector<std::string> cells_; ///< empty where nothing was drawn
};

} // namespace tarvik
