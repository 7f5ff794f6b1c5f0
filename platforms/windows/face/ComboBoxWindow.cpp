#include "windows/face/ControlWindow.h"

namespace tarvik::face {

namespace {

class ComboBoxWindow : public ControlWindow {
public:
    ComboBoxWindow(ComboBox& combo, ControlSite& site)
        : ControlWindow(
              combo, site,
              makeChild(combo, site, "COMBOBOX", "", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST)),
          combo_(combo) {
        refresh(Property::Items);
    }

    LayoutSize measure(const FaceFont& font, int characters, int) const override {
        constexpr int arrowAndGap = 16;
        constexpr int usualCharacters = 10;
        const int width = font.charactersWidth(characters > 0 ? characters : usualCharacters);
        // The window decides on its height from its font; what is set is that of the open list.
        RECT rect{};
        GetWindowRect(window(), &rect);
        return {width + font.horizontalUnits(arrowAndGap),
                static_cast<int>(rect.bottom - rect.top)};
    }

    void onNotification(int code) override {
        if (code == CBN_DROPDOWN) {
            fromUser(Property::ListIndex, [this] { combo_.DropDown.raise(); });
        } else if (code == CBN_SELCHANGE) {
            const auto chosen = static_cast<int>(SendMessageA(window(), CB_GETCURSEL, 0, 0));
            fromUser(Property::ListIndex, [&] { combo_.setListIndex(chosen); });
        }
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Items) {
            showItems();
        }
        if (SendMessageA(window(), CB_GETCURSEL, 0, 0) != combo_.listIndex()) {
            // None is told by the same number here and there.
            SendMessageA(window(), CB_SETCURSEL, static_cast<WPARAM>(combo_.listIndex()), 0);
        }
    }

private:
    void showItems() {
        SendMessageA(window(), CB_RESETCONTENT, 0, 0);
        for (const std::string& item : combo_.items()) {
            const std::string text = shown(item);
            SendMessageA(window(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
        }
    }

    ComboBox& combo_;
};

} // namespace

std::unique_ptr<ControlWindow> makeComboBox(Control& control, ControlSite& site) {
    return std::make_unique<ComboBoxWindow>(static_cast<ComboBox&>(control), site);
}

} // namespace tarvik::face
