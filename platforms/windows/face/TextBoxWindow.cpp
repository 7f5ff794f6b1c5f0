#include "windows/face/ControlWindow.h"

namespace tarvik::face {

namespace {

DWORD styleOf(const TextBox& textBox) {
    const DWORD alignment = textBox.alignment() == TextAlignment::Right    ? ES_RIGHT
                            : textBox.alignment() == TextAlignment::Centre ? ES_CENTER
                                                                           : ES_LEFT;
    return WS_TABSTOP | ES_AUTOHSCROLL | alignment | (textBox.readOnly() ? ES_READONLY : 0U);
}

class TextBoxWindow : public ControlWindow {
public:
    TextBoxWindow(TextBox& textBox, ControlSite& site)
        : ControlWindow(
              textBox, site,
              makeChild(textBox, site, "EDIT", textBox.text(), styleOf(textBox), WS_EX_CLIENTEDGE)),
          textBox_(textBox) {}

    LayoutSize measure(const FaceFont& font, int characters, int lines) const override {
        constexpr int surroundings = 6;
        // The frame and the room inside it are the same number of pixels on every screen; with
        // more, the text would stand above that of a label beside it.
        constexpr int aroundText = 8;
        constexpr int usualCharacters = 10;
        const int width = font.charactersWidth(characters > 0 ? characters : usualCharacters);
        return {width + font.horizontalUnits(surroundings),
                font.lineHeight() * (lines > 0 ? lines : 1) + aroundText};
    }

    void onNotification(int code) override {
        if (code == EN_CHANGE) {
            fromUser(Property::Text, [this] { textBox_.setText(windowText()); });
        }
    }

protected:
    void refreshOwn(Property changed) override {
        // A text that is there already keeps its place of insertion and its selection.
        if (changed == Property::Text && windowText() != textBox_.text()) {
            setWindowText(textBox_.text());
        }
    }

private:
    TextBox& textBox_;
};

} // namespace

std::unique_ptr<ControlWindow> makeTextBox(Control& control, ControlSite& site) {
    return std::make_unique<TextBoxWindow>(static_cast<TextBox&>(control), site);
}

} // namespace tarvik::face
