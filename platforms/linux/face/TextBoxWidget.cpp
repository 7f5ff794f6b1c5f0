#include "controls/Controls.h"
#include "linux/face/ControlWidget.h"
#include "linux/face/FaceText.h"
#include "linux/face/Palette.h"
#include "linux/face/Underlay.h"

#include <QEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

#include <functional>

namespace tarvik::face {

namespace {

/// A line of text; one that cannot be edited has the window's background, so that it does not
/// invite typing. Figures change many times a second: such a box paints what it lies on itself,
/// from a picture, so that neither the frame that it stands in nor its own border is painted each
/// time.
class LineEdit : public QLineEdit {
public:
    LineEdit(QWidget* parent, bool readOnly) : QLineEdit(parent) {
        setReadOnly(readOnly);
        setAttribute(Qt::WA_OpaquePaintEvent, readOnly);
        applyBackground();
    }

    /// What is told of the keyboard and the focus; set before the widget is used.
    std::function<void()> onFocus;
    std::function<void()> onKeyDown;
    std::function<void()> onKeyUp;

    /// Selects now and, if the mouse has brought the focus, again after its press, which would put
    /// the insertion point into the text.
    void select(qsizetype start, qsizetype length) {
        setSelection(static_cast<int>(start), static_cast<int>(length));
        if (focusByMouse_) {
            QMetaObject::invokeMethod(
                this,
                [this, start, length] {
                    setSelection(static_cast<int>(start), static_cast<int>(length));
                },
                Qt::QueuedConnection);
        }
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
    void focusInEvent(QFocusEvent* event) override {
        QLineEdit::focusInEvent(event);
        // The user does not come to the box when the window or a menu of it gives the focus back.
        if (event->reason() != Qt::ActiveWindowFocusReason &&
            event->reason() != Qt::PopupFocusReason) {
            focusByMouse_ = event->reason() == Qt::MouseFocusReason;
            onFocus();
            focusByMouse_ = false;
        }
    }

    void keyPressEvent(QKeyEvent* event) override {
        onKeyDown();
        QLineEdit::keyPressEvent(event);
    }

    void keyReleaseEvent(QKeyEvent* event) override {
        QLineEdit::keyReleaseEvent(event);
        // A key that repeats is still held down.
        if (!event->isAutoRepeat()) {
            onKeyUp();
        }
    }

    void paintEvent(QPaintEvent* event) override {
        const bool onUnderlay = isReadOnly() && Underlay::fits(*this);
        if (onUnderlay != testAttribute(Qt::WA_OpaquePaintEvent)) {
            // What it lies on has not been painted this time, or for nothing.
            setAttribute(Qt::WA_OpaquePaintEvent, onUnderlay);
            update();
        }
        if (onUnderlay) {
            QStyleOptionFrame panel;
            initStyleOption(&panel);
            QPainter painter(this);
            underlay_.paint(painter, event->rect(), panel, *this);
        }
        onlyText_ = onUnderlay;
        QLineEdit::paintEvent(event);
        onlyText_ = false;
    }

    /// While only the text is wanted, a panel without border and ground, which puts the text where
    /// that with them does.
    void initStyleOption(QStyleOptionFrame* option) const override {
        QLineEdit::initStyleOption(option);
        if (onlyText_) {
            const int border = option->lineWidth;
            option->rect.adjust(border, border, -border, -border);
            option->lineWidth = 0;
            option->palette.setBrush(QPalette::Base, Qt::NoBrush);
        }
    }

    void changeEvent(QEvent* event) override {
        QLineEdit::changeEvent(event);
        if (event->type() == QEvent::PaletteChange) {
            applyBackground();
        }
    }

private:
    void applyBackground() {
        if (isReadOnly()) {
            const QPalette inherited = applicationPalette();
            QPalette own = palette();
            for (const QPalette::ColorGroup group :
                 {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
                own.setColor(group, QPalette::Base, inherited.color(group, QPalette::Window));
                own.setColor(group, QPalette::Text, inherited.color(group, QPalette::WindowText));
            }
            setPalette(own);
        }
    }

    Underlay underlay_;
    bool focusByMouse_ = false;
    bool onlyText_ = false;
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
        widget->onFocus = [this] { fromUser(Property::Text, [&] { textBox_.GotFocus.raise(); }); };
        widget->onKeyDown = [this] { fromUser(Property::Text, [&] { textBox_.KeyDown.raise(); }); };
        widget->onKeyUp = [this] { fromUser(Property::Text, [&] { textBox_.KeyUp.raise(); }); };
    }

    int widthFor(int characters) const override {
        return ControlWidget::widthFor(characters) + widget_->surroundings();
    }

    void onLeave() override {
        fromUser(Property::Text, [this] { textBox_.LostFocus.raise(); });
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Selection) {
            select();
            return;
        }
        const QString text = textOf(textBox_.text());
        if (changed == Property::Text && widget_->text() != text) {
            widget_->setText(text);
            // The beginning of a text that does not fit tells more than its end.
            if (widget_->isReadOnly()) {
                widget_->home(false);
            }
        }
    }

private:
    void select() {
        // The model counts bytes, the toolkit characters.
        const auto start = static_cast<std::size_t>(textBox_.selStart());
        const auto length = static_cast<std::size_t>(textBox_.selLength());
        const std::string& text = textBox_.text();
        widget_->select(textOf(text.substr(0, start)).size(),
                        textOf(text.substr(start, length)).size());
    }

    QString textOf(const std::string& text) const {
        return widget_->isReadOnly() ? shown(text) : changeable(text);
    }

    TextBox& textBox_;
    LineEdit* widget_;
};

} // namespace

std::unique_ptr<ControlWidget> makeTextBox(Control& control, QWidget& parent,
                                           FaceContext& context) {
    auto& textBox = static_cast<TextBox&>(control);
    if (textBox.multiLine()) {
        return makeTextArea(control, parent, context);
    }
    return std::make_unique<TextBoxWidget>(textBox, new LineEdit(&parent, textBox.readOnly()),
                                           context);
}

} // namespace tarvik::face
