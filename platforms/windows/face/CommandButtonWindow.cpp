#include "common/FaceCaption.h"
#include "windows/face/ControlWindow.h"

#include <algorithm>

namespace tarvik::face {

namespace {

std::string marked(const CommandButton& button) {
    return markedCaption(button.caption(), button.mnemonic());
}

class CommandButtonWindow : public ControlWindow {
public:
    CommandButtonWindow(CommandButton& button, ControlSite& site)
        : ControlWindow(button, site,
                        makeChild(button, site, "BUTTON", site.shown(marked(button)),
                                  WS_TABSTOP | BS_PUSHBUTTON)),
          button_(button) {}

    LayoutSize measure(const FaceFont& font, int, int) const override {
        constexpr int leastWidth = 50;
        constexpr int surroundings = 12;
        constexpr int height = 14;
        const int width = widestText(font, button_.caption(), button_.otherCaptions()) +
                          font.horizontalUnits(surroundings);
        return {std::max(width, font.horizontalUnits(leastWidth)), font.verticalUnits(height)};
    }

    void onNotification(int code) override {
        if (code == BN_CLICKED) {
            fromUser(Property::Caption, [this] { button_.press(); });
        }
    }

protected:
    void refreshOwn(Property changed) override {
        const std::string caption = shown(marked(button_));
        if (changed == Property::Caption && windowText() != caption) {
            setWindowText(caption);
            site().layOutAgain();
        }
    }

private:
    CommandButton& button_;
};

} // namespace

std::unique_ptr<ControlWindow> makeCommandButton(Control& control, ControlSite& site) {
    return std::make_unique<CommandButtonWindow>(static_cast<CommandButton&>(control), site);
}

} // namespace tarvik::face
