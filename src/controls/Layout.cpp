#include "controls/Layout.h"

#include "controls/Control.h"

namespace tarvik {

namespace {

LayoutNode container(LayoutNode::Type type, std::vector<LayoutNode> children) {
    LayoutNode node;
    node.type = type;
    node.children = std::move(children);
    return node;
}

void collect(const LayoutNode& node, std::vector<Control*>& into) {
    if (node.control != nullptr) {
        into.push_back(node.control);
    }
    for (const LayoutNode& child : node.children) {
        collect(child, into);
    }
}

} // namespace

LayoutNode item(Control& control) {
    LayoutNode node;
    node.type = LayoutNode::Type::Item;
    node.control = &control;
    return node;
}

LayoutNode row(std::vector<LayoutNode> children) {
    return container(LayoutNode::Type::Row, std::move(children));
}

LayoutNode column(std::vector<LayoutNode> children) {
    return container(LayoutNode::Type::Column, std::move(children));
}

LayoutNode grid(int columns, std::vector<LayoutNode> children) {
    LayoutNode node = container(LayoutNode::Type::Grid, std::move(children));
    node.columns = columns;
    return node;
}

LayoutNode frame(Control& control, LayoutNode child) {
    LayoutNode node = container(LayoutNode::Type::Frame, {std::move(child)});
    node.control = &control;
    return node;
}

LayoutNode deck(std::vector<LayoutNode> children) {
    return container(LayoutNode::Type::Deck, std::move(children));
}

LayoutNode space() {
    return LayoutNode().share(1);
}

LayoutNode blank() {
    return {};
}

std::vector<Control*> controlsInOrder(const LayoutNode& root) {
    std::vector<Control*> order;
    collect(root, order);
    return order;
}

bool isCollapsed(const LayoutNode& node) {
    return node.collapses && seenControlsInOrder(node).empty();
}

std::vector<const LayoutNode*> collapsedNodes(const LayoutNode& root) {
    if (isCollapsed(root)) {
        return {&root};
    }
    std::vector<const LayoutNode*> nodes;
    for (const LayoutNode& child : root.children) {
        const std::vector<const LayoutNode*> inner = collapsedNodes(child);
        nodes.insert(nodes.end(), inner.begin(), inner.end());
    }
    return nodes;
}

std::vector<Control*> seenControlsInOrder(const LayoutNode& root) {
    std::vector<Control*> order;
    if (root.control != nullptr) {
        if (!root.control->visible()) {
            return order;
        }
        order.push_back(root.control);
    }
    for (const LayoutNode& child : root.children) {
        const std::vector<Control*> inner = seenControlsInOrder(child);
        order.insert(order.end(), inner.begin(), inner.end());
    }
    return order;
}

} // namespace tarvik
