#include "linux/face/ControlWidget.h"
#include "linux/face/FaceText.h"
#include "ui/controls/Controls.h"

#include <QPushButton>

namespace tarvik::face {

namespace {

class CommandButtonWidget : public ControlWidget {
public:
    CommandButtonWidget(CommandButton& button, QPushButton* widget, FaceContext& context)
        : ControlWidget(button, widget, context), button_(button), widget_(widget) {
        refresh(Property::Caption);
        QObject::connect(widget, &QPushButton::clicked, widget,
                         [this] { fromUser(Property::Caption, [&] { button_.press(); }); });
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Caption) {
            widget_->setText(withMnemonic(button_.caption(), button_.mnemonic()));
        }
    }

private:
    CommandButton& button_;
    QPushButton* widget_;
};

} // namespace

std::unique_ptr<ControlWidget> makeCommandButton(Control& control, QWidget& parent,
                                                 FaceContext& context) {
    auto* widget = new QPushButton(&parent);
    // Enter presses the form's default button, not whichever has the focus.
    widget->setAutoDefault(false);
    return std::make_unique<CommandButtonWidget>(static_cast<CommandButton&>(control), widget,
                                                 context);
}

} // namespace tarvik::face
