#include "ui/controls/LayoutSolver.h"

#include "ui/controls/Control.h"

#include <algorithm>
#include <numeric>

namespace tarvik {

namespace {

using Type = LayoutNode::Type;

/// One dimension of a run of neighbours: what each needs, its share of the spare room.
struct Track {
    int size = 0;
    int share = 0;
    bool used = false; ///< holds something visible; others take neither room nor gap
};

bool isSeen(const LayoutNode& node) {
    if (node.control != nullptr && !node.control->visible()) {
        return false;
    }
    return node.type == Type::Item || node.type == Type::Space ||
           std::any_of(node.children.begin(), node.children.end(), isSeen);
}

int totalOf(const std::vector<Track>& tracks, int gap) {
    int total = 0;
    int count = 0;
    for (const Track& track : tracks) {
        total += track.size;
        count += track.used ? 1 : 0;
    }
    return total + std::max(0, count - 1) * gap;
}

void makeAlike(std::vector<Track>& tracks) {
    int largest = 0;
    for (const Track& track : tracks) {
        largest = std::max(largest, track.used && track.share == 0 ? track.size : 0);
    }
    for (Track& track : tracks) {
        track.size = track.used && track.share == 0 ? largest : track.size;
    }
}

/// Gives the spare room to the tracks with a share; the last of them takes the rounding.
void spread(std::vector<Track>& tracks, int spare) {
    const int shares =
        std::accumulate(tracks.begin(), tracks.end(), 0, [](int sum, const Track& track) {
            return sum + (track.used ? track.share : 0);
        });
    if (shares == 0 || spare <= 0) {
        return;
    }
    int left = spare;
    Track* last = nullptr;
    for (Track& track : tracks) {
        if (track.used && track.share > 0) {
            const int part = spare * track.share / shares;
            track.size += part;
            left -= part;
            last = &track;
        }
    }
    last->size += left;
}

class Solver {
public:
    explicit Solver(const LayoutMetrics& metrics) : metrics_(metrics) {}

    LayoutSize need(const LayoutNode& node) const {
        if (!isSeen(node)) {
            return {};
        }
        switch (node.type) {
        case Type::Item:
            return metrics_.measure(*node.control, node.characters, node.lines);
        case Type::Row:
        case Type::Column:
        case Type::Grid:
            return {totalOf(columnsOf(node), metrics_.horizontalGap),
                    totalOf(rowsOf(node), metrics_.verticalGap)};
        case Type::Frame:
            return frameNeed(node);
        case Type::Space:
            break;
        }
        return {};
    }

    void place(const LayoutNode& node, const LayoutRect& room,
               std::vector<PlacedControl>& into) const {
        if (!isSeen(node)) {
            return;
        }
        switch (node.type) {
        case Type::Item:
            placeItem(node, room, into);
            break;
        case Type::Row:
        case Type::Column:
        case Type::Grid:
            placeTracks(node, room, into);
            break;
        case Type::Frame:
            into.push_back({node.control, room});
            place(node.children.front(),
                  {room.left + metrics_.frameLeft, room.top + metrics_.frameTop,
                   room.width - metrics_.frameLeft - metrics_.frameRight,
                   room.height - metrics_.frameTop - metrics_.frameBottom},
                  into);
            break;
        case Type::Space:
            break;
        }
    }

private:
    LayoutSize frameNeed(const LayoutNode& node) const {
        const LayoutSize inner = need(node.children.front());
        const LayoutSize title = metrics_.measure(*node.control, 0, 0);
        return {std::max(inner.width, title.width) + metrics_.frameLeft + metrics_.frameRight,
                inner.height + metrics_.frameTop + metrics_.frameBottom};
    }

    /// The number of columns that the children stand in: a row has one for each, a column only one.
    static std::size_t columnCount(const LayoutNode& node) {
        switch (node.type) {
        case Type::Row:
            return node.children.size();
        case Type::Grid:
            return static_cast<std::size_t>(node.columns);
        default:
            return 1;
        }
    }

    std::vector<Track> columnsOf(const LayoutNode& node) const {
        const std::size_t count = columnCount(node);
        std::vector<Track> tracks(count);
        for (std::size_t i = 0; i < node.children.size(); ++i) {
            const LayoutNode& child = node.children[i];
            Track& track = tracks[i % count];
            track.size = std::max(track.size, need(child).width);
            track.share = std::max(track.share, node.type == Type::Column ? 1 : child.stretch);
            track.used = track.used || isSeen(child);
        }
        if (node.alike && node.type == Type::Row) {
            makeAlike(tracks);
        }
        return tracks;
    }

    std::vector<Track> rowsOf(const LayoutNode& node) const {
        const std::size_t count = columnCount(node);
        std::vector<Track> tracks((node.children.size() + count - 1) / count);
        for (std::size_t i = 0; i < node.children.size(); ++i) {
            const LayoutNode& child = node.children[i];
            Track& track = tracks[i / count];
            track.size = std::max(track.size, need(child).height);
            track.share = std::max(track.share, rowShare(node, child));
            track.used = track.used || isSeen(child);
        }
        if (node.alike && node.type == Type::Column) {
            makeAlike(tracks);
        }
        return tracks;
    }

    /// A row is as high as its room; the rows of a grid only as high as they need.
    static int rowShare(const LayoutNode& node, const LayoutNode& child) {
        switch (node.type) {
        case Type::Row:
            return 1;
        case Type::Column:
            return child.stretch;
        default:
            return 0;
        }
    }

    void placeTracks(const LayoutNode& node, const LayoutRect& room,
                     std::vector<PlacedControl>& into) const {
        std::vector<Track> columns = columnsOf(node);
        std::vector<Track> rows = rowsOf(node);
        spread(columns, room.width - totalOf(columns, metrics_.horizontalGap));
        spread(rows, room.height - totalOf(rows, metrics_.verticalGap));
        int top = room.top;
        for (std::size_t r = 0; r < rows.size(); ++r) {
            int left = room.left;
            for (std::size_t c = 0; c < columns.size(); ++c) {
                const std::size_t i = r * columns.size() + c;
                if (i < node.children.size()) {
                    place(node.children[i], {left, top, columns[c].size, rows[r].size}, into);
                }
                left += columns[c].size + (columns[c].used ? metrics_.horizontalGap : 0);
            }
            top += rows[r].size + (rows[r].used ? metrics_.verticalGap : 0);
        }
    }

    void placeItem(const LayoutNode& node, const LayoutRect& room,
                   std::vector<PlacedControl>& into) const {
        const int height = std::min(need(node).height, room.height);
        into.push_back(
            {node.control, {room.left, room.top + (room.height - height) / 2, room.width, height}});
    }

    const LayoutMetrics& metrics_;
};

} // namespace

LayoutSize minimumSize(const LayoutNode& root, const LayoutMetrics& metrics) {
    const LayoutSize inner = Solver(metrics).need(root);
    return {inner.width + 2 * metrics.margin, inner.height + 2 * metrics.margin};
}

std::vector<PlacedControl> solveLayout(const LayoutNode& root, const LayoutMetrics& metrics,
                                       LayoutSize size) {
    const LayoutSize least = minimumSize(root, metrics);
    const int width = std::max(size.width, least.width) - 2 * metrics.margin;
    const int height = std::max(size.height, least.height) - 2 * metrics.margin;
    std::vector<PlacedControl> placed;
    Solver(metrics).place(root, {metrics.margin, metrics.margin, width, height}, placed);
    return placed;
}

} // namespace tarvik
