#include "controls/Controls.h"
#include "linux/face/ControlWidget.h"
#include "linux/face/FaceText.h"
#include "linux/face/Palette.h"

#include <QEvent>
#include <QLabel>

#include <algorithm>

namespace tarvik::face {

namespace {

/// A label whose colour stays readable when the palette changes, with room for each of its
/// captions.
class ColouredLabel : public QLabel {
public:
    ColouredLabel(const Label& label, QWidget* parent) : QLabel(parent), label_(label) {}

    QSize sizeHint() const override { return withRoom(QLabel::sizeHint()); }
    QSize minimumSizeHint() const override { return withRoom(QLabel::minimumSizeHint()); }

    void setTextColour(const Colour& colour) {
        colour_ = colour;
        applyColour();
    }

protected:
    void changeEvent(QEvent* event) override {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::PaletteChange) {
            applyColour();
        }
    }

private:
    QSize withRoom(const QSize& hint) const {
        constexpr int roomy = 2000; // pixels; no caption is as long
        int widest = hint.width();
        for (const std::string& other : label_.otherCaptions()) {
            // As the toolkit measures the text that it shows.
            const QRect text = fontMetrics().boundingRect(
                0, 0, roomy, roomy, static_cast<int>(alignment()), shown(other));
            widest = std::max(widest, text.width());
        }
        return {widest, hint.height()};
    }

    void applyColour() {
        const QPalette inherited = applicationPalette();
        QPalette own = palette();
        // A disabled label keeps the looks of what is disabled.
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            own.setColor(group, QPalette::WindowText, readableColour(colour_, inherited));
        }
        own.setColor(QPalette::Disabled, QPalette::WindowText,
                     inherited.color(QPalette::Disabled, QPalette::WindowText));
        setPalette(own);
    }

    const Label& label_;
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
    auto& label = static_cast<Label&>(control);
    return std::make_unique<LabelWidget>(label, new ColouredLabel(label, &parent), context);
}

} // namespace tarvik::face
