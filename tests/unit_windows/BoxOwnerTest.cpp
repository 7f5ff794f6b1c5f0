#include "Later.h"
#include "Win32FaceTest.h"
#include "support/FormOn.h"
#include "windows/face/ControlIds.h"

namespace tarvik {
namespace {

class AskingForm : public Form {
public:
    AskingForm() : Form("frmOther", "Other") { setLayout(row({item(cmdAsk)})); }
    CommandButton cmdAsk{*this, "cmdAsk", {.caption = "Ask"}};
};

/// What the user did last tells before which window a box stands, wherever the focus is.
class BoxOwnerTest : public Win32FaceTest {
protected:
    ~BoxOwnerTest() override {
        other.unload();
        settle();
    }

    static HWND otherWindow() { return ownWindow("frmOther"); }

    void showOther() {
        other.setVisible(true);
        other.bringToFront();
        ASSERT_TRUE(spinUntil([] { return GetActiveWindow() == otherWindow(); }));
    }

    /// Shows a box and tells before which window it stands.
    HWND ownerOfBox() {
        HWND owner = nullptr;
        const Later press([&] {
            const OpenBox open = openBox(GetCurrentProcessId());
            if (open.window != nullptr) {
                owner = GetWindow(open.window, GW_OWNER);
            }
            return open.window != nullptr && open.press(MsgBoxAnswer::Ok);
        });
        desktop.messageBox({.text = "?", .caption = "T"});
        return owner;
    }

    FormOn<AskingForm> other{machine.platform.desktop};
};

TEST_F(BoxOwnerTest, ABoxStandsBeforeTheWindowWhoseUserIsAnswered) {
    show();
    showOther();
    HWND owner = nullptr;
    form.cmdOk.Click.connect([&] { owner = ownerOfBox(); });

    // As a screen reader presses it, without going there.
    SendMessageA(window(), WM_COMMAND,
                 static_cast<WPARAM>(face::controlId(form.cmdOk)) | (BN_CLICKED << 16U),
                 reinterpret_cast<LPARAM>(windowOf(form.cmdOk)));

    EXPECT_EQ(owner, window());
}

TEST_F(BoxOwnerTest, TheCloseBoxAsksBeforeItsOwnWindow) {
    show();
    showOther();
    HWND owner = nullptr;
    form.QueryUnload.connect([&](bool& cancel, UnloadMode) {
        owner = ownerOfBox();
        cancel = true;
    });

    SendMessageA(window(), WM_SYSCOMMAND, SC_CLOSE, 0); // as from the task bar

    EXPECT_EQ(owner, window());
}

} // namespace
} // namespace tarvik
