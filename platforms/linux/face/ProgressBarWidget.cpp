#include "controls/Controls.h"
#include "linux/face/ControlWidget.h"

#include <QProgressBar>

namespace tarvik::face {

namespace {

class ProgressBarWidget : public ControlWidget {
public:
    ProgressBarWidget(ProgressBar& bar, QProgressBar* widget, FaceContext& context)
        : ControlWidget(bar, widget, context), bar_(bar), widget_(widget) {
        widget->setRange(0, ProgressBar::complete);
        widget->setFormat(QStringLiteral("%p %"));
        refresh(Property::Value);
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Value) {
            widget_->setValue(bar_.value());
        }
    }

private:
    ProgressBar& bar_;
    QProgressBar* widget_;
};

} // namespace

std::unique_ptr<ControlWidget> makeProgressBar(Control& control, QWidget& parent,
                                               FaceContext& context) {
    return std::make_unique<ProgressBarWidget>(static_cast<ProgressBar&>(control),
                                               new QProgressBar(&parent), context);
}

} // namespace tarvik::face
