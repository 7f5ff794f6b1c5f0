#include "controls/LayoutSolver.h"

#include "controls/Control.h"

#include <algorithm>

namespace tarvik {

namespace {

using Type = LayoutNode::Type;

/// A node of the tree with what has been found out about it.
struct Box {
    const LayoutNode* node = nullptr;
    LayoutSize need;
    bool blank = false; ///< holds no control that takes room
    bool gone = false;  ///< has collapsed
    std::vector<Box> children;
};

/// One column or row of neighbours.
struct Track {
    int size = 0;
    int share = 0;     ///< of the spare room
    bool gaps = false; ///< stands apart from its neighbours
};

struct Tracks {
    std::vector<Track> columns;
    std::vector<Track> rows;
};

int totalOf(const std::vector<Track>& tracks, int gap) {
    int total = 0;
    int count = 0;
    for (const Track& track : tracks) {
        total += track.size;
        count += track.gaps ? 1 : 0;
    }
    return total + std::max(0, count - 1) * gap;
}

/// Gives the spare room to the tracks with a share; the last of them takes the rounding.
void spread(std::vector<Track>& tracks, int spare) {
    int shares = 0;
    for (const Track& track : tracks) {
        shares += track.share;
    }
    if (shares == 0) {
        return;
    }
    int left = spare;
    Track* last = nullptr;
    for (Track& track : tracks) {
        if (track.share > 0) {
            const int part = spare * track.share / shares;
            track.size += part;
            left -= part;
            last = &track;
        }
    }
    if (last != nullptr) {
        last->size += left;
    }
}

/// The number of columns that the children stand in: a row has one for each, a column only one.
std::size_t columnCount(const LayoutNode& node) {
    switch (node.type) {
    case Type::Row:
        return node.children.size();
    case Type::Grid:
        return static_cast<std::size_t>(std::max(1, node.columns));
    default:
        return 1;
    }
}

void widen(Track& track, int size, int share) {
    track.size = std::max(track.size, size);
    track.share = std::max(track.share, share);
}

/// A track stands apart when something stands in it; of a grid, also when all its cells are blank
/// and none has collapsed.
bool hasGaps(const Box& parent, std::size_t first, std::size_t step, std::size_t last) {
    bool gone = false;
    for (std::size_t i = first; i < last; i += step) {
        if (!parent.children[i].blank) {
            return true;
        }
        gone = gone || parent.children[i].gone;
    }
    return parent.node->type == Type::Grid && !gone;
}

/// The columns and rows of a container, each as large as it needs to be.
Tracks tracksOf(const Box& box) {
    const LayoutNode& node = *box.node;
    const std::size_t count = columnCount(node);
    const std::size_t cells = box.children.size();
    Tracks tracks;
    tracks.columns.resize(count);
    tracks.rows.resize((cells + count - 1) / count);
    for (std::size_t i = 0; i < cells; ++i) {
        const Box& cell = box.children[i];
        const int share = cell.gone ? 0 : cell.node->stretch;
        widen(tracks.columns[i % count], cell.need.width, node.type == Type::Column ? 1 : share);
        widen(tracks.rows[i / count], cell.need.height,
              node.type == Type::Column ? share : (node.type == Type::Row ? 1 : 0));
    }
    for (std::size_t c = 0; c < count; ++c) {
        tracks.columns[c].gaps = hasGaps(box, c, count, cells);
    }
    for (std::size_t r = 0; r < tracks.rows.size(); ++r) {
        tracks.rows[r].gaps = hasGaps(box, r * count, 1, std::min(cells, (r + 1) * count));
    }
    return tracks;
}

/// Makes the items of a row equally wide, or of a column equally high.
void makeAlike(std::vector<Box>& items, int LayoutSize::*dimension) {
    const auto isItem = [](const Box& box) { return box.node->type == Type::Item && !box.gone; };
    int largest = 0;
    for (const Box& box : items) {
        largest = std::max(largest, isItem(box) ? box.need.*dimension : 0);
    }
    for (Box& box : items) {
        box.need.*dimension = isItem(box) ? largest : box.need.*dimension;
    }
}

class Solver {
public:
    explicit Solver(const LayoutMetrics& metrics) : metrics_(metrics) {}

    /// Measures the node and what it holds, hidden or not, each control once; what has collapsed
    /// counts as empty.
    Box measured(const LayoutNode& node) const {
        Box box{.node = &node, .need = {}, .children = {}};
        if (isCollapsed(node)) {
            box.gone = box.blank = true;
            return box;
        }
        for (const LayoutNode& child : node.children) {
            box.children.push_back(measured(child));
        }
        box.blank =
            node.control == nullptr && std::all_of(box.children.begin(), box.children.end(),
                                                   [](const Box& child) { return child.blank; });
        box.need = needOf(box);
        return box;
    }

