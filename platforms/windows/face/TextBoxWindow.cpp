#include "windows/face/ControlWindow.h"
#include "windows/face/FigureText.h"

#include <commctrl.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvik::face {

namespace {

DWORD styleOf(const TextBox& textBox) {
    const DWORD alignment = textBox.alignment() == TextAlignment::Right    ? ES_RIGHT
                            : textBox.alignment() == TextAlignment::Centre ? ES_CENTER
                                                                           : ES_LEFT;
    // Lines that are too long for a box of many are broken.
    const DWORD lines =
        textBox.multiLine() ? ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL : ES_AUTOHSCROLL;
    return WS_TABSTOP | lines | alignment | (textBox.readOnly() ? ES_READONLY : 0U);
}

/// One that the user may change stands there as it is: it is taken back.
std::string textFor(const TextBox& textBox, ControlSite& site) {
    return textBox.readOnly() ? site.shown(textBox.text()) : textBox.text();
}

/// The clipboard's text without the blanks and line ends around it, as other programs copy them;
/// empty for none.
std::string pastedText(HWND window) {
    if (OpenClipboard(window) == FALSE) {
        return {};
    }
    std::string text;
    if (const HANDLE data = GetClipboardData(CF_TEXT)) {
        if (const void* const bytes = GlobalLock(data)) {
            const std::string_view held(static_cast<const char*>(bytes), GlobalSize(data));
            text = held.substr(0, held.find('\0'));
            GlobalUnlock(data);
        }
    }
    CloseClipboard();
    constexpr const char* blanks = " \t\r\n";
    text.erase(std::min(text.find_last_not_of(blanks) + 1, text.size()));
    return text.erase(0, std::min(text.find_first_not_of(blanks), text.size()));
}

class TextBoxWindow : public ControlWindow {
public:
    TextBoxWindow(TextBox& textBox, ControlSite& site)
        : ControlWindow(textBox, site,
                        makeChild(textBox, site, "EDIT", textFor(textBox, site), styleOf(textBox),
                                  WS_EX_CLIENTEDGE)),
          textBox_(textBox) {
        if (textBox.readOnly() && !textBox.multiLine() &&
            textBox.alignment() != TextAlignment::Centre) {
            figure_.emplace(window(), textBox.alignment() == TextAlignment::Right,
                            textFor(textBox, site));
        }
        SetWindowSubclass(window(), onMessage, 0, reinterpret_cast<DWORD_PTR>(this));
    }
    ~TextBoxWindow() override { RemoveWindowSubclass(window(), onMessage, 0); }
    TextBoxWindow(const TextBoxWindow&) = delete;
    TextBoxWindow& operator=(const TextBoxWindow&) = delete;

    LayoutSize measure(const FaceFont& font, int characters, int lines) const override {
        constexpr int surroundings = 6;
        // The text stands below a frame of two pixels and room of one, on every screen; with more
        // than that below it, it would stand above that of a label beside it.
        constexpr int aroundText = 6;
        constexpr int usualCharacters = 10;
        const int width = font.charactersWidth(characters > 0 ? characters : usualCharacters);
        return {width + font.horizontalUnits(surroundings),
                font.lineHeight() * (lines > 0 ? lines : 1) + aroundText};
    }

    void onNotification(int code) override {
        if (code == EN_CHANGE && !textBox_.readOnly()) {
            fromUser(Property::Text, [this] { textBox_.setText(windowText()); });
        }
    }

    void onArrival() override {
        fromUser(Property::Text, [this] { textBox_.GotFocus.raise(); });
    }

    void onLeave() override {
        fromUser(Property::Text, [this] { textBox_.LostFocus.raise(); });
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
        if (changed == Property::Text) {
            figure_ ? figure_->show(textFor(textBox_, site())) : showText();
        }
    }

private:
    void showText() {
        // A text that is there already keeps its place of insertion and its selection.
        const std::string text = textFor(textBox_, site());
        if (windowText() == text) {
            return;
        }
        setWindowText(text);
        if (GetFocus() == window() && !textBox_.readOnly()) {
            // Typing goes on behind a text that was put in its place.
            const auto end = static_cast<int>(textBox_.text().size());
            SendMessageA(window(), EM_SETSEL, static_cast<WPARAM>(end), end);
        }
    }

    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second,
                                      UINT_PTR, DWORD_PTR own) {
        auto& box = *reinterpret_cast<TextBoxWindow*>(own);
        if (box.figure_ && box.figure_->answers(message)) {
            return 0;
        }
        const HandlingScope handling(box.site().context());
        if (message == WM_CHAR && box.keyGoesDown_) {
            box.held_.push_back({first, second});
            return 0;
        }
        if (message == WM_KEYDOWN) {
            return box.onKeyDown(first, second);
        }
        if (message == WM_PASTE && box.takesOneLine()) {
            const std::string text = pastedText(window);
            return text.empty() ? 0
                                : SendMessageA(window, EM_REPLACESEL, TRUE,
                                               reinterpret_cast<LPARAM>(text.c_str()));
        }
        const LRESULT result = DefSubclassProc(window, message, first, second);
        if (message == WM_GETDLGCODE) {
            return box.keysWanted(result, reinterpret_cast<const MSG*>(second));
        }
        if (message == WM_KEYUP) {
            box.fromUser(Property::Text, [&] { box.textBox_.KeyUp.raise(); });
        }
        return result;
    }

    /// Tells of the key before it changes the text. What it writes waits already: a handler that
    /// shows a box lets it in while the field takes nothing. It is kept until the handler is done.
    LRESULT onKeyDown(WPARAM key, LPARAM details) {
        const bool nested = std::exchange(keyGoesDown_, true);
        fromUser(Property::Text, [this] { textBox_.KeyDown.raise(); });
        keyGoesDown_ = nested;
        const LRESULT result = DefSubclassProc(window(), WM_KEYDOWN, key, details);
        for (const Character& each : std::exchange(held_, {})) {
            DefSubclassProc(window(), WM_CHAR, each.code, each.details);
        }
        return result;
    }

    /// A box of many lines takes all keys to itself, and closes its window at Escape by a message
    /// that looks like the list of tasks. Escape is the window's, and so is everything in a box in
    /// which nothing can be written.
    LRESULT keysWanted(LRESULT wanted, const MSG* key) const {
        const bool escape = key != nullptr && key->wParam == VK_ESCAPE;
        const bool leaves = textBox_.multiLine() && (textBox_.readOnly() || escape);
        return leaves ? wanted & ~static_cast<LRESULT>(DLGC_WANTALLKEYS) : wanted;
    }

    bool takesOneLine() const { return !textBox_.multiLine() && !textBox_.readOnly(); }

    struct Character {
        WPARAM code;
        LPARAM details;
    };

    TextBox& textBox_;
    std::optional<FigureText> figure_; ///< for one that only shows something
    bool keyGoesDown_ = false;         ///< it is being told
    std::vector<Character> held_;      ///< that came meanwhile
};

} // namespace

std::unique_ptr<ControlWindow> makeTextBox(Control& control, ControlSite& site) {
    return std::make_unique<TextBoxWindow>(static_cast<TextBox&>(control), site);
}

} // namespace tarvik::face
