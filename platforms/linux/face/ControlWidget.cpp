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
    : ControlPicture(control, context), widget_(widget) {
    if (widget_ != nullptr) {
        identify(*widget_, control.name());
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
        widget_->setEnabled(control().enabled());
        return true;
    case Property::Visible:
        widget_->setVisible(control().visible());
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
