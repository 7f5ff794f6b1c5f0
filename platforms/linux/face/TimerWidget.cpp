#include "controls/Controls.h"
#include "linux/face/ControlWidget.h"

#include <QTimer>

namespace tarvik::face {

namespace {

class TimerWidget : public ControlWidget {
public:
    TimerWidget(Timer& timer, FaceContext& context)
        : ControlWidget(timer, nullptr, context), timer_(timer) {
        // A coarse timer may be five per cent off, which is much of a short interval.
        clock_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&clock_, &QTimer::timeout, &clock_, [this] {
            if (this->context().timersRun()) {
                const AskingScope asking(this->context(), nullptr);
                timer_.fire();
            }
        });
        refresh(Property::Interval);
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed != Property::Interval && changed != Property::Enabled) {
            return;
        }
        if (timer_.enabled() && timer_.interval() > 0) {
            clock_.start(timer_.interval());
        } else {
            clock_.stop();
        }
    }

private:
    Timer& timer_;
    QTimer clock_;
};

} // namespace

std::unique_ptr<ControlWidget> makeTimer(Control& control, QWidget&, FaceContext& context) {
    return std::make_unique<TimerWidget>(static_cast<Timer&>(control), context);
}

} // namespace tarvik::face
