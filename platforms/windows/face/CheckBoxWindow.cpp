#include "common/FaceCaption.h"
#include "windows/face/ControlWindow.h"

#include <commctrl.h>

namespace tarvik::face {

namespace {

class CheckBoxWindow : public ControlWindow {
public:
    CheckBoxWindow(CheckBox& box, ControlSite& site)
        : ControlWindow(box, site,
                        makeChild(box, site, "BUTTON",
                                  site.shown(markedCaption(box.caption(), box.mnemonic())),
                                  // A plain box leaves it to its window what a click does.
                                  box.readOnly() ? BS_CHECKBOX : WS_TABSTOP | BS_AUTOCHECKBOX)),
          box_(box) {
        if (box.readOnly()) {
            SetWindowSubclass(window(), onMessage, 0, 0);
        }
        refresh(Property::Value);
    }
    ~CheckBoxWindow() override { RemoveWindowSubclass(window(), onMessage, 0); }
    CheckBoxWindow(const CheckBoxWindow&) = delete;
    CheckBoxWindow& operator=(const CheckBoxWindow&) = delete;

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
    /// A box that only shows something knows nothing of the mouse: else a click would give it the
    /// focus, and the pointer over it would make it look as if it could be ticked.
    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second,
                                      UINT_PTR, DWORD_PTR) {
        if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) {
            return 0;
        }
        return DefSubclassProc(window, message, first, second);
    }

    CheckBox& box_;
};

} // namespace

std::unique_ptr<ControlWindow> makeCheckBox(Control& control, ControlSite& site) {
    return std::make_unique<CheckBoxWindow>(static_cast<CheckBox&>(control), site);
}

} // namespace tarvik::face
