#include "contracts/FaceUnderTest.h"
#include "contracts/painted/OutsideNames.h"

#include "../../unit_windows/HebrewPage.h"
#include "../../unit_windows/Later.h"
#include "support/Win32Machine.h"
#include "support/Win32Windows.h"
#include "windows/face/ControlIds.h"

#include <commctrl.h>

#include <gtest/gtest.h>

#include <optional>

namespace tarvik {
namespace {

WPARAM codeOf(FaceKey key) {
    switch (key) {
    case FaceKey::Enter:
        return VK_RETURN;
    case FaceKey::Escape:
        return VK_ESCAPE;
    case FaceKey::Tab:
        return VK_TAB;
    case FaceKey::Delete:
        return VK_DELETE;
    case FaceKey::Left:
        return VK_LEFT;
    case FaceKey::Right:
        return VK_RIGHT;
    case FaceKey::PageUp:
        return VK_PRIOR;
    case FaceKey::PageDown:
        return VK_NEXT;
    case FaceKey::Home:
        return VK_HOME;
    case FaceKey::End:
        return VK_END;
    default:
        return VK_SPACE;
    }
}

/// Those of forms have the forms' names for classes.
BOOL CALLBACK takeFormWindow(HWND window, LPARAM list) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId() && classOf(window).starts_with("frm")) {
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    }
    return TRUE;
}

class Win32Box : public ShownBox {
public:
    explicit Win32Box(const OpenBox& box) : box_(box) {
        caption = box.caption;
        lines.emplace_back();
        for (const char each : box.text) {
            if (each == '\r') {
                lines.emplace_back();
            } else {
                lines.back() += each;
            }
        }
    }

    void press(MsgBoxAnswer answer) override { EXPECT_TRUE(box_.press(answer)); }
    void close() override { PostMessageA(box_.window, WM_CLOSE, 0, 0); }

private:
    const OpenBox& box_;
};

class WindowsFaceUnderTest : public FaceUnderTest {
public:
    explicit WindowsFaceUnderTest(const CodePage& codePage)
        : machine_{.scripted = {}, .desktop = face::WindowsDesktop(codePage)} {}

    Desktop& desktop() override { return machine_.desktop; }
    void settle() override { machine_.desktop.processEvents(); }
    bool waitUntil(const std::function<bool()>& condition) override {
        return spinUntil([this] { settle(); }, condition);
    }
    void runWith(const std::function<void()>& meanwhile) override {
        const Later later([&] {
            meanwhile();
            return true;
        });
        machine_.desktop.run();
        EXPECT_TRUE(later.done());
    }
    void atNextBox(std::function<void(ShownBox&)> act) override {
        later_.emplace([act = std::move(act)] {
            const OpenBox open = openBox(GetCurrentProcessId());
            if (open.window == nullptr) {
                return false;
            }
            Win32Box box(open);
            act(box);
            return true;
        });
    }
    bool canClose(MsgBoxButtons buttons) const override { return buttons != MsgBoxButtons::YesNo; }
    /// As the system does: every window is asked, then told.
    void endSession() override {
        const std::vector<HWND> told = formWindows();
        if (told.empty()) {
            machine_.desktop.end(UnloadMode::AppWindows);
            return;
        }
        EXPECT_TRUE(SendMessageA(told.front(), WM_QUERYENDSESSION, 0, 0));
        SendMessageA(told.front(), WM_ENDSESSION, TRUE, 0);
    }
    /// As the system does: every window is told.
    void goToSleep() override {
        for (const HWND told : formWindows()) {
            SendMessageA(told, WM_POWERBROADCAST, PBT_APMSUSPEND, 0);
        }
    }

    bool hasWindow(const Form& form) const override { return windowOf(form) != nullptr; }
    bool isSeen(const Form& form) const override {
        return IsWindowVisible(windowOf(form)) != FALSE;
    }
    bool isMinimised(const Form& form) const override { return IsIconic(windowOf(form)) != FALSE; }
    void pressCloseBox(const Form& form) override {
        SendMessageA(windowOf(form), WM_SYSCOMMAND, SC_CLOSE, 0);
    }
    void minimiseByHand(Form& form) override {
        ShowWindow(windowOf(form), SW_MINIMIZE);
        settle();
    }
    void restoreByHand(Form& form) override {
        ShowWindow(windowOf(form), SW_RESTORE);
        settle();
    }
    std::vector<std::string> tabOrder(const Form& form, int count) const override {
        std::vector<std::string> names;
        HWND next = nullptr;
        for (int i = 0; i < count; ++i) {
            next = GetNextDlgTabItem(windowOf(form), next, FALSE);
            const Control* control = face::controlWithId(form, GetDlgCtrlID(next));
            names.push_back(control == nullptr ? "" : control->name());
        }
        return names;
    }
    std::string focused(const Form& form) const override {
        const HWND there = GetFocus();
        const Control* control =
            GetParent(there) == nullptr ? nullptr : face::controlWithId(form, GetDlgCtrlID(there));
        return control == nullptr || windowOf(*control) != there ? "" : control->name();
    }
    void pressMnemonic(Form&, char letter) override {
        constexpr LPARAM withAlt = 1 << 29;
        PostMessageA(GetFocus(), WM_SYSCHAR, static_cast<WPARAM>(letter), withAlt);
        settle();
    }

