#include "windows/face/ControlIds.h"
#include "windows/face/ControlWindow.h"

namespace tarvik::face {

namespace {

/// A timer has no window: it uses one of the form's timers, with its own number.
class TimerWindow : public ControlWindow {
public:
    TimerWindow(Timer& timer, ControlSite& site)
        : ControlWindow(timer, site, nullptr), timer_(timer) {
        refresh(Property::Interval);
    }
    ~TimerWindow() override { stop(); }

    LayoutSize measure(const FaceFont&, int, int) const override { return {}; }

    void onTimer() override {
        if (site().context().timersRun()) {
            const AskingScope asking(site().context(), nullptr);
            timer_.fire();
        }
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed != Property::Interval && changed != Property::Enabled) {
            return;
        }
        if (timer_.enabled() && timer_.interval() > 0) {
            SetTimer(site().window(), id(), static_cast<UINT>(timer_.interval()), nullptr);
        } else {
            stop();
        }
    }

private:
    UINT_PTR id() const { return static_cast<UINT_PTR>(controlId(timer_)); }
    void stop() { KillTimer(site().window(), id()); }

    Timer& timer_;
};

} // namespace

std::unique_ptr<ControlWindow> makeTimer(Control& control, ControlSite& site) {
    return std::make_unique<TimerWindow>(static_cast<Timer&>(control), site);
}

} // namespace tarvik::face
