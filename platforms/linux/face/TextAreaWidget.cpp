#include "controls/Controls.h"
#include "linux/face/ControlWidget.h"
#include "linux/face/FaceText.h"

#include <QPlainTextEdit>

namespace tarvik::face {

namespace {

/// A text of as many lines as there are.
class TextAreaWidget : public ControlWidget {
public:
    TextAreaWidget(TextBox& textBox, QPlainTextEdit* widget, FaceContext& context)
        : ControlWidget(textBox, widget, context), textBox_(textBox), widget_(widget) {
        widget->setReadOnly(textBox.readOnly());
        widget->setTabChangesFocus(true);
        widget->setLineWrapMode(QPlainTextEdit::NoWrap);
        refresh(Property::Text);
        if (!textBox.readOnly()) {
            QObject::connect(widget, &QPlainTextEdit::textChanged, widget, [this] {
                fromUser(Property::Text, [&] { textBox_.setText(enteredText()); });
            });
        }
    }

    int widthFor(int characters) const override {
        constexpr int scrollBar = 3;
        return ControlWidget::widthFor(characters + scrollBar);
    }

    void onLeave() override {
        fromUser(Property::Text, [this] { textBox_.LostFocus.raise(); });
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Selection) {
            widget_->selectAll();
        } else if (changed == Property::Text && showsAnotherText()) {
            const std::string& text = textBox_.text();
            widget_->setPlainText(textBox_.readOnly() ? shownLines(text) : changeableLines(text));
        }
    }

private:
    bool showsAnotherText() const {
        return textBox_.readOnly() ? widget_->toPlainText() != shownLines(textBox_.text())
                                   : enteredText() != textBox_.text();
    }

    std::string enteredText() const {
        QString text = widget_->toPlainText();
        return entered(text.replace(QLatin1Char('\n'), QStringLiteral("\r\n")));
    }

    TextBox& textBox_;
    QPlainTextEdit* widget_;
};

} // namespace

std::unique_ptr<ControlWidget> makeTextArea(Control& control, QWidget& parent,
                                            FaceContext& context) {
    return std::make_unique<TextAreaWidget>(static_cast<TextBox&>(control),
                                            new QPlainTextEdit(&parent), context);
}

} // namespace tarvik::face