    void place(const Box& box, const LayoutRect& room, std::vector<PlacedControl>& into) const {
        const bool hidden = box.node->control != nullptr && !box.node->control->visible();
        if (hidden || box.gone) {
            return; // and with it what it holds
        }
        switch (box.node->type) {
        case Type::Item:
            into.push_back({box.node->control, room});
            break;
        case Type::Frame:
            into.push_back({box.node->control, room});
            placeCell(box, box.children.front(), inside(room), into);
            break;
        case Type::Space:
            break;
        case Type::Deck:
            for (const Box& card : box.children) {
                placeCell(box, card, room, into);
            }
            break;
        default:
            placeTracks(box, room, into);
        }
    }

private:
    LayoutSize needOf(Box& box) const {
        const LayoutNode& node = *box.node;
        switch (node.type) {
        case Type::Item:
            return metrics_.measure(*node.control, node.characters, node.lines);
        case Type::Frame:
            return frameNeed(box);
        case Type::Space:
            return {};
        case Type::Deck:
            return deckNeed(box);
        default:
            break;
        }
        if (node.alike) {
            makeAlike(box.children,
                      node.type == Type::Row ? &LayoutSize::width : &LayoutSize::height);
        }
        const Tracks tracks = tracksOf(box);
        return {totalOf(tracks.columns, metrics_.horizontalGap),
                totalOf(tracks.rows, metrics_.verticalGap)};
    }

    LayoutSize frameNeed(const Box& box) const {
        const LayoutSize inner = box.children.front().need;
        const LayoutSize title = metrics_.measure(*box.node->control, 0, 0);
        return {std::max(inner.width, title.width) + metrics_.frameLeft + metrics_.frameRight,
                inner.height + metrics_.frameTop + metrics_.frameBottom};
    }

    static LayoutSize deckNeed(const Box& box) {
        LayoutSize largest;
        for (const Box& card : box.children) {
            largest.width = std::max(largest.width, card.need.width);
            largest.height = std::max(largest.height, card.need.height);
        }
        return largest;
    }

    LayoutRect inside(const LayoutRect& room) const {
        return {room.left + metrics_.frameLeft, room.top + metrics_.frameTop,
                room.width - metrics_.frameLeft - metrics_.frameRight,
                room.height - metrics_.frameTop - metrics_.frameBottom};
    }

    void placeTracks(const Box& box, const LayoutRect& room,
                     std::vector<PlacedControl>& into) const {
        auto [columns, rows] = tracksOf(box);
        spread(columns, room.width - totalOf(columns, metrics_.horizontalGap));
        spread(rows, room.height - totalOf(rows, metrics_.verticalGap));
        std::size_t i = 0;
        int top = room.top;
        for (const Track& row : rows) {
            int left = room.left;
            for (const Track& column : columns) {
                if (i < box.children.size()) {
                    placeCell(box, box.children[i++], {left, top, column.size, row.size}, into);
                }
                left += column.size + (column.gaps ? metrics_.horizontalGap : 0);
            }
            top += row.size + (row.gaps ? metrics_.verticalGap : 0);
        }
    }

    /// An item grows in height only where it was told to; elsewhere it stands in the middle.
    void placeCell(const Box& parent, const Box& cell, LayoutRect room,
                   std::vector<PlacedControl>& into) const {
        const Type around = parent.node->type;
        const bool stacked =
            around == Type::Column || around == Type::Frame || around == Type::Deck;
        if (cell.node->type == Type::Item && !(stacked && cell.node->stretch > 0)) {
            const int height = std::min(cell.need.height, room.height);
            room.top += (room.height - height) / 2;
            room.height = height;
        }
        place(cell, room, into);
    }

    const LayoutMetrics& metrics_;
};

} // namespace

LayoutSize minimumSize(const LayoutNode& root, const LayoutMetrics& metrics) {
    const LayoutSize inner = Solver(metrics).measured(root).need;
    return {inner.width + 2 * metrics.margin, inner.height + 2 * metrics.margin};
}

std::vector<PlacedControl> solveLayout(const LayoutNode& root, const LayoutMetrics& metrics,
                                       LayoutSize size) {
    const Solver solver(metrics);
    const Box box = solver.measured(root);
    const int width = std::max(size.width - 2 * metrics.margin, box.need.width);
    const int height = std::max(size.height - 2 * metrics.margin, box.need.height);
    std::vector<PlacedControl> placed;
    solver.place(box, {metrics.margin, metrics.margin, width, height}, placed);
    return placed;
}

} // namespace tarvik
