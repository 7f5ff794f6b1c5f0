#include "Driver.h"
#include "ExpectedBoxes.h"

#include "Win32Eyes.h"

#include "forms/Forms.h"
#include "support/Win32Machine.h"
#include "support/Win32Windows.h"
#include "windows/face/ControlIds.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <utility>

namespace tarvik::scenarios {

namespace {

std::string chosenEntry(HWND combo) {
    const LRESULT chosen = SendMessageA(combo, CB_GETCURSEL, 0, 0);
    if (chosen == CB_ERR) {
        return "";
    }
    const LRESULT length = SendMessageA(combo, CB_GETLBTEXTLEN, static_cast<WPARAM>(chosen), 0);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    SendMessageA(combo, CB_GETLBTEXT, static_cast<WPARAM>(chosen),
                 reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

/// What a user reads on a window of any kind.
std::string shownText(HWND window) {
    const std::string className = classOf(window);
    if (className == "ComboBox") {
        return chosenEntry(window);
    }
    if (className == PROGRESS_CLASSA) {
        return progressText(static_cast<int>(SendMessageA(window, PBM_GETPOS, 0, 0)));
    }
    const auto style = static_cast<DWORD>(GetWindowLongPtrA(window, GWL_STYLE));
    const DWORD type = style & BS_TYPEMASK;
    if (className == "Button" && (type == BS_AUTOCHECKBOX || type == BS_CHECKBOX ||
                                  type == BS_AUTORADIOBUTTON || type == BS_RADIOBUTTON)) {
        const bool ticked = SendMessageA(window, BM_GETCHECK, 0, 0) == BST_CHECKED;
        return boxText(ticked, withoutMarks(textOf(window)));
    }
    const bool marks =
        className == "Button" || (className == "Static" && (style & SS_NOPREFIX) == 0);
    return marks ? withoutMarks(textOf(window)) : textOf(window);
}

void holdShift(bool held) {
    std::array<BYTE, 256> keys{};
    GetKeyboardState(keys.data());
    keys[VK_SHIFT] = held ? 0x80 : 0;
    SetKeyboardState(keys.data());
}

class Win32Driver : public Driver {
public:
    Win32Driver() {
        current = this;
        watch_ = SetTimer(nullptr, 0, 10, onWatch);
    }
    ~Win32Driver() override {
        KillTimer(nullptr, watch_);
        current = nullptr;
    }

    ScriptedPlatform& machine() override { return machine_.scripted; }
    Platform& platform() override { return machine_.platform; }

    void click(const std::string& name) override {
        settle();
        const HWND button = control(name);
        const Acting acting(*this, GetParent(button));
        SetActiveWindow(GetParent(button));
        SendMessageA(button, BM_CLICK, 0, 0);
    }

    void type(const std::string& name, const std::string& keys) override {
        settle();
        const HWND box = control(name);
        const Acting acting(*this, GetParent(box));
        SetActiveWindow(GetParent(box));
        if (GetFocus() == box) {
            SendMessageA(GetParent(box), WM_NEXTDLGCTL, 0, FALSE);
        }
        SetFocus(box);
        settle();
        for (const char key : keys) {
            const SHORT scanned = VkKeyScanA(key);
            const WPARAM code = key == '\b' ? VK_BACK : LOBYTE(scanned);
            holdShift(key != '\b' && (HIBYTE(scanned) & 1) != 0);
            // What the key writes waits behind it, as it comes from the keyboard.
            PostMessageA(box, WM_KEYDOWN, code, 1);
            settle();
            SendMessageA(box, WM_KEYUP, code, 1);
        }
        holdShift(false);
    }

    void choose(const std::string& name, const std::string& entry) override {
        settle();
        const HWND combo = control(name);
        const Acting acting(*this, GetParent(combo));
        comeTo(combo);
        const LRESULT place = SendMessageA(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(CB_ERR),
                                           reinterpret_cast<LPARAM>(entry.c_str()));
        SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
        // The user's choice is told to the form, the program's is not.
        const WPARAM news = MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE);
        SendMessageA(GetParent(combo), WM_COMMAND, news, reinterpret_cast<LPARAM>(combo));
    }

    void select(const std::string& name, int row) override {
        settle();
        const HWND list = control(name);
        const Acting acting(*this, GetParent(list));
        comeTo(list);
        LVITEMA item{};
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageA(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
    }

    void open(const std::string& name) override {
        settle();
        const HWND list = control(name);
        const Acting acting(*this, GetParent(list));
        comeTo(list);
        NMHDR news{list, static_cast<UINT_PTR>(GetDlgCtrlID(list)), static_cast<UINT>(NM_DBLCLK)};
        SendMessageA(GetParent(list), WM_NOTIFY, news.idFrom, reinterpret_cast<LPARAM>(&news));
    }

    std::string read(const std::string& name) override {
        settle();
        const HWND found = control(name);
        const Form& form = table(name.substr(0, name.find('.')));
        return seenText(*face::controlWithId(form, GetDlgCtrlID(found)), found);
    }

    bool visible(const std::string& name) override {
        settle();
        const HWND found = ownWindow(name);
        return found != nullptr && IsWindowVisible(found) != FALSE;
    }

    bool minimised(const std::string& name) override {
        settle();
        return IsIconic(ownWindow(name)) != FALSE;
    }

    void closeWindow(const std::string& name) override {
        settle();
        const HWND window = ownWindow(name);
        const Acting acting(*this, window);
        SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    }

    void clickTrayIcon() override { iconTells(leftButtonReleased); }

    void chooseTrayEntry(int entry) override {
        chosenEntry_ = entry;
        iconTells(rightButtonReleased);
    }

    void answerNext(const std::string& text, MsgBoxButtons buttons, MsgBoxAnswer answer) override {
        boxes_.announce(text, buttons, answer);
    }

    void answerEvery(Chooser choose) override { choose_ = std::move(choose); }

    void press(const std::string& name, Key key) override {
        static constexpr std::array<int, keyCount> codes{
            VK_TAB,  VK_RETURN, VK_ESCAPE, VK_SPACE, VK_LEFT, VK_RIGHT, VK_UP,
            VK_DOWN, VK_PRIOR,  VK_NEXT,   VK_HOME,  VK_END,  VK_F4};
        const HWND window = ownWindow(name);
        const Acting acting(*this, window);
        SetActiveWindow(window);
        const HWND focus = GetFocus();
        const HWND target = focus == window || IsChild(window, focus) != FALSE ? focus : window;
        const auto code = static_cast<WPARAM>(codes.at(static_cast<std::size_t>(key)));
        PostMessageA(target, WM_KEYDOWN, code, 1);
        PostMessageA(target, WM_KEYUP, code, 1);
    }

    /// Each click brings its window to the front again, whatever the one before has opened.
    void clickAt(const std::string& name, int x, int y, int times) override {
        const HWND window = ownWindow(name);
        const Acting acting(*this, window);
        for (int i = 0; i < times && IsWindowVisible(window) != FALSE; ++i) {
            SetActiveWindow(window);
            RECT area{};
            GetClientRect(window, &area);
            clickOnce(window, {area.right * x / 1000, area.bottom * y / 1000}, i % 2 == 1);
        }
    }

    void resize(const std::string& name, int width, int height) override {
        // A user does not get a window larger than the screen; the system takes such a size, and
        // another one when the window comes back.
        SetWindowPos(ownWindow(name), nullptr, 0, 0, std::min(width, GetSystemMetrics(SM_CXSCREEN)),
                     std::min(height, GetSystemMetrics(SM_CYSCREEN)),
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        machine_.desktop.processEvents();
        eyes_.acceptSizes();
    }

    /// What the program has put off until it handles messages again is done.
    void settle() override {
        machine_.desktop.processEvents();
        eyes_.look();
    }

    std::string complaints() override { return eyes_.complaints(); }

    std::string boxTrouble() override { return boxes_.trouble(); }

    bool waitUntil(const std::function<bool()>& condition) override {
        constexpr ULONGLONG deadline = 60'000;
        const ULONGLONG begin = GetTickCount64();
        while (!condition() && GetTickCount64() - begin < deadline) {
            WaitMessage(); // the watch wakes it
            settle();
        }
        return condition();
    }

    std::vector<SeenControl> controls(const std::string& name) override {
        settle();
        std::vector<SeenControl> seen;
        for (HWND child = GetWindow(ownWindow(name), GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            const Control* known = face::controlWithId(table(name), GetDlgCtrlID(child));
            const auto style = static_cast<DWORD>(GetWindowLongPtrA(child, GWL_STYLE));
            if (known != nullptr && (style & WS_VISIBLE) != 0) {
                seen.push_back(
                    {known->name(), seenText(*known, child), IsWindowEnabled(child) != FALSE});
            }
        }
        return seen;
    }

private:
    /// The user acts in a window for its own lifetime; then what waits is handled.
    class Acting {
    public:
        Acting(Win32Driver& driver, HWND window) : driver_(driver) {
            driver_.eyes_.userActsIn(window);
        }
        ~Acting() {
            driver_.settle();
            driver_.eyes_.userActsIn(nullptr);
        }
        Acting(const Acting&) = delete;
        Acting& operator=(const Acting&) = delete;

    private:
        Win32Driver& driver_;
    };

    /// Which window a mouse at that place of another is over: frames let it through.
    static HWND windowUnder(HWND window, POINT place) {
        POINT onScreen = place;
        ClientToScreen(window, &onScreen);
        for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            RECT area{};
            GetWindowRect(child, &area);
            if (IsWindowVisible(child) != FALSE && PtInRect(&area, onScreen) != FALSE &&
                SendMessageA(child, WM_NCHITTEST, 0, MAKELPARAM(onScreen.x, onScreen.y)) !=
                    HTTRANSPARENT) {
                return child;
            }
        }
        return window;
    }

    void clickOnce(HWND window, POINT place, bool endsDoubleClick) {
        const HWND hit = windowUnder(window, place);
        if (IsWindowEnabled(hit) == FALSE) {
            return;
        }
        MapWindowPoints(window, hit, &place, 1);
        const LPARAM at = MAKELPARAM(place.x, place.y);
        PostMessageA(hit, endsDoubleClick ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN, MK_LBUTTON, at);
        PostMessageA(hit, WM_LBUTTONUP, 0, at);
        settle();
        if (classOf(hit) == "ComboBox") {
            SendMessageA(hit, CB_SHOWDROPDOWN, FALSE, 0);
        }
    }

    /// As a click does.
    static void comeTo(HWND control) {
        SetActiveWindow(GetParent(control));
        SetFocus(control);
    }

    /// Of a chart its title alone: what is drawn, or read off, follows.
    static std::string seenText(const Control& known, HWND window) {
        const std::string text = shownText(window);
        return known.kind() == ControlKind::Chart ? text.substr(0, text.find(". ")) : text;
    }

    static void CALLBACK onWatch(HWND, UINT, UINT_PTR, DWORD) {
        if (current != nullptr) {
            current->answerOpenBox();
            current->chooseInMenu();
        }
    }

    /// The numbers of the controls: those of a set of forms that nobody shows.
    const Form& table(const std::string& name) {
        const auto all = numbers_.all();
        return **std::find_if(all.begin(), all.end(),
                              [&](const Form* form) { return form->name() == name; });
    }

    HWND control(const std::string& name) {
        const std::size_t dot = name.find('.');
        const std::string form = name.substr(0, dot);
        const Control* known = table(form).control(name.substr(dot + 1));
        return windowOf(*known);
    }

    /// As the task bar tells the window that the icon's record names.
    void iconTells(int message) {
        const NOTIFYICONDATAA& record = machine_.scripted.notificationArea.requests.back().data;
        SendMessageA(reinterpret_cast<HWND>(std::uintptr_t{record.hWnd}), record.uCallbackMessage,
                     record.uID, message);
        settle();
    }

    /// Goes down to the entry, past those that cannot be chosen, and presses Enter.
    void chooseInMenu() {
        const HMENU menu = openMenu(GetCurrentProcessId());
        if (menu == nullptr || chosenEntry_ < 0) {
            return;
        }
        const auto entry = static_cast<UINT>(std::exchange(chosenEntry_, -1)) + 1;
        for (int place = 0; place < GetMenuItemCount(menu); ++place) {
            if ((GetMenuState(menu, static_cast<UINT>(place), MF_BYPOSITION) & MF_SEPARATOR) == 0) {
                PostMessageA(ownWindow("frmMain"), WM_KEYDOWN, VK_DOWN, 1);
            }
            if (GetMenuItemID(menu, place) == entry) {
                break;
            }
        }
        PostMessageA(ownWindow("frmMain"), WM_KEYDOWN, VK_RETURN, 1);
    }

    void answerOpenBox() {
        const OpenBox box = openBox(GetCurrentProcessId());
        if (box.window == nullptr || box.window == answered_) {
            return;
        }
        answered_ = box.window;
        eyes_.lookAtBox(box.window);
        if (choose_) {
            const auto answers = box.answers();
            const int chosen = choose_(box.text, static_cast<int>(answers.size()));
            box.press(answers.at(static_cast<std::size_t>(chosen)));
            return;
        }
        const std::optional<MsgBoxAnswer> answer = boxes_.answerTo(box.text);
        if (answer && box.press(*answer)) {
            return;
        }
        if (answer) {
            boxes_.noteMissingButton(box.text);
        }
        EndDialog(box.window, 0);
    }

    static Win32Driver* current;
    Win32Machine machine_;
    Win32Eyes eyes_;
    Forms numbers_{machine_.desktop};
    UINT_PTR watch_ = 0;
    HWND answered_ = nullptr;
    int chosenEntry_ = -1; ///< of the menu that opens next
    ExpectedBoxes boxes_;
    Chooser choose_;
};

Win32Driver* Win32Driver::current = nullptr;

} // namespace

std::unique_ptr<Driver> makeDriver() {
    return std::make_unique<Win32Driver>();
}

} // namespace tarvik::scenarios
