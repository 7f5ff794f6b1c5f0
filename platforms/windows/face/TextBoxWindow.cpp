#include "windows/face/ControlWindow.h"

#include <commctrl.h>

namespace tarvik::face {

namespace {

DWORD styleOf(const TextBox& textBox) {
    const DWORD alignment = textBox.alignment() == TextAlignment::Right    ? ES_RIGHT
                            : textBox.alignment() == TextAlignment::Centre ? ES_CENTER
                                                                           : ES_LEFT;
    const DWORD lines =
        textBox.multiLine() ? ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL | WS_HSCROLL : 0U;
    return WS_TABSTOP | ES_AUTOHSCROLL | lines | alignment |
           (textBox.readOnly() ? ES_READONLY : 0U);
}

class TextBoxWindow : public ControlWindow {
public:
    TextBoxWindow(TextBox& textBox, ControlSite& site)
        : ControlWindow(
              textBox, site,
              makeChild(textBox, site, "EDIT", textBox.text(), styleOf(textBox), WS_EX_CLIENTEDGE)),
          textBox_(textBox) {
        SetWindowSubclass(window(), onMessage, 0, reinterpret_cast<DWORD_PTR>(this));
    }
    ~TextBoxWindow() override { RemoveWindowSubclass(window(), onMessage, 0); }
    TextBoxWindow(const TextBoxWindow&) = delete;
    TextBoxWindow& operator=(const TextBoxWindow&) = delete;

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
        } else if (code == EN_SETFOCUS) {
            fromUser(Property::Text, [this] { textBox_.GotFocus.raise(); });
        }
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Selection) {
            // Later: a press of the mouse that brought the focus still moves the insertion point.
            const int start = textBox_.selStart();
            PostMessageA(window(), EM_SETSEL, static_cast<WPARAM>(start),
                         start + textBox_.selLength());
            return;
        }
        // A text that is there already keeps its place of insertion and its selection.
        if (changed == Property::Text && windowText() != textBox_.text()) {
            setWindowText(textBox_.text());
            if (GetFocus() == window() && !textBox_.readOnly()) {
                // Typing goes on behind a text that was put in its place.
                const auto end = static_cast<int>(textBox_.text().size());
                SendMessageA(window(), EM_SETSEL, static_cast<WPARAM>(end), end);
            }
        }
    }

private:
    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second,
                                      UINT_PTR, DWORD_PTR own) {
        auto& box = *reinterpret_cast<TextBoxWindow*>(own);
        const HandlingScope handling(box.site().context());
        if (message == WM_KEYDOWN) {
            box.fromUser(Property::Text, [&] { box.textBox_.KeyDown.raise(); });
        }
        const LRESULT result = DefSubclassProc(window, message, first, second);
        if (message == WM_KEYUP) {
            box.fromUser(Property::Text, [&] { box.textBox_.KeyUp.raise(); });
        }
        return result;
    }

    TextBox& textBox_;
};

} // namespace

std::unique_ptr<ControlWindow> makeTextBox(Control& control, ControlSite& site) {
    return std::make_unique<TextBoxWindow>(static_cast<TextBox&>(control), site);
}

} // namespace tarvik::face
