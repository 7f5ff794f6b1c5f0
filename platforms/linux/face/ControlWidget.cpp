#include "linux/face/ControlWidget.h"

#include "linux/face/FaceText.h"

#include <map>

namespace tarvik::face {

namespace {

void showToolTip(QWidget& widget, const Control& control) {
    widget.setToolTip(wrappedTip(control.toolTip()));
}

void showAccessibleName(QWidget& widget, const Control& control) {
    // Without a name of its own the widget is called by its caption or its label.
    widget.setAccessibleName(shown(control.accessibleName()));
}

/// No window changes its size, and nothing in it its place, by what is shown or hidden in it. What
/// collapses is an exception: see FormWindowRoom.cpp.
void keepRoomWhenHidden(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

} // namespace

ControlWidget::ControlWidget(Control& control, QWidget* widget, FaceContext& context)
    : ControlPeer(control, context), widget_(widget) {
    if (widget_ != nullptr) {
        identify(*widget_, control.name());
        keepRoomWhenHidden(*widget_);
        for (const Property shared :
             {Property::Enabled, Property::Visible, Property::ToolTip, Property::AccessibleName}) {
            refreshShared(shared);
        }
    }
}

bool ControlWidget::refreshShared(Property changed) {
    if (widget_ == nullptr) {
        return false;
    }
    switch (changed) {
    case Property::Enabled:
        showEnabled();
        return true;
    case Property::Visible:
        showVisible();
        return true;
    case Property::ToolTip:
        showToolTip(*widget_, control());
        return true;
    case Property::AccessibleName:
        showAccessibleName(*widget_, control());
        return true;
    default:
        return false;
    }
}

void ControlWidget::showVisible() {
    const auto change = [this] { widget_->setVisible(control().visible()); };
    changeRoom_ ? changeRoom_(change) : change();
}

void ControlWidget::showEnabled() {
    const bool enabled = control().enabled();
    QWidget* const before = widget_->window()->focusWidget();
    widget_->setEnabled(enabled);
    if (focus_ == nullptr) {
        return;
    }
    QWidget* const now = widget_->window()->focusWidget();
    if (!enabled) {
        focus_->disabled(widget_, before, now);
    } else if (focus_->enabled(widget_, now)) {
        // As when a window gets it back: the user has not come to the control.
        widget_->setFocus(Qt::ActiveWindowFocusReason);
    }
}

int ControlWidget::widthFor(int characters) const {
    return characters * widget_->fontMetrics().horizontalAdvance(QLatin1Char('0'));
}

std::unique_ptr<ControlWidget> makeControlWidget(Control& control, QWidget& parent,
                                                 FaceContext& context) {
    using Maker = std::unique_ptr<ControlWidget> (*)(Control&, QWidget&, FaceContext&);
    static const std::map<ControlKind, Maker> makers{
        {ControlKind::OptionButton, makeOptionButton},
        {ControlKind::ListView, makeListView},
        {ControlKind::Chart, makeChart},
        {ControlKind::ProgressBar, makeProgressBar},
        {ControlKind::Label, makeLabel},
        {ControlKind::TextBox, makeTextBox},
        {ControlKind::CheckBox, makeCheckBox},
        {ControlKind::CommandButton, makeCommandButton},
        {ControlKind::ComboBox, makeComboBox},
        {ControlKind::Frame, makeFrame},
        {ControlKind::Picture, makePicture},
        {ControlKind::Timer, makeTimer},
    };
    const auto maker = makers.find(control.kind());
    return maker == makers.end() ? nullptr : maker->second(control, parent, context);
}

} // namespace tarvik::face