    std::string marked(const Control& control) const override { return textOf(windowOf(control)); }
    std::string shown(const Control& control) const override {
        const HWND window = windowOf(control);
        if (classOf(window) != "ComboBox") {
            return textOf(window);
        }
        char text[64] = {};
        const LRESULT chosen = SendMessageA(window, CB_GETCURSEL, 0, 0);
        SendMessageA(window, CB_GETLBTEXT, static_cast<WPARAM>(chosen),
                     reinterpret_cast<LPARAM>(text));
        return text;
    }
    bool isTicked(const Control& control) const override {
        return SendMessageA(windowOf(control), BM_GETCHECK, 0, 0) == BST_CHECKED;
    }
    bool isEnabled(const Control& control) const override {
        return IsWindowEnabled(windowOf(control)) != FALSE;
    }
    bool isVisible(const Control& control) const override {
        const HWND window = windowOf(control);
        return IsWindowVisible(windowOf(control.list())) != FALSE
                   ? IsWindowVisible(window) != FALSE
                   : (GetWindowLongPtrA(window, GWL_STYLE) & WS_VISIBLE) != 0;
    }
    /// As the window of the form's tips has it.
    std::string tip(const Control& control) const override {
        char text[256] = {};
        for (const HWND tips : topLevelWindows(TOOLTIPS_CLASSA, GetCurrentProcessId())) {
            TOOLINFOA tool{};
            tool.cbSize = TTTOOLINFOA_V2_SIZE;
            tool.uFlags = TTF_IDISHWND;
            tool.hwnd = windowOf(control.list());
            tool.uId = reinterpret_cast<UINT_PTR>(windowOf(control));
            tool.lpszText = text;
            SendMessageA(tips, TTM_GETTEXTA, 0, reinterpret_cast<LPARAM>(&tool));
        }
        return text;
    }
    std::string spoken(const Control& control) const override { return textOf(windowOf(control)); }
    void click(Control& control) override { SendMessageA(windowOf(control), BM_CLICK, 0, 0); }
    void press(Control& control, FaceKey key) override {
        constexpr LPARAM comesUp = 0xC0000001;
        const HWND target = windowOf(control);
        SetFocus(target);
        PostMessageA(target, WM_KEYDOWN, codeOf(key), 1);
        PostMessageA(target, WM_KEYUP, codeOf(key), comesUp);
        settle();
    }
    void enter(TextBox& field, char text) override {
        SendMessageA(windowOf(field), EM_SETSEL, 0, -1);
        SendMessageA(windowOf(field), WM_CHAR, static_cast<WPARAM>(text), 1);
    }
    void choose(ComboBox& list, int entry) override {
        SendMessageA(windowOf(list), CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
        SendMessageA(windowOf(list.list()), WM_COMMAND,
                     MAKEWPARAM(face::controlId(list), CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(windowOf(list)));
    }
    void goInto(TextBox& field) override {
        SetFocus(windowOf(field));
        if (GetFocus() != windowOf(field)) {
            SendMessageA(windowOf(field), WM_SETFOCUS, 0, 0);
        }
    }
    /// The press brings the focus first and moves the insertion point then.
    void clickInto(TextBox& field) override {
        const HWND edit = windowOf(field);
        SetFocus(edit);
        SendMessageA(edit, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
        SendMessageA(edit, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
        settle();
    }
    void type(TextBox& field, char letter) override {
        constexpr LPARAM comesUp = 0xC0000001;
        const HWND edit = windowOf(field);
        const auto key = static_cast<WPARAM>(letter - 'a' + 'A');
        SendMessageA(edit, WM_KEYDOWN, key, 1);
        SendMessageA(edit, WM_CHAR, static_cast<WPARAM>(letter), 1);
        SendMessageA(edit, WM_KEYUP, key, comesUp);
        // A key comes as a message that waited: a form that it ends goes when that was handled.
        PostMessageA(edit, WM_NULL, 0, 0);
    }
    void typeOn(char letter) override {
        constexpr LPARAM comesUp = 0xC0000001;
        const auto key = static_cast<WPARAM>(letter - 'a' + 'A');
        PostMessageA(GetFocus(), WM_KEYDOWN, key, 1);
        settle();
        PostMessageA(GetFocus(), WM_KEYUP, key, comesUp);
        settle();
    }
    void paste(TextBox& field, const std::string& text) override {
        constexpr WPARAM pasteKey = 0x16;
        copyText(text);
        SendMessageA(windowOf(field), WM_CHAR, pasteKey, 1);
    }
    void selectByHand(TextBox& field, int start, int length) override {
        SendMessageA(windowOf(field), EM_SETSEL, static_cast<WPARAM>(start), start + length);
    }
    std::string selected(const TextBox& field) const override {
        DWORD from = 0;
        DWORD to = 0;
        SendMessageA(windowOf(field), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                     reinterpret_cast<LPARAM>(&to));
        return textOf(windowOf(field)).substr(from, to - from);
    }
    void tickLate(Timer& timer) override {
        SendMessageA(windowOf(timer.list()), WM_TIMER, static_cast<WPARAM>(face::controlId(timer)),
                     0);
    }
    int lineCount(const TextBox& area) const override {
        return static_cast<int>(SendMessageA(windowOf(area), EM_GETLINECOUNT, 0, 0));
    }
    bool isReadOnly(const TextBox& area) const override {
        return (GetWindowLongA(windowOf(area), GWL_STYLE) & ES_READONLY) != 0;
    }
    int percent(const ProgressBar& bar) const override {
        EXPECT_EQ(classOf(windowOf(bar)), PROGRESS_CLASSA);
        EXPECT_EQ(SendMessageA(windowOf(bar), PBM_GETRANGE, FALSE, 0), 100);
        return static_cast<int>(SendMessageA(windowOf(bar), PBM_GETPOS, 0, 0));
    }

    int rowCount(const ListView& list) const override {
        return static_cast<int>(SendMessageA(windowOf(list), LVM_GETITEMCOUNT, 0, 0));
    }
    std::string cell(const ListView& list, int row, int column) const override {
        char text[64] = {};
        LVITEMA item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = sizeof text;
        SendMessageA(windowOf(list), LVM_GETITEMTEXTA, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
        return text;
    }
    int selectedRow(const ListView& list) const override {
        return static_cast<int>(
            SendMessageA(windowOf(list), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }
    void selectRow(ListView& list, int row) override {
        LVITEMA item{};
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageA(windowOf(list), LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
    }
    void clickRow(ListView& list, int row) override { clickOn(list, row, WM_LBUTTONDOWN); }
    void doubleClickRow(ListView& list, int row) override {
        clickOn(list, row, WM_LBUTTONDOWN);
        clickOn(list, row, WM_LBUTTONDBLCLK);
    }
    void typeLetter(ListView& list, char letter) override {
        constexpr LPARAM comesUp = 0xC0000001;
        SetFocus(windowOf(list));
        PostMessageA(windowOf(list), WM_KEYDOWN, static_cast<WPARAM>(letter), 1);
        PostMessageA(windowOf(list), WM_KEYUP, static_cast<WPARAM>(letter), comesUp);
        settle();
    }
    bool hasFlatHeaders(const ListView& list) const override {
        const auto header =
            reinterpret_cast<HWND>(SendMessageA(windowOf(list), LVM_GETHEADER, 0, 0));
        return (GetWindowLongA(header, GWL_STYLE) & HDS_BUTTONS) == 0;
    }
    int columnWidth(const ListView& list, int column) const override {
        return static_cast<int>(
            SendMessageA(windowOf(list), LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0));
    }
    int textWidth(const ListView& list, const std::string& text) const override {
        return static_cast<int>(SendMessageA(windowOf(list), LVM_GETSTRINGWIDTHA, 0,
                                             reinterpret_cast<LPARAM>(text.c_str())));
    }
    void repaint(ListView& list) override {
        UpdateWindow(windowOf(list));
        settle();
    }

private:
    /// The windows that the system would ask.
    static std::vector<HWND> formWindows() {
        std::vector<HWND> windows;
        EnumWindows(takeFormWindow, reinterpret_cast<LPARAM>(&windows));
        return windows;
    }

    /// The left button goes down on a row, or down for the second time, and up again.
    void clickOn(const ListView& list, int row, UINT down) {
        RECT place{.left = LVIR_BOUNDS, .top = 0, .right = 0, .bottom = 0};
        SendMessageA(windowOf(list), LVM_GETITEMRECT, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&place));
        const LPARAM at = MAKELPARAM(place.left + 10, (place.top + place.bottom) / 2);
        PostMessageA(windowOf(list), down, MK_LBUTTON, at);
        PostMessageA(windowOf(list), WM_LBUTTONUP, 0, at);
        settle();
    }

    Win32Machine machine_;
    std::optional<Later> later_;
};

} // namespace

std::unique_ptr<FaceUnderTest> faceUnderTest() {
    return std::make_unique<WindowsFaceUnderTest>(windowsCodePage());
}

OutsideNamesUnderTest outsideNamesUnderTest() {
    return {.face = std::make_unique<WindowsFaceUnderTest>(hebrewPage()),
            .turned = "\xF9\xF8 Bank \xFEgnp.exe",
            .told = "\xF9\xF8 Bank [U+200F]gnp.exe"};
}

} // namespace tarvik
