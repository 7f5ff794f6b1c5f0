#include "linux/face/FormLayout.h"

#include <QBoxLayout>
#include <QGridLayout>

#include <algorithm>

namespace tarvik::face {

namespace {

using Type = LayoutNode::Type;

constexpr int emptyColumn = 10; // in the toolkit's units, which follow the scale of the screen

/// Turns one layout tree into layouts; each node becomes a widget, a layout or a stretch.
class LayoutBuilder {
public:
    explicit LayoutBuilder(const WidgetOf& widgetOf) : widgetOf_(widgetOf) {}

    QLayout* build(const LayoutNode& node) {
        switch (node.type) {
        case Type::Row:
            return buildBox(node, QBoxLayout::LeftToRight);
        case Type::Grid:
            return buildGrid(node);
        case Type::Column:
            return buildBox(node, QBoxLayout::TopToBottom);
        case Type::Deck:
            return buildDeck(node);
        default: {
            auto* box = new QBoxLayout(QBoxLayout::TopToBottom);
            addToBox(*box, node);
            return box;
        }
        }
    }

private:
    QLayout* buildBox(const LayoutNode& node, QBoxLayout::Direction direction) {
        auto* box = new QBoxLayout(direction);
        for (const LayoutNode& child : node.children) {
            addToBox(*box, child);
        }
        if (node.alike && direction == QBoxLayout::LeftToRight) {
            makeAlike(node);
        }
        return box;
    }

    void addToBox(QBoxLayout& box, const LayoutNode& node) {
        switch (node.type) {
        case Type::Space:
            box.addStretch(node.stretch);
            break;
        case Type::Item:
        case Type::Frame:
            box.addWidget(makeWidget(node), node.stretch);
            break;
        default:
            box.addLayout(build(node), node.stretch);
        }
    }

    QLayout* buildGrid(const LayoutNode& node) {
        auto* grid = new QGridLayout;
        for (std::size_t i = 0; i < node.children.size(); ++i) {
            const LayoutNode& child = node.children[i];
            const int row = static_cast<int>(i) / node.columns;
            const int column = static_cast<int>(i) % node.columns;
            addToGrid(*grid, child, row, column);
            const int share = std::max(grid->columnStretch(column), child.stretch);
            grid->setColumnStretch(column, share);
        }
        return grid;
    }

    void addToGrid(QGridLayout& grid, const LayoutNode& node, int row, int column) {
        if (node.type == Type::Item || node.type == Type::Frame) {
            grid.addWidget(makeWidget(node), row, column);
        } else if (node.type == Type::Space) {
            // The toolkit leaves no gap beside a column that holds nothing.
            grid.addItem(new QSpacerItem(emptyColumn, 0), row, column);
        } else {
            grid.addLayout(build(node), row, column);
        }
    }

    /// All children in one cell, which is as large as the largest of them: what is hidden keeps its
    /// room.
    QLayout* buildDeck(const LayoutNode& node) {
        auto* cell = new QGridLayout;
        for (const LayoutNode& child : node.children) {
            addToGrid(*cell, child, 0, 0);
        }
        return cell;
    }

    QWidget* makeWidget(const LayoutNode& node) {
        ControlWidget& peer = widgetOf_(*node.control);
        QWidget* widget = peer.widget();
        if (node.type == Type::Frame) {
            widget->setLayout(build(node.children.front()));
        }
        if (node.characters > 0) {
            const int width = peer.widthFor(node.characters);
            widget->setMinimumWidth(width);
            if (node.stretch == 0) {
                widget->setMaximumWidth(width);
            }
        }
        if (node.lines > 1) {
            widget->setMinimumHeight(node.lines * widget->fontMetrics().lineSpacing());
        }
        return widget;
    }

    void makeAlike(const LayoutNode& node) {
        int widest = 0;
        for (const LayoutNode& child : node.children) {
            if (child.type == Type::Item) {
                widest = std::max(widest, widgetOf_(*child.control).widget()->sizeHint().width());
            }
        }
        for (const LayoutNode& child : node.children) {
            if (child.type == Type::Item) {
                widgetOf_(*child.control).widget()->setMinimumWidth(widest);
            }
        }
    }

    const WidgetOf& widgetOf_;
};

} // namespace

QLayout* makeLayout(const LayoutNode& root, const WidgetOf& widgetOf) {
    return LayoutBuilder(widgetOf).build(root);
}

} // namespace tarvik::face
