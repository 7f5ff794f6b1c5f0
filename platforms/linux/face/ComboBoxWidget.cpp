#include "controls/Controls.h"
#include "linux/face/ControlWidget.h"
#include "linux/face/FaceText.h"

#include <QComboBox>

#include <functional>

namespace tarvik::face {

namespace {

/// A list that tells when it is about to be opened.
class DropDownList : public QComboBox {
public:
    using QComboBox::QComboBox;

    std::function<void()> opening;

    void showPopup() override {
        opening();
        QComboBox::showPopup();
    }
};

class ComboBoxWidget : public ControlWidget {
public:
    ComboBoxWidget(ComboBox& combo, DropDownList* widget, FaceContext& context)
        : ControlWidget(combo, widget, context), combo_(combo), widget_(widget) {
        refresh(Property::Items);
        widget->opening = [this] {
            fromUser(Property::ListIndex, [this] { combo_.DropDown.raise(); });
        };
        QObject::connect(widget, &QComboBox::currentIndexChanged, widget, [this](int index) {
            fromUser(Property::ListIndex, [&] { combo_.setListIndex(index); });
        });
    }

    int widthFor(int characters) const override {
        constexpr int arrow = 2;
        return ControlWidget::widthFor(characters + arrow);
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Items) {
            showItems();
        }
        if (widget_->currentIndex() != combo_.listIndex()) {
            widget_->setCurrentIndex(combo_.listIndex());
        }
    }

private:
    void showItems() {
        QStringList texts;
        for (const std::string& text : combo_.items()) {
            texts.push_back(shown(text));
        }
        widget_->clear();
        // Each insertion is told to whoever looks at the list.
        widget_->addItems(texts);
    }

    ComboBox& combo_;
    QComboBox* widget_;
};

} // namespace

std::unique_ptr<ControlWidget> makeComboBox(Control& control, QWidget& parent,
                                            FaceContext& context) {
    auto* widget = new DropDownList(&parent);
    // The list is as wide as the layout says; its longest entry does not widen the window.
    widget->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return std::make_unique<ComboBoxWidget>(static_cast<ComboBox&>(control), widget, context);
}

} // namespace tarvik::face
