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

} // namespace

ControlWidget::ControlWidget(Control& control, QWidget* widget, FaceContext& context)
    : control_(control), widget_(widget), context_(context) {
    control_.attach(this);
    if (widget_ != nullptr) {
        identify(*widget_, control_.name());
        for (const Property shared :
             {Property::Enabled, Property::Visible, Property::ToolTip, Property::AccessibleName}) {
            refreshShared(shared);
        }
    }
}

ControlWidget::~ControlWidget() {
    detach();
}

void ControlWidget::detach() {
    if (!detached_) {
        detached_ = true;
        control_.attach(nullptr);
    }
}

void ControlWidget::refresh(Property changed) {
    const bool nested = refreshing_;
    refreshing_ = true;
    if (widget_ == nullptr || !refreshShared(changed)) {
        refreshOwn(changed);
    }
    refreshing_ = nested;
}

bool ControlWidget::refreshShared(Property changed) {
    switch (changed) {
    case Property::Enabled:
        widget_->setEnabled(control_.enabled());
        return true;
    case Property::Visible:
        widget_->setVisible(control_.visible());
        return true;
    case Property::ToolTip:
        showToolTip(*widget_, control_);
        return true;
    case Property::AccessibleName:
        showAccessibleName(*widget_, control_);
        return true;
    default:
        return false;
    }
}

int ControlWidget::widthFor(int characters) const {
    return characters * widget_->fontMetrics().horizontalAdvance(QLatin1Char('0'));
}

std::unique_ptr<ControlWidget> makeControlWidget(Control& control, QWidget& parent,
                                                 FaceContext& context) {
    using Maker = std::unique_ptr<ControlWidget> (*)(Control&, QWidget&, FaceContext&);
    static const std::map<ControlKind, Maker> makers{
        {ControlKind::Label, makeLabel},       {ControlKind::TextBox, makeTextBox},
        {ControlKind::CheckBox, makeCheckBox}, {ControlKind::CommandButton, makeCommandButton},
        {ControlKind::ComboBox, makeComboBox}, {ControlKind::Frame, makeFrame},
        {ControlKind::Picture, makePicture},   {ControlKind::Timer, makeTimer},
    };
    const auto maker = makers.find(control.kind());
    return maker == makers.end() ? nullptr : maker->second(control, parent, context);
}

} // namespace tarvik::face
