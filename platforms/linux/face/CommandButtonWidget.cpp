#include "controls/Controls.h"
#include "linux/face/ControlWidget.h"
#include "linux/face/FaceText.h"

#include <QPushButton>

#include <algorithm>

namespace tarvik::face {

namespace {

/// Has room for each of its captions, so that nothing moves when another one comes.
class RoomyButton : public QPushButton {
public:
    RoomyButton(const CommandButton& button, QWidget* parent)
        : QPushButton(parent), button_(button) {}

    QSize sizeHint() const override {
        // As the toolkit measures the text that it shows; by other means a pixel is missing.
        const auto widthOf = [this](const std::string& caption) {
            const QString marked = withMnemonic(caption, button_.mnemonic());
            return fontMetrics().size(Qt::TextShowMnemonic, marked).width();
        };
        const int own = widthOf(button_.caption());
        int widest = own;
        for (const std::string& other : button_.otherCaptions()) {
            widest = std::max(widest, widthOf(other));
        }
        return QPushButton::sizeHint() + QSize(widest - own, 0);
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    const CommandButton& button_;
};

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
    auto* widget = new RoomyButton(static_cast<CommandButton&>(control), &parent);
    // Enter presses the form's default button, not whichever has the focus.
    widget->setAutoDefault(false);
    return std::make_unique<CommandButtonWidget>(static_cast<CommandButton&>(control), widget,
                                                 context);
}

} // namespace tarvik::face
