#include "common/FaceCaption.h"
#include "windows/face/ControlWindow.h"

namespace tarvik::face {

namespace {

class CheckBoxWindow : public ControlWindow {
public:
    CheckBoxWindow(CheckBox& box, ControlSite& site)
        : ControlWindow(box, site,
                        makeChild(box, site, "BUTTON", markedCaption(box.caption(), box.mnemonic()),
                                  // A plain box leaves it to its window what a click does.
                                  box.readOnly() ? BS_CHECKBOX : WS_TABSTOP | BS_AUTOCHECKBOX)),
          box_(box) {
        refresh(Property::Value);
    }

    LayoutSize measure(const FaceFont& font, int, int) const override {
        constexpr int boxAndGap = 12;
        constexpr int height = 10;
        return {font.textWidth(box_.caption()) + font.horizontalUnits(boxAndGap),
                font.verticalUnits(height)};
    }

    void onNotification(int code) override {
        if (code == BN_CLICKED && !box_.readOnly()) {
            const bool ticked = SendMessageA(window(), BM_GETCHECK, 0, 0) == BST_CHECKED;
            fromUser(Property::Value, [&] { box_.setValue(ticked ? 1 : 0); });
        }
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Value) {
            SendMessageA(window(), BM_SETCHECK, box_.ticked() ? BST_CHECKED : BST_UNCHECKED, 0);
        }
    }

private:
    CheckBox& box_;
};

} // namespace

std::unique_ptr<ControlWindow> makeCheckBox(Control& control, ControlSite& site) {
    return std::make_unique<CheckBoxWindow>(static_cast<CheckBox&>(control), site);
}

} // namespace tarvik::face
