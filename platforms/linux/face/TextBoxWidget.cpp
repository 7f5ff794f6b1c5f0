#include "linux/face/ControlWidget.h"
#include "linux/face/FaceText.h"
#include "linux/face/Palette.h"
#include "ui/controls/Controls.h"

#include <QEvent>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionFrame>

namespace tarvik::face {

namespace {

/// A line of text; one that cannot be edited has the window's background, so that it does not
/// invite typing.
class LineEdit : public QLineEdit {
public:
    LineEdit(QWidget* parent, bool readOnly) : QLineEdit(parent) {
        setReadOnly(readOnly);
        applyBackground();
    }

    /// The width of the frame and the room around the text.
    int surroundings() const {
        QStyleOptionFrame option;
        initStyleOption(&option);
        constexpr int textMargins = 2 * 2 + 2;
        return style()->sizeFromContents(QStyle::CT_LineEdit, &option, QSize(0, 0), this).width() +
               textMargins;
    }

protected:
    void changeEvent(QEvent* event) override {
        QLineEdit::changeEvent(event);
        if (event->type() == QEvent::ApplicationPaletteChange) {
            applyBackground();
        }
    }

private:
    void applyBackground() {
        if (isReadOnly()) {
            const QPalette inherited = applicationPalette();
            QPalette own = palette();
            own.setColor(QPalette::Base, inherited.color(QPalette::Window));
            own.setColor(QPalette::Text, inherited.color(QPalette::WindowText));
            setPalette(own);
        }
    }
};

class TextBoxWidget : public ControlWidget {
public:
    TextBoxWidget(TextBox& textBox, LineEdit* widget, FaceContext& context)
        : ControlWidget(textBox, widget, context), textBox_(textBox), widget_(widget) {
        widget->setAlignment(textBox.alignment() == TextAlignment::Right    ? Qt::AlignRight
                             : textBox.alignment() == TextAlignment::Centre ? Qt::AlignHCenter
                                                                            : Qt::AlignLeft);
        refresh(Property::Text);
        QObject::connect(widget, &QLineEdit::textEdited, widget, [this](const QString& text) {
            fromUser(Property::Text, [&] { textBox_.setText(entered(text)); });
        });
    }

    int widthFor(int characters) const override {
        return ControlWidget::widthFor(characters) + widget_->surroundings();
    }

protected:
    void refreshOwn(Property changed) override {
        const QString text = shown(textBox_.text());
        if (changed == Property::Text && widget_->text() != text) {
            widget_->setText(text);
            // The beginning of a text that does not fit tells more than its end.
            if (widget_->isReadOnly()) {
                widget_->home(false);
            }
        }
    }

private:
    TextBox& textBox_;
    LineEdit* widget_;
};

} // namespace

std::unique_ptr<ControlWidget> makeTextBox(Control& control, QWidget& parent,
                                           FaceContext& context) {
    auto& textBox = static_cast<TextBox&>(control);
    return std::make_unique<TextBoxWidget>(textBox, new LineEdit(&parent, textBox.readOnly()),
                                           context);
}

} // namespace tarvik::face
