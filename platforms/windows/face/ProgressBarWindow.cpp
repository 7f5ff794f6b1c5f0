#include "windows/face/ControlWindow.h"

#include <commctrl.h>

namespace tarvik::face {

namespace {

class ProgressBarWindow : public ControlWindow {
public:
    ProgressBarWindow(ProgressBar& bar, ControlSite& site)
        : ControlWindow(bar, site, makeChild(bar, site, PROGRESS_CLASSA, "", PBS_SMOOTH)),
          bar_(bar) {
        SendMessageA(window(), PBM_SETRANGE32, 0, ProgressBar::complete);
        refresh(Property::Value);
    }

    LayoutSize measure(const FaceFont& font, int characters, int) const override {
        constexpr int usualCharacters = 20;
        constexpr int height = 8;
        return {font.charactersWidth(characters > 0 ? characters : usualCharacters),
                font.verticalUnits(height)};
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Value) {
            SendMessageA(window(), PBM_SETPOS, static_cast<WPARAM>(bar_.value()), 0);
        }
    }

private:
    ProgressBar& bar_;
};

} // namespace

std::unique_ptr<ControlWindow> makeProgressBar(Control& control, ControlSite& site) {
    return std::make_unique<ProgressBarWindow>(static_cast<ProgressBar&>(control), site);
}

} // namespace tarvik::face
