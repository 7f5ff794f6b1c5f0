#include "controls/Controls.h"
#include "linux/face/ControlWidget.h"
#include "linux/face/FaceText.h"

#include <QRadioButton>

namespace tarvik::face {

namespace {

class OptionButtonWidget : public ControlWidget {
public:
    OptionButtonWidget(OptionButton& option, QRadioButton* widget, FaceContext& context)
        : ControlWidget(option, widget, context), option_(option), widget_(widget) {
        widget->setText(withMnemonic(option.caption(), option.mnemonic()));
        // The model takes the choice from the others, wherever they stand.
        widget->setAutoExclusive(false);
        refresh(Property::Value);
        // Pressed by hand it is toggled as by a screen reader, which clicks nothing. It cannot be
        // taken back: the widget follows the model then.
        QObject::connect(widget, &QRadioButton::toggled, widget, [this](bool chosen) {
            fromUser(Property::Value, [&] {
                if (chosen) {
                    option_.setValue(true);
                }
            });
        });
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Value) {
            widget_->setChecked(option_.value());
        }
    }

private:
    OptionButton& option_;
    QRadioButton* widget_;
};

} // namespace

std::unique_ptr<ControlWidget> makeOptionButton(Control& control, QWidget& parent,
                                                FaceContext& context) {
    return std::make_unique<OptionButtonWidget>(static_cast<OptionButton&>(control),
                                                new QRadioButton(&parent), context);
}

} // namespace tarvik::face
