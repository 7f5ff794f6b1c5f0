#include "common/FaceCaption.h"
#include "windows/face/ControlWindow.h"

namespace tarvik::face {

namespace {

class OptionButtonWindow : public ControlWindow {
public:
    OptionButtonWindow(OptionButton& option, ControlSite& site)
        // The model takes the choice from the others: a plain button leaves it to its window.
        : ControlWindow(option, site,
                        makeChild(option, site, "BUTTON",
                                  site.shown(markedCaption(option.caption(), option.mnemonic())),
                                  WS_TABSTOP | BS_RADIOBUTTON)),
          option_(option) {
        refresh(Property::Value);
    }

    LayoutSize measure(const FaceFont& font, int, int) const override {
        constexpr int circleAndGap = 12;
        constexpr int height = 10;
        return {font.textWidth(option_.caption()) + font.horizontalUnits(circleAndGap),
                font.verticalUnits(height)};
    }

    void onNotification(int code) override {
        if (code == BN_CLICKED) {
            fromUser(Property::Value, [this] { option_.setValue(true); });
        }
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Value) {
            SendMessageA(window(), BM_SETCHECK, option_.value() ? BST_CHECKED : BST_UNCHECKED, 0);
        }
    }

private:
    OptionButton& option_;
};

} // namespace

std::unique_ptr<ControlWindow> makeOptionButton(Control& control, ControlSite& site) {
    return std::make_unique<OptionButtonWindow>(static_cast<OptionButton&>(control), site);
}

} // namespace tarvik::face
