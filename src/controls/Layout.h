#pragma once

#include <utility>
#include <vector>

namespace tarvik {

class Control;

/// Where a form's controls stand: a tree of rows, columns, grids and frames. Sizes are in
/// characters, lines and shares of the room that is left, never in pixels.
///
/// What is hidden keeps its room, so that nothing moves when it comes or goes; what takes turns in
/// one place stands in a deck, which is as large as the largest of its children needs. Only a node
/// that collapses gives its room and its gap away: its window gets lower, and higher again.
///
/// Tab order is tree order: within a grid, row by row.
struct LayoutNode {
    enum class Type {
        Item,   ///< one control
        Row,    ///< children side by side
        Column, ///< children one below the other
        Grid,   ///< children row by row in `columns` columns of common width
        Frame,  ///< a frame control around its only child
        Deck,   ///< children in the same room, of which one at a time is visible
        Space,  ///< room that takes its share and shows nothing
    };

    Type type = Type::Space;
    Control* control = nullptr; ///< of an item or a frame
    int columns = 0;            ///< of a grid
    int characters = 0;         ///< width of an item at least; 0: as its content needs
    int lines = 0;              ///< height of an item at least; 0: as its content needs
    int stretch = 0;            ///< share of the spare room along the row, column or grid column
    bool alike = false;         ///< of a row or column: all items as large as the largest
    bool collapses = false;     ///< takes no room while nothing of it is seen
    std::vector<LayoutNode> children;

    LayoutNode&& wide(int count) && { return characters = count, std::move(*this); }
    LayoutNode&& tall(int count) && { return lines = count, std::move(*this); }
    LayoutNode&& share(int part) && { return stretch = part, std::move(*this); }
    LayoutNode&& sameSize() && { return alike = true, std::move(*this); }
    LayoutNode&& collapsing() && { return collapses = true, std::move(*this); }
};

LayoutNode item(Control& control);
LayoutNode row(std::vector<LayoutNode> children);
LayoutNode column(std::vector<LayoutNode> children);
LayoutNode grid(int columns, std::vector<LayoutNode> children);
LayoutNode frame(Control& control, LayoutNode child);
LayoutNode deck(std::vector<LayoutNode> children);
/// Empty room: takes one share of what is left over.
LayoutNode space();
/// An empty cell of a grid.
LayoutNode blank();

/// Every control of the tree in tree order, frames before what they hold.
std::vector<Control*> controlsInOrder(const LayoutNode& root);

/// Those of them that are seen: what a frame holds is seen with its frame only.
std::vector<Control*> seenControlsInOrder(const LayoutNode& root);

/// Whether it collapses and nothing of it is seen: its control is hidden, or without one of its own
/// every control in it.
bool isCollapsed(const LayoutNode& node);

/// The nodes of the tree that take no room now, in tree order; what they hold is left out.
std::vector<const LayoutNode*> collapsedNodes(const LayoutNode& root);

} // namespace tarvik
