#include "controls/Controls.h"
#include "linux/face/ControlWidget.h"
#include "linux/face/FaceText.h"

#include <QCheckBox>

namespace tarvik::face {

namespace {

class CheckBoxWidget : public ControlWidget {
public:
    CheckBoxWidget(CheckBox& box, QCheckBox* widget, FaceContext& context)
        : ControlWidget(box, widget, context), box_(box), widget_(widget) {
        widget->setText(withMnemonic(box.caption(), box.mnemonic()));
        if (box.readOnly()) {
            // It tells something; there is nothing to be done with it.
            widget->setFocusPolicy(Qt::NoFocus);
            widget->setAttribute(Qt::WA_TransparentForMouseEvents);
        }
        refresh(Property::Value);
        QObject::connect(widget, &QCheckBox::toggled, widget, [this](bool ticked) {
            fromUser(Property::Value, [&] { box_.setValue(ticked ? 1 : 0); });
        });
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Value) {
            widget_->setChecked(box_.ticked());
        }
    }

private:
    CheckBox& box_;
    QCheckBox* widget_;
};

} // namespace

std::unique_ptr<ControlWidget> makeCheckBox(Control& control, QWidget& parent,
                                            FaceContext& context) {
    return std::make_unique<CheckBoxWidget>(static_cast<CheckBox&>(control), new QCheckBox(&parent),
                                            context);
}

} // namespace tarvik::face
