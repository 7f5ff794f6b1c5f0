#include "linux/face/ControlWidget.h"
#include "linux/face/FaceText.h"
#include "linux/face/Palette.h"
#include "ui/controls/Controls.h"

#include <QEvent>
#include <QLabel>

namespace tarvik::face {

namespace {

/// A label whose colour stays readable when the palette changes.
class ColouredLabel : public QLabel {
public:
    using QLabel::QLabel;

    void setTextColour(const Colour& colour) {
        colour_ = colour;
        applyColour();
    }

protected:
    void changeEvent(QEvent* event) override {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::ApplicationPaletteChange) {
            applyColour();
        }
    }

private:
    void applyColour() {
        const QPalette inherited = applicationPalette();
        QPalette own = palette();
        own.setColor(QPalette::WindowText, readableColour(colour_, inherited));
        setPalette(own);
    }

    Colour colour_;
};

class LabelWidget : public ControlWidget {
public:
    LabelWidget(Label& label, ColouredLabel* widget, FaceContext& context)
        : ControlWidget(label, widget, context), label_(label), widget_(widget) {
        widget->setTextFormat(Qt::PlainText);
        widget->setWordWrap(label.wrapped());
        widget->setAlignment(alignmentOf(label.alignment()) | Qt::AlignVCenter);
        refresh(Property::Caption);
        refresh(Property::ForeColour);
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Caption) {
            showCaption();
        } else if (changed == Property::ForeColour) {
            widget_->setTextColour(label_.foreColour());
        }
    }

private:
    static Qt::Alignment alignmentOf(TextAlignment alignment) {
        switch (alignment) {
        case TextAlignment::Right:
            return Qt::AlignRight;
        case TextAlignment::Centre:
            return Qt::AlignHCenter;
        case TextAlignment::Left:
            break;
        }
        return Qt::AlignLeft;
    }

    void showCaption() {
        // Only a label with a buddy knows marked letters; any other shows its text as it is.
        const bool named = label_.labelled() != nullptr;
        widget_->setText(named ? withMnemonic(label_.caption(), label_.mnemonic())
                               : shownLines(label_.caption()));
    }

    Label& label_;
    ColouredLabel* widget_;
};

} // namespace

std::unique_ptr<ControlWidget> makeLabel(Control& control, QWidget& parent, FaceContext& context) {
    return std::make_unique<LabelWidget>(static_cast<Label&>(control), new ColouredLabel(&parent),
                                         context);
}

} // namespace tarvik::face
