#include "controls/Controls.h"
#include "linux/face/ControlWidget.h"
#include "linux/face/FaceText.h"

#include <QGroupBox>

namespace tarvik::face {

namespace {

class FrameWidget : public ControlWidget {
public:
    FrameWidget(Frame& frame, QGroupBox* widget, FaceContext& context)
        : ControlWidget(frame, widget, context) {
        widget->setTitle(withMnemonic(frame.caption(), 0));
    }

protected:
    void refreshOwn(Property) override {}
};

} // namespace

std::unique_ptr<ControlWidget> makeFrame(Control& control, QWidget& parent, FaceContext& context) {
    return std::make_unique<FrameWidget>(static_cast<Frame&>(control), new QGroupBox(&parent),
                                         context);
}

} // namespace tarvik::face
