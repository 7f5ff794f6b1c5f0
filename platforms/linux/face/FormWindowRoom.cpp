#include "linux/face/FormWindow.h"

#include <QLayout>

#include <algorithm>
#include <utility>

namespace tarvik::face {

// What is hidden keeps its room, as the toolkit is told of each widget. Of a node that collapses it
// is told again whenever something of it comes or goes.

namespace {

void keepRoom(QWidget& widget, bool keep) {
    QSizePolicy policy = widget.sizePolicy();
    if (policy.retainSizeWhenHidden() != keep) {
        policy.setRetainSizeWhenHidden(keep);
        widget.setSizePolicy(policy);
    }
}

bool mayCollapse(const LayoutNode& node) {
    return node.collapses || std::any_of(node.children.begin(), node.children.end(), mayCollapse);
}

/// A window is not wider by a line that comes and goes than the line's characters need.
void ignoreText(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::Ignored);
    widget.setSizePolicy(policy);
}

/// The items and frames whose coming and going changes the room of a node that collapses.
void collectCollapsing(const LayoutNode& node, bool within, std::vector<const LayoutNode*>& into) {
    within = within || node.collapses;
    if (within && node.control != nullptr) {
        into.push_back(&node);
    }
    for (const LayoutNode& child : node.children) {
        collectCollapsing(child, within, into);
    }
}

} // namespace

void FormWindow::watchRoom() {
    if (!mayCollapse(*form_.layout())) {
        return;
    }
    collapsed_ = collapsedNodes(*form_.layout());
    giveRoom(*form_.layout(), false);
    std::vector<const LayoutNode*> collapsing;
    collectCollapsing(*form_.layout(), false, collapsing);
    for (const LayoutNode* node : collapsing) {
        ControlWidget& own = *widgetOf(node->control);
        if (node->characters > 0 && node->stretch > 0) {
            ignoreText(*own.widget());
        }
        own.changeRoomBy([this, widget = own.widget()](const std::function<void()>& change) {
            changeRoom(*widget, change);
        });
    }
}

void FormWindow::giveRoom(const LayoutNode& node, bool collapsed) {
    collapsed = collapsed || isCollapsed(node);
    if (node.control != nullptr) {
        keepRoom(*widgetOf(node.control)->widget(), !collapsed);
    }
    for (const LayoutNode& child : node.children) {
        giveRoom(child, collapsed);
    }
}

/// A window that stands at its least height, or at the one at which it opens, follows it; any other
/// only gets as large as it must.
void FormWindow::changeRoom(QWidget& changed, const std::function<void()>& change) {
    layout()->activate();
    const int before = height();
    const int least = minimumSizeHint().height();
    const int usual = sizeHint().height();
    change();
    const auto collapsed = std::exchange(collapsed_, collapsedNodes(*form_.layout()));
    if (collapsed == collapsed_) {
        return;
    }
    giveRoom(*form_.layout(), false);
    for (QWidget* around = &changed; around != nullptr; around = around->parentWidget()) {
        if (around->layout() != nullptr) {
            around->layout()->activate();
        }
    }
    if (isMaximized() || isFullScreen()) {
        return;
    }
    if (before == usual) {
        resize(width(), sizeHint().height());
    } else if (before == least) {
        resize(width(), minimumSizeHint().height());
    }
}

} // namespace tarvik::face
